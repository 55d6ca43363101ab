// SPDX-License-Identifier: GPL-3.0-or-later

// What one value costs on its way from the wiring into a control and out again, against the bare Qt
// control with the same connections.

#include "devices/CheckBoxDevice.h"
#include "devices/DropDownListDevice.h"
#include "devices/SliderDevice.h"
#include "norvo/BaseWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QSlider>

#include <chrono>
#include <functional>
#include <memory>

namespace {

constexpr int kValues = 20000;

/// The wiring on both sides of a control.
class Wires : public QObject
{
    Q_OBJECT

public slots:
    void input(double value) { m_sum += value; }
    void input(int value) { m_sum += value; }
    void input(bool value) { m_sum += value; }

signals:
    void output(double value);

private:
    double m_sum = 0;
};

/// A window with one control, on view. Each has its own: what one has left to be repainted would
/// make marking the other dearer.
class Window : public QWidget
{
public:
    explicit Window(QWidget* control)
    {
        (new QGridLayout(this))->addWidget(control);
        resize(400, 200);
        show();
        QApplication::processEvents();
    }
};

/// A bare control as deep in its window as ours is.
QWidget* framed(QWidget* control)
{
    auto* const frame = new QWidget;
    (new QGridLayout(frame))->addWidget(control);
    return frame;
}

/// A control of ours and its bare counterpart.
template <class Device>
struct Rivals
{
    explicit Rivals(QWidget* bare, const QMap<QString, QString>& params = {})
    {
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            device.setParam(param.key(), param.value());
        }
        device.setRunning(device.initialise());
        QObject::connect(&wires, SIGNAL(output(double)), &device, SLOT(input(double)));
        QObject::connect(&device, SIGNAL(output(double)), &wires, SLOT(input(double)));
        BaseWidget* const widget = device.createWidget();
        widget->initialise();
        window = std::make_unique<Window>(widget);
        bareWindow = std::make_unique<Window>(framed(bare));
    }

    Wires wires;
    Device device;
    std::unique_ptr<Window> window;
    std::unique_ptr<Window> bareWindow;
};

double secondsFor(const std::function<void(int)>& feed)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kValues; ++i) {
        feed(i);
    }
    QApplication::processEvents();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Takes turns with both, so that neither has the quieter machine.
void compare(benchmark::State& state, const std::function<void(int)>& ours,
             const std::function<void(int)>& bare)
{
    for (auto _ : state) {
        const double oursSeconds = secondsFor(ours);
        const double bareSeconds = secondsFor(bare);
        state.SetIterationTime(oursSeconds);
        state.counters["ours_ns"] = oursSeconds * 1e9 / kValues;
        state.counters["bare_ns"] = bareSeconds * 1e9 / kValues;
        state.counters["ratio"] = oursSeconds / bareSeconds;
    }
}

/// Every number moves it. At most twice the bare slider.
void movingSlider(benchmark::State& state)
{
    auto* const bare = new QSlider(Qt::Horizontal);
    bare->setRange(0, 100);
    Rivals<SliderDevice> rivals(bare, {{"widget/orientation", "horizontal"}});
    QObject::connect(bare, SIGNAL(valueChanged(int)), &rivals.wires, SLOT(input(int)));
    compare(
        state, [&](int i) { emit rivals.wires.output(i % 100 + 0.5); },
        [&](int i) { bare->setValue(i % 100); });
}

/// The same number again and again, which the bare slider hardly notices. To compare, not to hold.
void restingSlider(benchmark::State& state)
{
    auto* const bare = new QSlider(Qt::Horizontal);
    Rivals<SliderDevice> rivals(bare, {{"widget/orientation", "horizontal"}});
    QObject::connect(bare, SIGNAL(valueChanged(int)), &rivals.wires, SLOT(input(int)));
    compare(
        state, [&](int) { emit rivals.wires.output(42.5); }, [&](int) { bare->setValue(42); });
}

void togglingCheckBox(benchmark::State& state)
{
    auto* const bare = new QCheckBox;
    Rivals<CheckBoxDevice> rivals(bare);
    QObject::connect(bare, SIGNAL(toggled(bool)), &rivals.wires, SLOT(input(bool)));
    compare(
        state, [&](int i) { emit rivals.wires.output(i % 2); },
        [&](int i) { bare->setChecked(i % 2); });
}

void changingDropDownList(benchmark::State& state)
{
    auto* const bare = new QComboBox;
    bare->addItems({"value1", "value2"});
    Rivals<DropDownListDevice> rivals(bare);
    QObject::connect(bare, SIGNAL(currentIndexChanged(int)), &rivals.wires, SLOT(input(int)));
    compare(
        state, [&](int i) { emit rivals.wires.output(i % 2); },
        [&](int i) { bare->setCurrentIndex(i % 2); });
}

} // namespace

#define COMPARISON(function)                                                                       \
    BENCHMARK(function)                                                                            \
        ->UseManualTime()                                                                          \
        ->Iterations(1)                                                                            \
        ->Repetitions(9)                                                                           \
        ->ReportAggregatesOnly()                                                                   \
        ->Unit(benchmark::kMillisecond)

COMPARISON(movingSlider);
COMPARISON(restingSlider);
COMPARISON(togglingCheckBox);
COMPARISON(changingDropDownList);

#include "bench_controls.moc"
