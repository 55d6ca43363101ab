// SPDX-License-Identifier: GPL-3.0-or-later

// What each step of a hand costs that edits a panel of a thousand devices while it runs, from the
// edit of the text to the panel that runs with it: alone, and with the whole editor open.

#include "benchmarks/RunningFile.h"
#include "host/editor/EditSession.h"
#include "host/editor/canvas/CanvasEdits.h"
#include "host/editor/file/EditedFile.h"
#include "host/editor/frame/EditorFrame.h"
#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/PageEdit.h"
#include "host/panel/edit/ParamEdit.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <algorithm>
#include <optional>

using namespace norvo;

namespace {

constexpr int kReadouts = 899;
constexpr int kSources = 100;
constexpr int kColumns = 30;

/// A button, and readouts fed by sources: 1,000 devices, as many connections, some 136 kB.
QByteArray largePanel()
{
    QByteArray devices = "title: Large\ndevices:\n  last: {device: button, params: {text: V0, "
                         "widget/row: 0, widget/column: 0}}\n";
    QByteArray arrows = "connections:\n";
    for (int i = 0; i < kSources; ++i) {
        const QByteArray number = QByteArray::number(i);
        devices += "  source" + number +
                   ": {device: generator, params: {waveform: noise, interval: 60000}}\n";
        arrows +=
            "  - source" + number + ".output(double) -> readout" + number + ".input(double)\n";
    }
    for (int i = 0; i < kReadouts; ++i) {
        const QByteArray number = QByteArray::number(i);
        devices += "  readout" + number + ":\n    device: output_digital\n    params: {name: T" +
                   number + ", widget/row: " + QByteArray::number(1 + i / kColumns) +
                   ", widget/column: " + QByteArray::number(i % kColumns) + "}\n";
        arrows += "  - source" + QByteArray::number((i + 7) % kSources) +
                  ".output(double) -> readout" + number + ".input(double)\n";
    }
    return devices + arrows;
}

/// The panel that is edited, with the editor around it where that is asked for.
struct Editing
{
    explicit Editing(const benchmark::State& state)
        : session(*panel.reload, catalogue(), largePanel()), edits(session)
    {
        if (state.range(0) != 0) {
            file.emplace(panel.path, session);
            frame.emplace(session, *file, panel.running->window());
        }
        session.select({"readout5"});
        RunningFile::settle();
    }

    /// Runs the step for each round, and takes it back, beside the clock, where that is asked for.
    template <class Step>
    void measure(benchmark::State& state, const Step& step, bool isUndone = true)
    {
        double worst = 0;
        double painting = 0;
        int round = 0;
        for (auto _ : state) {
            QElapsedTimer clock;
            clock.start();
            check(step(++round));
            const double ms = milliseconds(clock);
            state.SetIterationTime(ms * 1e-3);
            worst = std::max(worst, ms);
            clock.start();
            QCoreApplication::processEvents();
            painting += milliseconds(clock);
            if (isUndone) {
                check(session.undo());
            }
            RunningFile::settle();
        }
        state.counters["worst ms"] = worst;
        state.counters["events ms"] = painting / double(state.iterations());
    }

    static void check(const QString& fault)
    {
        if (!fault.isEmpty()) {
            qFatal("%s", qPrintable(fault));
        }
    }

    RunningFile panel{largePanel()};
    EditSession session;
    CanvasEdits edits;
    std::optional<EditedFile> file;
    std::optional<EditorFrame> frame;
};

Cells cellAt(int row, int column)
{
    Cells cell;
    cell.row = row;
    cell.column = column;
    return cell;
}

void withAndWithoutEditor(benchmark::internal::Benchmark* measurement)
{
    measurement->Arg(0)->Arg(1)->ArgName("editor")->UseManualTime()->Iterations(20)->Unit(
        benchmark::kMillisecond);
}

} // namespace

static void parameter(benchmark::State& state)
{
    Editing editing(state);
    editing.measure(
        state,
        [&](int round) {
            return editing.session.change("text", [round](YamlEdit& edit) {
                return ParamEdit::setParam(edit, "last", "text", QString("V%1").arg(round));
            });
        },
        false);
}
BENCHMARK(parameter)->Apply(withAndWithoutEditor);

static void selection(benchmark::State& state)
{
    Editing editing(state);
    editing.measure(
        state,
        [&](int round) {
            editing.session.select({QString("readout%1").arg(round * 37)});
            return QString();
        },
        false);
}
BENCHMARK(selection)->Apply(withAndWithoutEditor);

static void dragStep(benchmark::State& state)
{
    Editing editing(state);
    editing.measure(
        state,
        [&](int round) {
            return editing.edits.move({{"last", cellAt(0, round)}}, "drag");
        },
        false);
}
BENCHMARK(dragStep)->Apply(withAndWithoutEditor);

static void undo(benchmark::State& state)
{
    Editing editing(state);
    Editing::check(editing.edits.move({{"last", cellAt(0, 1)}}));
    editing.measure(
        state,
        [&](int round) { return round % 2 != 0 ? editing.session.undo() : editing.session.redo(); },
        false);
}
BENCHMARK(undo)->Apply(withAndWithoutEditor);

static void newDevice(benchmark::State& state)
{
    Editing editing(state);
    editing.measure(state, [&](int) { return editing.session.addDevice("button", cellAt(0, 5)); });
}
BENCHMARK(newDevice)->Apply(withAndWithoutEditor);

static void removal(benchmark::State& state)
{
    Editing editing(state);
    editing.measure(state, [&](int) { return editing.edits.remove({"readout400"}); });
}
BENCHMARK(removal)->Apply(withAndWithoutEditor);

static void renaming(benchmark::State& state)
{
    Editing editing(state);
    editing.measure(state, [&](int) {
        return editing.session.change(
            "id", [](YamlEdit& edit) { return DeviceEdit::rename(edit, "readout400", "other"); });
    });
}
BENCHMARK(renaming)->Apply(withAndWithoutEditor);

static void pasteOfFive(benchmark::State& state)
{
    Editing editing(state);
    const QByteArray copied =
        editing.edits.copy({"readout0", "readout100", "readout200", "readout300", "readout400"});
    editing.measure(state, [&](int) { return editing.edits.paste(copied, cellAt(0, 0)); });
}
BENCHMARK(pasteOfFive)->Apply(withAndWithoutEditor);

static void insertedRow(benchmark::State& state)
{
    Editing editing(state);
    editing.measure(state, [&](int) { return editing.edits.insertRow({}, 15); });
}
BENCHMARK(insertedRow)->Apply(withAndWithoutEditor);

static void firstPages(benchmark::State& state)
{
    Editing editing(state);
    editing.measure(state, [&](int) {
        return editing.session.change(
            "pages", [](YamlEdit& edit) { return PageEdit::add(edit, {}, "Second"); });
    });
}
BENCHMARK(firstPages)->Apply(withAndWithoutEditor);
