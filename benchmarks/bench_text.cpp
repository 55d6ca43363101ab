// SPDX-License-Identifier: GPL-3.0-or-later

// What one more line costs in a text area that holds few lines or many. At 100,000 lines it may
// cost 3 times what it costs at 100.

#include "devices/MultilineDevice.h"
#include "norvo/BaseWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTextDocument>
#include <QTextEdit>

#include <chrono>
#include <memory>

namespace {

constexpr int kFewLines = 100;
constexpr int kManyLines = 100000;
constexpr int kMeasured = 100;

enum class Sight {
    NeverShown,
    Hidden, ///< Has been shown before.
    Visible
};

class Log
{
public:
    explicit Log(Sight sight)
    {
        m_device.setRunning(m_device.initialise());
        m_widget.reset(m_device.createWidget());
        m_widget->initialise();
        m_widget->resize(800, 400);
        if (sight != Sight::NeverShown) {
            m_widget->show();
            QApplication::processEvents();
        }
        m_widget->setVisible(sight == Sight::Visible);
    }

    void fillUpTo(int lines)
    {
        const QTextDocument* document = m_widget->findChild<QTextEdit*>()->document();
        while (document->blockCount() < lines) {
            append();
        }
        QApplication::processEvents();
    }

    /// Microseconds for one line and for what it leaves to the event loop.
    double microsecondsPerLine()
    {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < kMeasured; ++i) {
            append();
            QApplication::processEvents();
        }
        const auto end = std::chrono::steady_clock::now();
        return std::chrono::duration<double, std::micro>(end - start).count() / kMeasured;
    }

private:
    void append() { m_device.input(QString("12:00:00 flow 3.14159")); }

    MultilineDevice m_device;
    std::unique_ptr<BaseWidget> m_widget;
};

void appendLine(benchmark::State& state, Sight sight)
{
    Log log(sight);
    log.fillUpTo(kManyLines - kMeasured);
    double many = 0;
    double few = 0;
    for (auto _ : state) {
        Log shortLog(sight);
        shortLog.fillUpTo(kFewLines);
        few += shortLog.microsecondsPerLine();
        const double microseconds = log.microsecondsPerLine();
        many += microseconds;
        state.SetIterationTime(microseconds * 1e-6);
    }
    state.counters["at_100_us"] = few / double(state.iterations());
    state.counters["at_100000_us"] = many / double(state.iterations());
    state.counters["ratio"] = many / few;
}

void neverShown(benchmark::State& state)
{
    appendLine(state, Sight::NeverShown);
}

void hidden(benchmark::State& state)
{
    appendLine(state, Sight::Hidden);
}

void visible(benchmark::State& state)
{
    appendLine(state, Sight::Visible);
}

} // namespace

#define LINES(function)                                                                            \
    BENCHMARK(function)                                                                            \
        ->UseManualTime()                                                                          \
        ->Iterations(5)                                                                            \
        ->Repetitions(5)                                                                           \
        ->ReportAggregatesOnly()                                                                   \
        ->Unit(benchmark::kMicrosecond)

LINES(neverShown);
LINES(hidden);
LINES(visible);
