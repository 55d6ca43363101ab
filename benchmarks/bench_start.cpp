// SPDX-License-Identifier: LGPL-3.0-or-later

#include <QCoreApplication>
#include <QProcess>
#include <QVector>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

constexpr int kTurns = 25;

/// Processor time from the start of a program to its first picture, in ms; 0 where it has none.
double startOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("LD_PRELOAD", NORVO_BUILD_DIR "/benchmarks/libfirst_frame.so");
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput().trimmed().split('\n').last().toDouble();
}

double median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

/// An example, from the program's start to its first picture, and a Qt program that shows the like;
/// turn and turn about.
void start(benchmark::State& state, const QString& panel, const QStringList& bareArguments = {})
{
    const QString file = NORVO_SOURCE_DIR "/examples/" + panel + "/panel.yaml";
    QVector<double> ours;
    QVector<double> bare;
    for (auto _ : state) {
        for (int turn = 0; turn < kTurns; ++turn) {
            bare.append(startOf(NORVO_BUILD_DIR "/benchmarks/bare_" + panel, bareArguments));
            ours.append(startOf(NORVO_BUILD_DIR "/bin/norvo-panel", {"--no-state", file}));
        }
        state.SetIterationTime(median(ours) / 1e3);
    }
    if (*std::min_element(ours.cbegin(), ours.cend()) <= 0 ||
        *std::min_element(bare.cbegin(), bare.cend()) <= 0) {
        state.SkipWithError("a program has not shown anything");
        return;
    }
    state.counters["ours_ms"] = median(ours);
    state.counters["other_ms"] = median(bare);
    state.counters["ratio"] = median(ours) / median(bare);
}

void once(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(start, hello, "hello")->Apply(once);
BENCHMARK_CAPTURE(start, helloByHand, "hello", {"whole"})->Apply(once);
BENCHMARK_CAPTURE(start, workstation, "workstation")->Apply(once);

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
