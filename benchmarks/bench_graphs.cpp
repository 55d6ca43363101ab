// SPDX-License-Identifier: GPL-3.0-or-later

// What graphs cost: a refresh against the bare plot library and two others, a value on its way in,
// very many senders, and a panel full of graphs.

#include "benchmarks/GraphFrames.h"
#include "benchmarks/PlottedByOthers.h"
#include "devices/GraphSettingsDevice.h"
#include "devices/OutputVector.h"
#include "widgets/GraphOutputWidget.h"
#include "widgets/VectorGraphWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QGridLayout>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace {

double residentMegabytes()
{
    QFile file("/proc/self/statm");
    file.open(QIODevice::ReadOnly);
    return file.readAll().split(' ').value(1).toDouble() * 4096 / 1e6;
}

// --- A refresh ----------------------------------------------------------------------------------

/// A refresh of ours against the other's, by curves and points of a curve. At most 2.5 ms for 4 of
/// 600,000 and 3 ms for 16 of 10,000, and never more than the bare plot's; 0.6 times Qwt's, 0.1
/// times Qt Charts'.
template <class MakeOther>
void refresh(benchmark::State& state, MakeOther makeOther)
{
    const int curves = int(state.range(0));
    const int points = int(state.range(1));
    MeasuredGraph graph({{"widget/timePeriod",
                          QString::number(qMax(1, int(points / GraphFrames::kPointsPerSecond)))}});
    const std::unique_ptr<PlottedByOther> other = makeOther(*graph.plot());
    if (!other) {
        state.SkipWithError("left out: the library was not there when this was built");
        return;
    }
    GraphFrames frames(graph, other.get(), curves, points);
    for (auto _ : state) {
        const auto [ours, others] = frames.measure();
        state.SetIterationTime(ours / 1000);
        state.counters["ours_ms"] = ours;
        state.counters["other_ms"] = others;
        state.counters["ratio"] = ours / others;
    }
}

void refreshAgainstBarePlot(benchmark::State& state)
{
    refresh(state, plottedByBarePlot);
}

void refreshAgainstQwt(benchmark::State& state, bool antialiased)
{
    refresh(state, [&](QCustomPlot&) { return plottedByQwt(antialiased); });
}

void refreshAgainstCharts(benchmark::State& state)
{
    refresh(state, [](QCustomPlot&) { return plottedByCharts(); });
}

// --- A filled array -----------------------------------------------------------------------------

/// An array of noise with its area filled: at most 30 ms for 1,000 values, 60 ms for 10,000, 200 ms
/// for 100,000.
void filledNoise(benchmark::State& state)
{
    OutputVector device;
    device.setParam("widget/minValue", "-1");
    device.setRunning(device.initialise());
    VectorGraphWidget graph(&device, nullptr);
    graph.initialise();
    showPlot(graph, *graph.findChild<QCustomPlot*>());
    std::mt19937 random(1);
    std::uniform_real_distribution<double> between(-1, 1);
    DoubleVec values(int(state.range(0)));
    std::generate(values.begin(), values.end(), [&] { return between(random); });
    for (auto _ : state) {
        graph.input(values);
    }
}

// --- A value ------------------------------------------------------------------------------------

/// Hands a device's points on to the widget at a time of its own.
class Clock : public QObject
{
    Q_OBJECT

public:
    explicit Clock(MeasuredGraph& graph) : m_widget(graph.widget())
    {
        QObject::disconnect(&graph.device(), nullptr, &m_widget, nullptr);
        QObject::connect(&graph.device(), SIGNAL(output(double, QString, double)), this,
                         SLOT(input(double, QString, double)));
    }

    double now = 1.7e9;

public slots:
    void input(double value, QString sender, double) { m_widget.input(value, sender, now); }

private:
    GraphOutputWidget& m_widget;
};

/// Ten senders at 1 kHz for ten minutes, 10 s of them on view. At most 1.5 us a value, from the
/// first minute to the last, and no more memory than after the first two windows.
void valueIntoAGraph(benchmark::State& state)
{
    constexpr int senders = 10;
    constexpr int perSecond = 1000;
    constexpr int minutes = 10;
    MeasuredGraph graph;
    Clock clock(graph);
    std::vector<std::unique_ptr<GraphSettingsDevice>> sources;
    for (int i = 0; i < senders; ++i) {
        sources.push_back(std::make_unique<GraphSettingsDevice>());
        sources.back()->setObjectName(QString("sender %1").arg(i));
        graph.feedFrom(*sources.back());
    }
    const auto passSeconds = [&](int seconds) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < seconds * perSecond; ++i) {
            for (const auto& source : sources) {
                source->input(0.001 * (i % 777));
            }
            clock.now += 1.0 / perSecond;
        }
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    for (auto _ : state) {
        passSeconds(20);
        const double memory = residentMegabytes();
        double total = 0;
        double slowest = 0;
        double quickest = 1e9;
        for (int minute = 0; minute < minutes; ++minute) {
            const double seconds = passSeconds(60);
            total += seconds;
            slowest = std::max(slowest, seconds);
            quickest = std::min(quickest, seconds);
        }
        state.SetIterationTime(total);
        constexpr double ofAMinute = 1e9 / (60.0 * perSecond * senders);
        state.counters["ns_per_value"] = total * ofAMinute / minutes;
        state.counters["slowest_minute_ns"] = slowest * ofAMinute;
        state.counters["quickest_minute_ns"] = quickest * ofAMinute;
        state.counters["more_MB"] = residentMegabytes() - memory;
    }
}

