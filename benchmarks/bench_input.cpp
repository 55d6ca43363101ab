// SPDX-License-Identifier: GPL-3.0-or-later

// What one number costs on its way from the wiring through an input field and out again, against
// the bare Qt control with the same connections.

#include "devices/InputDevice.h"
#include "norvo/BaseWidget.h"
#include "widgets/Looks.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLineEdit>

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
    void input(const QString& text) { m_sum += text.size(); }

signals:
    void output(double value);

private:
    double m_sum = 0;
};

/// An input field and its bare counterpart, side by side on view.
struct Rivals
{
    Rivals(const QString& type, QWidget* bare)
    {
        device.setParam("type", type);
        device.setParam("max", "100");
        device.setRunning(device.initialise());
        QObject::connect(&wires, SIGNAL(output(double)), &device, SLOT(input(double)));
        QObject::connect(&device, SIGNAL(output(QString)), &wires, SLOT(input(QString)));
        QObject::connect(&device, SIGNAL(output(double)), &wires, SLOT(input(double)));
        BaseWidget* const widget = device.createWidget();
        widget->initialise();
        auto* const row = new QHBoxLayout(&window);
        row->addWidget(widget);
        row->addWidget(bare);
        window.resize(800, 200);
        window.show();
        QApplication::processEvents();
    }

    Wires wires;
    InputDevice device;
    QWidget window;
};

double secondsFor(const std::function<void(double)>& feed)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kValues; ++i) {
        feed((i % 1000) * 0.1);
    }
    QApplication::processEvents();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Takes turns with both, so that neither has the quieter machine.
void compare(benchmark::State& state, Rivals& rivals, const std::function<void(double)>& bare)
{
    for (auto _ : state) {
        const double ours = secondsFor([&](double value) { emit rivals.wires.output(value); });
        const double theirs = secondsFor(bare);
        state.SetIterationTime(ours);
        state.counters["ours_ns"] = ours * 1e9 / kValues;
        state.counters["bare_ns"] = theirs * 1e9 / kValues;
        state.counters["ratio"] = ours / theirs;
    }
}

void compareSpinBoxes(benchmark::State& state, const QString& style)
{
    auto* const bare = new QDoubleSpinBox;
    bare->setRange(0, 100);
    bare->setStyleSheet(style);
    Rivals rivals("spin", bare);
    QObject::connect(bare, SIGNAL(valueChanged(QString)), &rivals.wires, SLOT(input(QString)));
    QObject::connect(bare, SIGNAL(valueChanged(double)), &rivals.wires, SLOT(input(double)));
    compare(state, rivals, [&](double value) { bare->setValue(value); });
}

/// At most twice the bare control.
void spinBoxAgainstBareSpinBox(benchmark::State& state)
{
    compareSpinBoxes(state, QString());
}

/// The same against a bare spin box that looks as ours does.
void spinBoxAgainstStyledSpinBox(benchmark::State& state)
{
    compareSpinBoxes(state, norvo::Looks::kInputField);
}

/// At most twice the bare control.
void lineEditAgainstBareLineEdit(benchmark::State& state)
{
    auto* const bare = new QLineEdit;
    Rivals rivals("double", bare);
    QObject::connect(bare, SIGNAL(textChanged(QString)), &rivals.wires, SLOT(input(QString)));
    compare(state, rivals, [&](double value) { bare->setText(QString::number(value, 'g', 6)); });
}

} // namespace

#define COMPARISON(function)                                                                       \
    BENCHMARK(function)                                                                            \
        ->UseManualTime()                                                                          \
        ->Iterations(1)                                                                            \
        ->Repetitions(9)                                                                           \
        ->ReportAggregatesOnly()                                                                   \
        ->Unit(benchmark::kMillisecond)

COMPARISON(spinBoxAgainstBareSpinBox);
COMPARISON(spinBoxAgainstStyledSpinBox);
COMPARISON(lineEditAgainstBareLineEdit);

#include "bench_input.moc"
