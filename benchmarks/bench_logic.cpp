// SPDX-License-Identifier: GPL-3.0-or-later

// What a value costs that runs through logic, from the call of the input to the end of the
// emission.

#include "plugins/logic/CalcDevice.h"
#include "plugins/logic/SettleDevice.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

namespace {

/// Hears one form of an output, and calls an input through the ends that wires are made of.
class Wires : public QObject
{
    Q_OBJECT

public:
    Wires(BaseDevice& device, const char* output, const char* input)
    {
        QString signature;
        QObject* const provider = device.getProvider(output, signature);
        connect(provider, qPrintable('2' + signature), this,
                qPrintable("1take" + signature.mid(signature.indexOf('('))));
        QObject* const receiver = device.getReceiver(input, signature);
        connect(this, SIGNAL(value(double)), receiver, qPrintable('1' + signature));
    }

    int count = 0;

public slots:
    void take(double) { ++count; }
    void take(const QString&) { ++count; }
    void take(bool) { ++count; }

signals:
    void value(double value);
};

/// To stay under 2 us with one number in and one number or yes out.
void calcValue(benchmark::State& state, const char* expression, const char* output)
{
    CalcDevice device;
    device.addInput("t", QString());
    device.addInput("limit", QString("30"));
    device.addOutput("y", QString(expression));
    device.setRunning(device.initialise());
    Wires wires(device, output, "t(double)");
    double value = 0.25;
    for (auto _ : state) {
        emit wires.value(value += 1.0);
    }
    if (wires.count != int(state.iterations())) {
        state.SkipWithError("values are missing");
    }
}
BENCHMARK_CAPTURE(calcValue, number, "t * 1.8 + 32", "y(double)");
BENCHMARK_CAPTURE(calcValue, limit, "t > limit", "y(bool)");
BENCHMARK_CAPTURE(calcValue, helper, "clamp(t, 0, limit)", "y(double)");
BENCHMARK_CAPTURE(calcValue, text, "`${t} of ${limit}`", "y(QString)");
BENCHMARK_CAPTURE(calcValue, textWithDecimals, "`${t.toFixed(1)} of ${limit}`", "y(QString)");

/// A number that takes the place of the one that waits. To stay under 0.3 us.
void settleValue(benchmark::State& state)
{
    SettleDevice device;
    device.setParam("time", "60000");
    device.setRunning(device.initialise());
    Wires wires(device, "output(double)", "input(double)");
    double value = 0.25;
    for (auto _ : state) {
        emit wires.value(value += 1.0);
    }
}
BENCHMARK(settleValue);

/// The same, and each is passed on at once.
void settleValueToItsEnd(benchmark::State& state)
{
    SettleDevice device;
    device.setParam("mode", "flush");
    device.setParam("max", "1e300");
    device.setRunning(device.initialise());
    Wires wires(device, "output(double)", "input(double)");
    double value = 0.25;
    for (auto _ : state) {
        emit wires.value(value += 1.0);
        device.flush();
    }
    if (wires.count != int(state.iterations())) {
        state.SkipWithError("values are missing");
    }
}
BENCHMARK(settleValueToItsEnd);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

#include "bench_logic.moc"