/// Memory stays with the plot for each sender ever seen; nothing else happens.
void distinctSenders(benchmark::State& state)
{
    const int count = int(state.range(0));
    for (auto _ : state) {
        const double memory = residentMegabytes();
        auto graph = std::make_unique<MeasuredGraph>();
        for (int i = 0; i < count; ++i) {
            graph->widget().input(i, QString::number(i), 1.7e9);
        }
        state.counters["kB_per_sender"] = (residentMegabytes() - memory) * 1000 / count;
        if (graph->plot()->graphCount() != count) {
            state.SkipWithError("senders were lost");
        }
    }
}

// --- A panel full of graphs ---------------------------------------------------------------------

/// 12 graphs of 4 curves each, which the same four devices feed at 100 Hz; ten seconds are there.
class GraphsPage : public QWidget
{
public:
    GraphsPage();
    ~GraphsPage() override
    {
        for (const auto& graph : m_graphs) {
            graph->widget().setParent(nullptr); // its own owner deletes it
        }
    }

    void feed(); ///< From now on.
    int takeDrawn() { return std::exchange(m_drawn, 0); }

private:
    static constexpr int kColumns = 4;
    static constexpr int kRows = 3;
    static constexpr int kSenders = 4;

    static double value(int sender, double time) { return std::sin(time * 3 + sender); }
    void fill(MeasuredGraph& graph, double now);

    std::vector<std::unique_ptr<GraphSettingsDevice>> m_sources;
    std::vector<std::unique_ptr<MeasuredGraph>> m_graphs;
    QTimer m_feed;
    int m_drawn = 0;
};

GraphsPage::GraphsPage()
{
    auto* const grid = new QGridLayout(this);
    for (int i = 0; i < kSenders; ++i) {
        m_sources.push_back(std::make_unique<GraphSettingsDevice>());
        m_sources.back()->setObjectName(QString("sender %1").arg(i));
    }
    const double now = secondsNow();
    for (int i = 0; i < kColumns * kRows; ++i) {
        m_graphs.push_back(std::make_unique<MeasuredGraph>());
        grid->addWidget(&m_graphs.back()->widget(), i / kColumns, i % kColumns);
        fill(*m_graphs.back(), now);
        connect(m_graphs.back()->plot(), &QCustomPlot::afterReplot, this, [this] { ++m_drawn; });
    }
}

void GraphsPage::fill(MeasuredGraph& graph, double now)
{
    for (int sender = 0; sender < kSenders; ++sender) {
        graph.feedFrom(*m_sources[sender]);
        for (double time = now - 10; time < now; time += 0.01) {
            graph.widget().input(value(sender, time), m_sources[sender]->objectName(), time);
        }
    }
}

void GraphsPage::feed()
{
    connect(&m_feed, &QTimer::timeout, this, [this] {
        const double time = secondsNow();
        for (int sender = 0; sender < kSenders; ++sender) {
            m_sources[sender]->input(value(sender, time));
        }
    });
    m_feed.setTimerType(Qt::PreciseTimer);
    m_feed.start(10);
}

/// 1920 x 1080 in all: under 60 % of one core while on view, and little more than nothing on a tab
/// that is not shown.
void panelOfGraphs(benchmark::State& state, bool onView)
{
    QTabWidget tabs;
    auto* const page = new GraphsPage;
    tabs.addTab(page, "graphs");
    tabs.addTab(new QWidget, "other");
    tabs.setCurrentIndex(onView ? 0 : 1);
    tabs.resize(1920, 1080);
    tabs.show();
    page->feed();
    const auto run = [](int milliseconds) {
        QEventLoop loop;
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        loop.exec();
    };
    run(1000);
    for (auto _ : state) {
        page->takeDrawn();
        QElapsedTimer wall;
        wall.start();
        const std::clock_t before = std::clock();
        run(6000);
        const double cpu = double(std::clock() - before) / CLOCKS_PER_SEC;
        const double seconds = wall.elapsed() / 1000.0;
        state.SetIterationTime(cpu);
        state.counters["percent_of_a_core"] = 100 * cpu / seconds;
        state.counters["drawings_per_s"] = page->takeDrawn() / seconds;
    }
}

void measuredOften(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Iterations(1)->Repetitions(5)->ReportAggregatesOnly();
    benchmark->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(refreshAgainstBarePlot)
    ->Args({4, 1000})
    ->Args({4, 10000})
    ->Args({16, 10000})
    ->Args({4, 600000})
    ->Apply(measuredOften);
BENCHMARK_CAPTURE(refreshAgainstQwt, antialiased_as_ours, true)
    ->Args({4, 10000})
    ->Apply(measuredOften);
BENCHMARK_CAPTURE(refreshAgainstQwt, as_it_comes, false)->Args({4, 10000})->Apply(measuredOften);
BENCHMARK(refreshAgainstCharts)->Args({4, 10000})->Apply(measuredOften);
BENCHMARK(filledNoise)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(valueIntoAGraph)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(distinctSenders)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Iterations(1)
    ->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(panelOfGraphs, on_view, true)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(panelOfGraphs, on_another_tab, false)->UseManualTime()->Iterations(1);

#include "bench_graphs.moc"
