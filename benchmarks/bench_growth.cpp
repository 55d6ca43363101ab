// SPDX-License-Identifier: GPL-3.0-or-later

// How the cost of a panel grows: by devices, by values a second and by gauges, against Qt's own
// widgets, and what the pixels cost at least.

#include "benchmarks/Stages.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <cmath>
#include <ctime>
#include <memory>
#include <string>

namespace {

using MakeStage = std::unique_ptr<Stage> (*)(const StagePlan& plan);

constexpr int kMeasuredMs = 3000;
constexpr int kTickMs = 10;

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

double secondsToPicture(MakeStage make, const StagePlan& plan)
{
    const double before = processorSeconds();
    const std::unique_ptr<Stage> stage = make(plan);
    const QPixmap picture = stage->window().grab();
    return picture.isNull() ? std::nan("") : processorSeconds() - before;
}

void run(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Percent of a core while the values come.
double shareOfACore(MakeStage make, const StagePlan& plan, double perSecond)
{
    const std::unique_ptr<Stage> stage = make(plan);
    run(500);
    qint64 fed = 0;
    QElapsedTimer clock;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        for (const double due = double(clock.elapsed()) * perSecond / 1000; double(fed) < due;
             ++fed) {
            const int display = int(fed % plan.count);
            stage->feed(display, 50 + 45 * std::sin(double(fed) * 0.37));
        }
    });
    clock.start();
    const double before = processorSeconds();
    timer.start(kTickMs);
    run(kMeasuredMs);
    return 100'000 * (processorSeconds() - before) / double(clock.elapsed());
}

void report(benchmark::State& state, const char* unit, double x, double ours, double other)
{
    state.counters["x"] = x;
    state.counters[std::string("ours_") + unit] = ours;
    state.counters[std::string("other_") + unit] = other;
    state.counters["ratio"] = ours / other;
}

/// From the text to the first picture of that many labels.
void growsByDevices(benchmark::State& state, MakeStage other)
{
    const int count = int(state.range(0));
    const StagePlan plan{"label", "Value: '0.0'", count, 50, {1280, 800}};
    secondsToPicture(panelStage,
                     {"label", "Value: '0.0'", 1, 1, {100, 100}}); // Loads the plug-ins.
    for (auto _ : state) {
        const double ours = secondsToPicture(panelStage, plan);
        state.SetIterationTime(ours);
        report(state, "ms", count, ours * 1000, secondsToPicture(other, plan) * 1000);
    }
}

/// From the text to the first picture of as many devices as a panel file may have: at most 400 ms
/// of labels and 1,000 ms of readouts.
void fiveThousand(benchmark::State& state, const char* type, const char* params)
{
    const StagePlan plan{type, params, 5000, 50, {1280, 800}};
    secondsToPicture(panelStage, {type, params, 1, 1, {100, 100}});
    for (auto _ : state) {
        const double start = processorSeconds();
        const std::unique_ptr<Stage> stage = panelStage(plan);
        const QPixmap picture = stage->window().grab();
        state.SetIterationTime(processorSeconds() - start);
        if (picture.isNull()) {
            state.SkipWithError("there is no picture");
        }
    }
}

/// That many values a second, shared by 100 displays.
void growsByValues(benchmark::State& state, MakeStage other)
{
    const double perSecond = double(state.range(0));
    const StagePlan plan{"label", "Value: '%1', widget/precision: 1", 100, 10, {1280, 800}};
    for (auto _ : state) {
        const double ours = shareOfACore(panelStage, plan, perSecond);
        state.SetIterationTime(ours / 100);
        report(state, "percent", perSecond, ours, shareOfACore(other, plan, perSecond));
    }
}

/// That many gauges, which share the window, each with 30 values a second.
void growsByGauges(benchmark::State& state, MakeStage other)
{
    const int count = int(state.range(0));
    const StagePlan plan{
        "output_bar", "widget/minValue: 0, widget/maxValue: 100", count, 10, {1920, 1080}};
    for (auto _ : state) {
        const double ours = shareOfACore(panelStage, plan, 30 * count);
        state.SetIterationTime(ours / 100);
        report(state, "percent", count, ours, shareOfACore(other, plan, 30 * count));
    }
}

void once(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

/// A panel file may have no more.
void toFiveThousand(benchmark::internal::Benchmark* benchmark)
{
    for (const int count : {10, 100, 1000, 5000}) {
        benchmark->Arg(count);
    }
    once(benchmark);
}

void toAHundredThousand(benchmark::internal::Benchmark* benchmark)
{
    once(benchmark->RangeMultiplier(10)->Range(100, 100000));
}

void toAHundred(benchmark::internal::Benchmark* benchmark)
{
    for (const int count : {1, 10, 30, 100}) {
        benchmark->Arg(count);
    }
    once(benchmark);
}

} // namespace

BENCHMARK_CAPTURE(growsByDevices, Qt, labelStage)->Apply(toFiveThousand);
BENCHMARK_CAPTURE(growsByDevices, limit, drawnTextStage)->Apply(toFiveThousand);
BENCHMARK_CAPTURE(fiveThousand, labels, "label", "Value: '0.0'")->Apply(once);
BENCHMARK_CAPTURE(fiveThousand, readouts, "output_digital", "name: V, widget/precision: 1")
    ->Apply(once);
BENCHMARK_CAPTURE(growsByValues, Qt, labelStage)->Apply(toAHundredThousand);
BENCHMARK_CAPTURE(growsByValues, limit, drawnTextStage)->Apply(toAHundredThousand);
BENCHMARK_CAPTURE(growsByGauges, Qt, progressBarStage)->Apply(toAHundred);
BENCHMARK_CAPTURE(growsByGauges, limit, drawnBarStage)->Apply(toAHundred);
