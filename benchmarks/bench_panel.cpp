// SPDX-License-Identifier: GPL-3.0-or-later

// Starting a large panel, phase by phase, and what a busy panel costs while it runs.

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/Listing.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/run/Panel.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/file/PanelFile.h"
#include "host/window/PanelPages.h"
#include "host/window/PanelWindow.h"
#include "host/program/PluginSet.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>
#include <QVBoxLayout>

#include <ctime>
#include <memory>
#include <unistd.h>
#include <utility>

using namespace norvo;

namespace {

constexpr int kLabels = 1000;
constexpr int kReadouts = 200;
constexpr int kValuesPerSecond = 10;
constexpr int kMeasuredMs = 5000;

const DeviceManager& deviceTypes()
{
    static PluginSet plugins;
    if (plugins.isEmpty()) {
        plugins.load(NORVO_BUILD_DIR "/plugins");
    }
    return plugins.manager();
}

double residentKiB()
{
    QFile statm("/proc/self/statm");
    if (!statm.open(QIODevice::ReadOnly)) {
        return 0.0;
    }
    const double pages = statm.readAll().split(' ').value(1).toDouble();
    return pages * double(sysconf(_SC_PAGESIZE)) / 1024.0;
}

/// `count` displays of that type on a grid of `columns`, fed by sources of 10 values a second.
QByteArray panelOf(const QString& type, int count, int columns, const QString& params)
{
    constexpr int sources = 10;
    QString devices;
    QString arrows;
    for (int i = 0; i < sources; ++i) {
        devices += QString("  source%1: {device: generator, params: {waveform: noise, seed: %1, "
                           "amplitude: 50, offset: 50, interval: %2}}\n")
                       .arg(i)
                       .arg(1000 / kValuesPerSecond);
    }
    for (int i = 0; i < count; ++i) {
        devices += QString("  display%1: {device: %2, params: {%3, widget/row: %4, "
                           "widget/column: %5}}\n")
                       .arg(QString::number(i), type, params, QString::number(i / columns),
                            QString::number(i % columns));
        arrows += QString("  - source%1.output(double) -> display%2.input(double)\n")
                      .arg(i % sources)
                      .arg(i);
    }
    return ("title: Benchmark\ndevices:\n" + devices + "connections:\n" + arrows).toUtf8();
}

/// Milliseconds since the last call.
double lap(QElapsedTimer& clock)
{
    const double ms = double(clock.nsecsElapsed()) * 1e-6;
    clock.start();
    return ms;
}

double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

void waitFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

PanelPages& addPages(PanelWindow& window)
{
    auto* const pages = new PanelPages;
    (new QVBoxLayout(window.page()))->addWidget(pages);
    return *pages;
}

} // namespace

/// What a check does with a panel file once the plug-ins are loaded, the words of their types and
/// all.
static void checkThousandDevices(benchmark::State& state)
{
    const DeviceManager& manager = deviceTypes();
    const QByteArray text = panelOf("output_digital", kLabels, 20, "widget/precision: 2");
    for (auto _ : state) {
        Diagnostics diagnostics("panel.yaml");
        const PanelDescription description = PanelFile::parse(text, "panel.yaml", diagnostics);
        const Catalogue catalogue(manager);
        PanelPlan::make(description, manager, {}, diagnostics, {}, SenseCheck(catalogue));
        if (!diagnostics.isEmpty()) {
            state.SkipWithError(qPrintable(diagnostics.sorted().value(0).toString()));
        }
    }
}
BENCHMARK(checkThousandDevices)->Unit(benchmark::kMillisecond);

/// From the text of a panel file to its first picture; the counters are milliseconds.
static void startThousandLabels(benchmark::State& state)
{
    const DeviceManager& manager = deviceTypes();
    const QByteArray text = panelOf("label", kLabels, 20, "Value: '%1 V'");
    for (auto _ : state) {
        const double before = residentKiB();
        QElapsedTimer total;
        QElapsedTimer clock;
        total.start();
        clock.start();
        Diagnostics diagnostics("panel.yaml");
        const PanelDescription description = PanelFile::parse(text, "panel.yaml", diagnostics);
        state.counters["1 parse"] = lap(clock);
        PanelPlan plan = PanelPlan::make(description, manager, {}, diagnostics);
        state.counters["2 plan"] = lap(clock);

        PanelWindow window("Benchmark");
        Panel panel(addPages(window));
        panel.apply(std::move(plan), diagnostics);
        state.counters["3 start"] = lap(clock);
        window.resize(1280, 800);
        window.show();
        QCoreApplication::processEvents();
        const QPixmap picture = window.grab();
        state.counters["4 show"] = lap(clock);
        state.SetIterationTime(double(total.nsecsElapsed()) * 1e-9);
        state.counters["KiB each"] = (residentKiB() - before) / kLabels;
        if (!diagnostics.isEmpty() || picture.isNull()) {
            state.SkipWithError(qPrintable(diagnostics.sorted().value(0).toString()));
        }
    }
}
BENCHMARK(startThousandLabels)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(5)
    ->Unit(benchmark::kMillisecond);

