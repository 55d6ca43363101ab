// SPDX-License-Identifier: GPL-3.0-or-later

// What readouts and lamps cost to their pixels, against bare labels that show the same.

#include "benchmarks/RunningFile.h"
#include "benchmarks/Stages.h"

#include "norvo/BaseWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGridLayout>
#include <QLabel>
#include <QTimer>

#include <cmath>
#include <ctime>
#include <functional>
#include <memory>

namespace {

constexpr int kTurns = 6;
constexpr int kTurnMs = 1500;
constexpr int kFlips = 500; // A turn.

using MakeStage = std::unique_ptr<Stage> (*)(const StagePlan& plan);

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

void run(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Seconds of the processor while each of the displays gets 10 values a second.
double secondsOfTenHertz(Stage& stage, int displays)
{
    constexpr int tickMs = 10;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QElapsedTimer clock;
    qint64 fed = 0;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        for (const qint64 due = clock.elapsed() * displays / 100; fed < due; ++fed) {
            stage.feed(int(fed % displays), 50 + 45 * std::sin(double(fed) * 0.37));
        }
    });
    const double before = processorSeconds();
    clock.start();
    timer.start(tickMs);
    run(kTurnMs);
    return processorSeconds() - before;
}

/// At most 1.2 times bare labels.
void twoHundredReadouts(benchmark::State& state)
{
    const StagePlan plan{"output_digital",
                         "widget/valueSize: 14, widget/labelSize: 6, widget/precision: 1, name: V",
                         200,
                         20,
                         {1280, 800}};
    const std::unique_ptr<Stage> readouts = panelStage(plan);
    const std::unique_ptr<Stage> labels = labelStage(plan);
    double ours = 0;
    double bare = 0;
    for (auto _ : state) {
        for (int turn = 0; turn < kTurns; ++turn) {
            ours += secondsOfTenHertz(*readouts, plan.count);
            bare += secondsOfTenHertz(*labels, plan.count);
        }
        state.SetIterationTime(ours);
    }
    const double percent = 100'000.0 / (kTurns * kTurnMs);
    state.counters["ours_percent"] = ours * percent;
    state.counters["bare_percent"] = bare * percent;
    state.counters["ratio"] = ours / bare;
}
BENCHMARK(twoHundredReadouts)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// A window of its own for one display.
class Shown : public QWidget
{
public:
    explicit Shown(QWidget* display)
    {
        (new QGridLayout(this))->addWidget(display, 0, 0);
        resize(400, 200);
        show();
        QApplication::processEvents();
    }
};

/// Sends to a device as another device would.
class Source : public QObject
{
    Q_OBJECT

signals:
    void number(double value);
    void state(bool on);
};

/// Running, and on view.
class Display
{
public:
    Display(const QString& type, const QMap<QString, QString>& params)
        : m_device(static_cast<BaseGuiDevice*>(norvo::deviceTypes().createDevice(type)))
    {
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            m_device->setParam(param.key(), param.value());
        }
        m_device->setRunning(m_device->initialise());
        BaseWidget* const widget = m_device->createWidget();
        widget->initialise();
        m_window = std::make_unique<Shown>(widget);
    }

    BaseGuiDevice& device() { return *m_device; }
    QLabel* label(int index) const { return m_window->findChildren<QLabel*>().at(index); }

private:
    const std::unique_ptr<BaseGuiDevice> m_device;
    std::unique_ptr<Shown> m_window;
};

/// A label in the place and the font of another, on a ground of its palette.
class BareLabel
{
public:
    explicit BareLabel(const QLabel& alike) : m_label(new QLabel(&m_window))
    {
        m_label->setFont(QFont(alike.font().family(), alike.font().pointSize()));
        m_label->setText(alike.text());
        m_label->setAlignment(Qt::AlignCenter);
        m_label->setAutoFillBackground(true);
        m_label->setGeometry(QRect(alike.mapTo(alike.window(), QPoint()), alike.size()));
        m_window.resize(alike.window()->size());
        m_window.show();
        QApplication::processEvents();
    }

    void wear(const QString& styleSheet) { m_label->setStyleSheet(styleSheet); }

    void show(const QString& text, const QColor& ground)
    {
        m_label->setText(text);
        QPalette palette = m_label->palette();
        palette.setColor(QPalette::Window, ground);
        m_label->setPalette(palette);
    }

private:
    QWidget m_window;
    QLabel* const m_label;
};

double secondsOfFlips(const std::function<void(bool)>& show)
{
    const double before = processorSeconds();
    for (int i = 0; i < kFlips; ++i) {
        show(i % 2 == 0);
        QApplication::processEvents();
    }
    return processorSeconds() - before;
}

/// Each change with its pixels; at most 2 times the bare label.
void flip(benchmark::State& state, const std::function<void(bool)>& ours,
          const std::function<void(bool)>& bare)
{
    double oursSeconds = 0;
    double bareSeconds = 0;
    for (auto _ : state) {
        for (int turn = 0; turn < kTurns; ++turn) {
            oursSeconds += secondsOfFlips(ours);
            bareSeconds += secondsOfFlips(bare);
        }
        state.SetIterationTime(oursSeconds / (kTurns * kFlips));
    }
    state.counters["ours_us"] = 1e6 * oursSeconds / (kTurns * kFlips);
    state.counters["bare_us"] = 1e6 * bareSeconds / (kTurns * kFlips);
    state.counters["ratio"] = oursSeconds / bareSeconds;
}

void readoutFlips(benchmark::State& state)
{
    Display readout("output_digital", {{"name", "Pressure"}, {"timeout", "0"}});
    Source source;
    QObject::connect(&source, SIGNAL(number(double)), &readout.device(), SLOT(input(double)));
    BareLabel bare(*readout.label(1));
    flip(
        state, [&](bool high) { emit source.number(high ? 150.0 : 50.0); },
        [&](bool high) { bare.show(high ? "150" : "50", high ? Qt::red : Qt::darkGreen); });
}
BENCHMARK(readoutFlips)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

void lampFlips(benchmark::State& state)
{
    Display lamp("indicator", {{"widget/caption", "Pump"}});
    Source source;
    QObject::connect(&source, SIGNAL(state(bool)), &lamp.device(), SLOT(input(bool)));
    BareLabel bare(*lamp.label(0));
    flip(
        state, [&](bool on) { emit source.state(on); },
        [&](bool on) { bare.show("Pump", on ? Qt::green : Qt::darkGreen); });
}
BENCHMARK(lampFlips)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

/// What a lamp's style sheets cost a bare label, which a lamp has to wear.
void lampSheetFlips(benchmark::State& state)
{
    Display lamp("indicator", {{"widget/caption", "Pump"}});
    const QString dark = lamp.label(0)->styleSheet();
    QMetaObject::invokeMethod(&lamp.device(), "input", Q_ARG(bool, true));
    const QString lit = lamp.label(0)->styleSheet();
    BareLabel sheets(*lamp.label(0));
    BareLabel bare(*lamp.label(0));
    flip(
        state, [&](bool on) { sheets.wear(on ? lit : dark); },
        [&](bool on) { bare.show("Pump", on ? Qt::green : Qt::darkGreen); });
}
BENCHMARK(lampSheetFlips)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

} // namespace

#include "bench_looks.moc"
