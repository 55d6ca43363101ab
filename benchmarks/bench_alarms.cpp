// SPDX-License-Identifier: GPL-3.0-or-later

// How soon an alarm is seen, and what a flood of them costs the window.

#include "host/panel/file/PanelFile.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/services/alarms/AlarmService.h"
#include "host/services/status/SourceWatch.h"
#include "host/window/PanelPages.h"
#include "host/window/PanelWindow.h"
#include "host/window/alarms/AlarmFace.h"

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <ctime>

using namespace norvo;

namespace {

constexpr int kAlarms = 100;
constexpr int kChangesPerSecond = 10000;
constexpr int kMeasuredMs = 5000;
constexpr int kRestMs = 200; // Longer than any delay of a display.

class Talker : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }

signals:
    void output(double value);
};

void waitFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Hears the paintings of a widget.
class Paintings : public QObject
{
public:
    explicit Paintings(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        count += int(event->type() == QEvent::Paint);
        return false;
    }

    int count = 0;
};

/// A panel of talkers with an alarm each, on view.
class Alarmed
{
public:
    explicit Alarmed(int count)
    {
        m_manager.registerDeviceType<Talker>("talker");
        QByteArray devices = "devices:\n";
        QByteArray alarms = "alarms:\n";
        for (int i = 0; i < count; ++i) {
            const QByteArray id = "t" + QByteArray::number(i);
            devices += "  " + id + ": {device: talker}\n";
            alarms += "  - {signal: " + id + ".output, above: 80, text: Hot, sound: no}\n";
        }
        Diagnostics diagnostics("panel.yaml");
        auto plan = PanelPlan::make(PanelFile::parse(devices + alarms, "panel.yaml", diagnostics),
                                    m_manager, {}, diagnostics);
        m_sources.listen(plan);
        service.listen(plan);
        m_panel.apply(std::move(plan), diagnostics);
        m_sources.complete(m_panel);
        service.complete(m_panel, m_sources);
        m_face.complete(m_panel);
        for (int i = 0; i < count; ++i) {
            talkers.append(static_cast<Talker*>(m_panel.device("t" + QString::number(i))));
        }
        if (!diagnostics.isEmpty()) {
            qFatal("%s", qPrintable(diagnostics.sorted().value(0).toString()));
        }
        (new QVBoxLayout(window.page()))->addWidget(m_pages);
        window.resize(1024, 600);
        window.show();
        waitFor(kRestMs);
    }

private:
    DeviceManager m_manager;
    SourceWatch m_sources;

public:
    AlarmService service{{}};
    PanelWindow window{"Benchmark"};
    QVector<Talker*> talkers;

private:
    PanelPages* const m_pages = new PanelPages; ///< The window owns it.
    Panel m_panel{*m_pages};
    AlarmFace m_face{service, window, *m_pages, {}};
};

double processorMs()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) * 1e-6;
}

} // namespace

/// From the signal to the painted strip, which is shown for it.
static void signalToPixels(benchmark::State& state)
{
    Alarmed alarmed(1);
    Talker& talker = *alarmed.talkers[0];
    QWidget& bar = *alarmed.window.findChild<QWidget*>("alarmBar");
    for (auto _ : state) {
        emit talker.output(0);
        alarmed.service.acknowledge({0});
        waitFor(kRestMs);
        Paintings paintings(bar);
        QElapsedTimer clock;
        clock.start();
        emit talker.output(90);
        while (paintings.count == 0) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        state.SetIterationTime(double(clock.nsecsElapsed()) * 1e-9);
    }
}
BENCHMARK(signalToPixels)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(41)
    ->Unit(benchmark::kMillisecond);

/// The counters: changes a second that were reached, how late a timer of 10 ms was by the clock,
/// and the longest that the thread has worked between two ticks of it, which no other program adds
/// to.
static void tenThousandChangesASecond(benchmark::State& state)
{
    Alarmed alarmed(kAlarms);
    if (state.range(0) > 0) {
        alarmed.window.findChild<QPushButton*>("alarmList")->click();
    }
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        qint64 changes = 0;
        QTimer sender;
        sender.setTimerType(Qt::PreciseTimer);
        sender.callOnTimeout([&] {
            const qint64 due = clock.elapsed() * kChangesPerSecond / 1000;
            for (const qint64 end = std::min(due, changes + 1000); changes < end; ++changes) {
                const bool isOn = changes / kAlarms % 2 == 0;
                emit alarmed.talkers[int(changes % kAlarms)]->output(isOn ? 90 : 0);
            }
        });
        sender.start(1);
        constexpr int probeMs = 10;
        qint64 latest = 0;
        double longest = 0;
        double atProbe = processorMs();
        QElapsedTimer sinceProbe;
        QTimer probe;
        probe.setTimerType(Qt::PreciseTimer);
        probe.callOnTimeout([&] {
            latest = std::max(latest, sinceProbe.restart() - probeMs);
            longest = std::max(longest, processorMs() - atProbe);
            atProbe = processorMs();
        });
        sinceProbe.start();
        probe.start(probeMs);
        const double before = processorMs();
        waitFor(kMeasuredMs);
        state.SetIterationTime(double(clock.nsecsElapsed()) * 1e-9);
        state.counters["changes/s"] = double(changes) * 1000. / double(clock.elapsed());
        state.counters["work ms"] = longest;
        state.counters["late ms"] = double(latest);
        state.counters["busy %"] = 100. * (processorMs() - before) / double(clock.elapsed());
    }
}
BENCHMARK(tenThousandChangesASecond)
    ->ArgName("list")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(7)
    ->Unit(benchmark::kMillisecond);

#include "bench_alarms.moc"
