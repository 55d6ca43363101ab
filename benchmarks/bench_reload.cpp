// SPDX-License-Identifier: GPL-3.0-or-later

// What a change of a panel that runs costs: from the save of its file to the repainted window, step
// by step for a large one, and what a thousand of them leave behind.

#include "benchmarks/RunningFile.h"
#include "host/yaml/YamlEdit.h"

#include "norvo/BaseDevice.h"

#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QFile>

#include <unistd.h>

using namespace norvo;

namespace {

/// Readouts fed by one source in ten, and a button whose text is the one that changes.
QByteArray panelOf(int count, int version)
{
    QByteArray devices = "title: Reload\ndevices:\n  last: {device: button, params: {text: V" +
                         QByteArray::number(version) + ", widget/row: 0, widget/column: 0}}\n";
    QByteArray arrows = "connections:\n";
    const int sources = qMax(1, count / 10);
    for (int i = 0; i < sources; ++i) {
        devices += "  s" + QByteArray::number(i) +
                   ": {device: generator, params: {waveform: noise, interval: 1000}}\n";
    }
    for (int i = 0; i < count - sources - 1; ++i) {
        const QByteArray number = QByteArray::number(i);
        devices += "  r" + number +
                   ": {device: output_digital, params: {widget/precision: 2, "
                   "widget/row: " +
                   QByteArray::number(1 + i / 20) +
                   ", widget/column: " + QByteArray::number(i % 20) + "}}\n";
        arrows += "  - s" + QByteArray::number(i % sources) + ".output(double) -> r" + number +
                  ".input(double)\n";
    }
    return devices + arrows;
}

/// Notes when a button with that text paints itself.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(const QString& text) : m_text(text) { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            const auto* const button = qobject_cast<QAbstractButton*>(watched);
            isPainted = isPainted || (button && button->text() == m_text);
        }
        return false;
    }
    bool isPainted = false;

private:
    const QString m_text;
};

double residentKiB()
{
    QFile statm("/proc/self/statm");
    statm.open(QIODevice::ReadOnly);
    return statm.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1024.0;
}

int countIn(const char* folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System).size();
}

/// Of the window and of the devices.
int timers(RunningPanel& panel)
{
    int count = 0;
    QList<QObject*> objects = panel.window().findChildren<QObject*>();
    for (const Node* node : panel.panel().nodes()) {
        objects += node->device();
        objects += node->device()->findChildren<QObject*>();
    }
    auto* const dispatcher = QAbstractEventDispatcher::instance();
    for (QObject* object : objects) {
        count += dispatcher->registeredTimers(object).size();
    }
    return count;
}

} // namespace

/// From the save of the file to the paint of the widget whose text has changed, the time that the
/// file must be still included.
static void fromSaveToPaint(benchmark::State& state)
{
    RunningFile panel(panelOf(int(state.range(0)), 0));
    int version = 0;
    double worst = 0;
    for (auto _ : state) {
        const QByteArray text = panelOf(int(state.range(0)), ++version);
        const PaintWatch paint(QString("V%1").arg(version));
        QElapsedTimer clock;
        clock.start();
        panel.write("panel.yaml", text);
        while (!paint.isPainted) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        const double ms = milliseconds(clock);
        worst = std::max(worst, ms);
        state.SetIterationTime(ms * 1e-3);
        RunningFile::settle();
    }
    state.counters["worst ms"] = worst;
}
BENCHMARK(fromSaveToPaint)
    ->Arg(100)
    ->Arg(1000)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

/// One changed parameter of a large panel, step by step, and once as the editor does it.
static void stepsOfAChange(benchmark::State& state)
{
    const int count = int(state.range(0));
    RunningFile panel(panelOf(count, 0));
    int version = 0;
    double parse = 0;
    double plan = 0;
    double apply = 0;
    double later = 0;
    double edit = 0;
    double run = 0;
    for (auto _ : state) {
        const QByteArray text = panelOf(count, ++version);
        Diagnostics diagnostics("panel.yaml");
        QElapsedTimer clock;
        clock.start();
        const PanelDescription description = panel.input.parse(text, diagnostics);
        parse += milliseconds(clock);
        clock.start();
        PanelPlan made = PanelPlan::make(description, deviceTypes(), {}, diagnostics,
                                         panel.running->panel().nodes(), panel.knowledge);
        plan += milliseconds(clock);
        clock.start();
        panel.running->change(description, std::move(made), diagnostics);
        apply += milliseconds(clock);
        clock.start();
        RunningFile::settle();
        later += milliseconds(clock);
        YamlEdit edited(text);
        clock.start();
        edited.setText({"devices", "last", "params", "text"}, QString("E%1").arg(version));
        edit += milliseconds(clock);
        clock.start();
        panel.reload->run(edited, LivePanel::Accept::Better);
        run += milliseconds(clock);
        RunningFile::settle();
    }
    const auto average = [&](double sum) { return sum / double(state.iterations()); };
    state.counters["parse ms"] = average(parse);
    state.counters["plan ms"] = average(plan);
    state.counters["apply ms"] = average(apply);
    state.counters["events ms"] = average(later);
    state.counters["edit ms"] = average(edit);
    state.counters["run ms"] = average(run);
}
BENCHMARK(stepsOfAChange)->Arg(100)->Arg(1000)->Iterations(20)->Unit(benchmark::kMillisecond);

/// What a thousand changes leave behind: the difference between after 100 and after 1,100.
static void thousandChanges(benchmark::State& state)
{
    RunningFile panel(panelOf(100, 0));
    const auto change = [&panel](int version) {
        Diagnostics diagnostics("panel.yaml");
        if (!panel.reload->run(panelOf(100 - version % 7, version), {}, diagnostics)) {
            qFatal("%s", qPrintable(diagnostics.sorted().constFirst().toString()));
        }
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    for (auto _ : state) {
        for (int i = 1; i <= 105; ++i) {
            change(i);
        }
        RunningFile::settle();
        const double memory = residentKiB();
        const int handles = countIn("/proc/self/fd");
        const int threads = countIn("/proc/self/task");
        const int objects = panel.running->window().findChildren<QObject*>().size();
        const int timing = timers(*panel.running);
        for (int i = 106; i <= 1105; ++i) {
            change(i);
        }
        change(105);
        RunningFile::settle();
        state.counters["memory KiB"] = residentKiB() - memory;
        state.counters["handles"] = countIn("/proc/self/fd") - handles;
        state.counters["threads"] = countIn("/proc/self/task") - threads;
        state.counters["objects"] =
            panel.running->window().findChildren<QObject*>().size() - objects;
        state.counters["timers"] = timers(*panel.running) - timing;
    }
}
BENCHMARK(thousandChanges)->Iterations(1)->Unit(benchmark::kMillisecond);