/// From the text of a panel file to running devices: a program with named outputs and inputs, each
/// of them connected.
static void startNamedPorts(benchmark::State& state)
{
    const DeviceManager& manager = deviceTypes();
    QString outputs;
    QString inputs;
    QString arrows;
    for (int i = 0; i < state.range(0) / 2; ++i) {
        outputs += QString("      out%1: 'value%1 ([-0-9.]+)'\n").arg(i);
        inputs += QString("      in%1: 'set%1 %2'\n").arg(QString::number(i), "%1");
        arrows += QString("  - child.out%1 -> log.input(QString)\n  - source.output(double) -> "
                          "child.in%1\n")
                      .arg(i);
    }
    const QString ports =
        outputs.isEmpty() ? "" : "    outputs:\n" + outputs + "    inputs:\n" + inputs;
    const QString text =
        "devices:\n  source: {device: generator, params: {interval: 1000}}\n"
        "  log: {device: multiline}\n  child:\n    device: process\n    params: {command: cat}\n" +
        ports + (arrows.isEmpty() ? "" : "connections:\n" + arrows);
    const Catalogue catalogue(manager);
    PanelWindow window("Benchmark");
    for (auto _ : state) {
        Diagnostics diagnostics("panel.yaml");
        const double before = processorSeconds();
        const PanelDescription description =
            PanelFile::parse(text.toUtf8(), "panel.yaml", diagnostics);
        Panel panel(addPages(window));
        panel.apply(
            PanelPlan::make(description, manager, {}, diagnostics, {}, SenseCheck(catalogue)),
            diagnostics);
        state.SetIterationTime(processorSeconds() - before);
        panel.stop();
        delete window.page()->layout();
        if (!diagnostics.isEmpty()) {
            state.SkipWithError(qPrintable(diagnostics.sorted().value(0).toString()));
        }
    }
}
BENCHMARK(startNamedPorts)
    ->Arg(0)
    ->Arg(1000)
    ->UseManualTime()
    ->Iterations(10)
    ->Unit(benchmark::kMillisecond);

/// Processor time over wall time while values arrive, in percent of one processor.
static void runReadouts(benchmark::State& state)
{
    Diagnostics diagnostics("panel.yaml");
    const QByteArray text =
        panelOf("output_digital", kReadouts, 20, "widget/valueSize: 14, widget/labelSize: 6");
    const PanelDescription description = PanelFile::parse(text, "panel.yaml", diagnostics);
    PanelWindow window("Benchmark");
    Panel panel(addPages(window));
    panel.apply(PanelPlan::make(description, deviceTypes(), {}, diagnostics), diagnostics);
    window.resize(1280, 800);
    window.show();
    waitFor(1000);
    for (auto _ : state) {
        const double before = processorSeconds();
        QElapsedTimer clock;
        clock.start();
        waitFor(kMeasuredMs);
        const double wall = double(clock.nsecsElapsed()) * 1e-9;
        state.SetIterationTime(wall);
        state.counters["processor %"] = 100.0 * (processorSeconds() - before) / wall;
    }
    if (diagnostics.hasErrors()) {
        state.SkipWithError("the panel has errors");
    }
}
BENCHMARK(runReadouts)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(3)
    ->Unit(benchmark::kMillisecond);

/// Reading a panel of 1,000 uses of a template with three devices and three connections.
static void expandThousandUses(benchmark::State& state)
{
    QByteArray text =
        "templates:\n  t:\n    with: {n: , unit: V}\n    devices:\n"
        "      a: {device: generator, params: {seed: $(n), period: 1$(n)}}\n"
        "      b: {device: label, params: {Value: \"%1 $(unit)\", widget: {row: 0, column: 0}}}\n"
        "      c: {device: output_digital, params: {name: No. $(n), widget: {row: 0, column: 1}}}\n"
        "    connections:\n      - a.output(double) -> b.input(double)\n"
        "      - a.output(double) -> c.input(double)\n      - c.output(QString) -> "
        "b.input(QString)\n"
        "devices:\n";
    for (int i = 0; i < 1000; ++i) {
        const QByteArray n = QByteArray::number(i);
        text += "  u" + n + ": {use: t, with: {n: " + n +
                "}, at: {row: " + QByteArray::number(i % 999) + "}}\n";
    }
    for (auto _ : state) {
        Diagnostics diagnostics("panel.yaml");
        const PanelDescription panel = PanelFile::parse(text, "panel.yaml", diagnostics);
        if (panel.devices.size() != 3000 || !diagnostics.isEmpty()) {
            state.SkipWithError("the panel is not sound");
        }
    }
}
BENCHMARK(expandThousandUses)->Unit(benchmark::kMillisecond);

/// The catalogue of all types, from their tables to the page of documentation.
static void describeAllTypes(benchmark::State& state)
{
    const DeviceManager& manager = deviceTypes();
    for (auto _ : state) {
        const Catalogue catalogue(manager);
        benchmark::DoNotOptimize(Listing::markdown(Listing::allTypes(catalogue)));
    }
}
BENCHMARK(describeAllTypes)->Unit(benchmark::kMillisecond);
