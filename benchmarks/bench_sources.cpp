// What the sources cost the thread that draws the panel.

#include "host/sources/SystemDevice.h"

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

} // namespace

BENCHMARK_MAIN();
