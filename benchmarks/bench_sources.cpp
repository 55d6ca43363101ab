// SPDX-License-Identifier: GPL-3.0-or-later

// What the sources cost the thread that draws the panel.

#include "plugins/sources/process/LineQueue.h"
#include "plugins/sources/SystemDevice.h"
#include "plugins/sources/Waveform.h"

#include <benchmark/benchmark.h>

namespace {

/// One reading of everything below /proc, emissions included. To stay under 0.5 ms.
void systemReading(benchmark::State& state)
{
    SystemDevice device;
    device.setRunning(device.initialise());
    for (auto _ : state) {
        device.takeReading();
    }
}
BENCHMARK(systemReading)->Unit(benchmark::kMicrosecond);

/// One full read of a pipe that brings the shortest lines faster than they can be emitted.
void floodOfShortLines(benchmark::State& state)
{
    norvo::LineQueue queue({1024 * 1024, 50000, 4 * 1024 * 1024});
    QByteArray read;
    while (read.size() < 64 * 1024) {
        read += "y\n";
    }
    for (auto _ : state) {
        queue.append(read.constData(), read.size());
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * read.size());
}
BENCHMARK(floodOfShortLines)->Unit(benchmark::kMicrosecond);

void generatorValue(benchmark::State& state)
{
    norvo::Waveform waveform;
    waveform.noise = 0.1;
    qint64 tick = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(waveform.valueAt(tick++));
    }
}
BENCHMARK(generatorValue);

} // namespace

BENCHMARK_MAIN();
