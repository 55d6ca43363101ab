// SPDX-License-Identifier: GPL-3.0-or-later

// How the cost of a graph's refresh grows: by points of a curve, by curves and by the plot's size,
// against the bare plot library, two others, and what the pixels cost at least.

#include "benchmarks/GraphFrames.h"
#include "benchmarks/PlottedByOthers.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using MakeOther = std::unique_ptr<PlottedByOther> (*)(QCustomPlot& model);

std::unique_ptr<PlottedByOther> qwt(QCustomPlot&)
{
    return plottedByQwt(true);
}

std::unique_ptr<PlottedByOther> charts(QCustomPlot&)
{
    return plottedByCharts();
}

/// One refresh of that many curves with that many points each, `x` of whatever grows.
void refresh(benchmark::State& state, MakeOther makeOther, double x, int curves, int points,
             const QSize& size = {800, 400})
{
    const int seconds = qMax(1, int(points / GraphFrames::kPointsPerSecond));
    MeasuredGraph graph({{"widget/timePeriod", QString::number(seconds)}});
    const std::unique_ptr<PlottedByOther> other = makeOther(*graph.plot());
    if (!other) {
        state.SkipWithError("left out: the library was not there when this was built");
        return;
    }
    GraphFrames frames(graph, other.get(), curves, points, size);
    for (auto _ : state) {
        const auto [oursMs, otherMs] = frames.measure();
        state.SetIterationTime(oursMs / 1000);
        state.counters["x"] = x;
        state.counters["ours_ms"] = oursMs;
        state.counters["other_ms"] = otherMs;
        state.counters["ratio"] = oursMs / otherMs;
    }
}

/// Four curves.
void growsByPoints(benchmark::State& state, MakeOther makeOther)
{
    refresh(state, makeOther, double(state.range(0)), 4, int(state.range(0)));
}

/// Of 10,000 points.
void growsByCurves(benchmark::State& state, MakeOther makeOther)
{
    refresh(state, makeOther, double(state.range(0)), int(state.range(0)), 10000);
}

/// Four curves of 10,000 points on a plot twice as wide as high; `x` is its width.
void growsBySize(benchmark::State& state, MakeOther makeOther)
{
    const int width = int(state.range(0));
    refresh(state, makeOther, width, 4, 10000, {width, width / 2});
}

void once(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

void toAMillion(benchmark::internal::Benchmark* benchmark)
{
    once(benchmark->RangeMultiplier(10)->Range(1000, 1000000));
}

void toAHundredThousand(benchmark::internal::Benchmark* benchmark)
{
    once(benchmark->RangeMultiplier(10)->Range(1000, 100000));
}

void toThirtyTwo(benchmark::internal::Benchmark* benchmark)
{
    once(benchmark->RangeMultiplier(2)->Range(1, 32));
}

void toEightTimesAsWide(benchmark::internal::Benchmark* benchmark)
{
    for (const int width : {400, 800, 1600, 3200}) {
        benchmark->Arg(width);
    }
    once(benchmark);
}

} // namespace

BENCHMARK_CAPTURE(growsByPoints, plot_library, plottedByBarePlot)->Apply(toAMillion);
BENCHMARK_CAPTURE(growsByPoints, Qwt, qwt)->Apply(toAMillion);
BENCHMARK_CAPTURE(growsByPoints, Qt_Charts, charts)->Apply(toAHundredThousand);
BENCHMARK_CAPTURE(growsByPoints, limit, plottedBySpans)->Apply(toAMillion);
BENCHMARK_CAPTURE(growsByCurves, plot_library, plottedByBarePlot)->Apply(toThirtyTwo);
BENCHMARK_CAPTURE(growsByCurves, Qwt, qwt)->Apply(toThirtyTwo);
BENCHMARK_CAPTURE(growsByCurves, Qt_Charts, charts)->Apply(toThirtyTwo);
BENCHMARK_CAPTURE(growsByCurves, limit, plottedBySpans)->Apply(toThirtyTwo);
BENCHMARK_CAPTURE(growsBySize, plot_library, plottedByBarePlot)->Apply(toEightTimesAsWide);
BENCHMARK_CAPTURE(growsBySize, Qwt, qwt)->Apply(toEightTimesAsWide);
BENCHMARK_CAPTURE(growsBySize, Qt_Charts, charts)->Apply(toEightTimesAsWide);
BENCHMARK_CAPTURE(growsBySize, limit, plottedBySpans)->Apply(toEightTimesAsWide);
