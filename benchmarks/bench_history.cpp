// SPDX-License-Identifier: GPL-3.0-or-later

// What the history costs: a panel that records 10,000 values a second, a day of 100 signals, and a
// graph that is filled at the start.

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/file/PanelFile.h"
#include "host/program/PluginSet.h"
#include "host/program/run/RunningPanel.h"
#include "host/services/history/HistoryQuery.h"
#include "host/services/history/HistoryStore.h"

#include "norvo/BaseDevice.h"

#include <benchmark/benchmark.h>

#include <QDateTime>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <memory>

using namespace norvo;

namespace {

constexpr int kSignals = 100;
constexpr HistoryStore::Limits kLimits{1000LL * 24 * 3600 * 1000, 10'000'000'000};

const DeviceManager& deviceTypes()
{
    static PluginSet plugins;
    if (plugins.isEmpty()) {
        plugins.load(NORVO_BUILD_DIR "/plugins");
    }
    return plugins.manager();
}

/// A panel with all that the program puts beside it, in its window.
class Started
{
public:
    explicit Started(const QByteArray& text)
        : m_diagnostics("panel.yaml"),
          m_description(PanelFile::parse(text, "panel.yaml", m_diagnostics)),
          m_catalogue(deviceTypes()),
          m_knowledge(m_catalogue),
          running(m_description, m_knowledge, {})
    {
        running.start(
            PanelPlan::make(m_description, deviceTypes(), {}, m_diagnostics, {}, m_knowledge),
            m_diagnostics);
        running.window().resize(1024, 600);
        running.window().show();
    }

    bool isSound() const { return !m_diagnostics.hasErrors(); }
    void send(const QString& id, double value)
    {
        QMetaObject::invokeMethod(running.panel().device(id), "input", Q_ARG(double, value));
    }

private:
    Diagnostics m_diagnostics;
    const PanelDescription m_description;
    const Catalogue m_catalogue;
    const SenseCheck m_knowledge;

public:
    RunningPanel running;
};

double secondsOf(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

/// 100 sources, some of them on graphs; recorded or not.
QByteArray busyPanel(const QString& historyFile)
{
    QByteArray devices = "devices:\n"
                         "  graph: {device: output_graph, params: {widget/timePeriod: 60}}\n"
                         "  readout: {device: output_digital}\n";
    QByteArray recorded;
    for (int i = 0; i < kSignals; ++i) {
        const QByteArray id = "s" + QByteArray::number(i);
        devices += "  " + id + ": {device: graph_settings}\n";
        recorded += (i > 0 ? ", " : "") + id + ".output";
    }
    devices += "connections:\n  - s0.output -> graph.input\n  - s1.output -> graph.input\n"
               "  - s0.output -> readout.input(double)\n";
    return historyFile.isEmpty() ? devices
                                 : "history: {file: " + historyFile.toUtf8() + ", signals: [" +
                                       recorded + "]}\n" + devices;
}

/// 10,000 values a second for a minute: to stay under 30 % of a core, and the window never late by
/// 50 ms. Without a history for comparison.
void busyMinute(benchmark::State& state, bool isRecorded)
{
    constexpr int seconds = 60;
    constexpr int beat = 10; // Milliseconds.
    const QTemporaryDir folder;
    const QString file = folder.filePath("h.sqlite");
    for (auto _ : state) {
        Started panel(busyPanel(isRecorded ? file : QString()));
        std::vector<BaseDevice*> sources;
        for (int i = 0; i < kSignals; ++i) {
            sources.push_back(panel.running.panel().device("s" + QString::number(i)));
        }
        qint64 sent = 0;
        qint64 worst = 0;
        QElapsedTimer clock;
        QTimer timer;
        QEventLoop loop;
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, [&] {
            static qint64 last = 0;
            const qint64 now = clock.elapsed();
            worst = sent > 0 ? std::max(worst, now - last - beat) : 0;
            last = now;
            for (; sent < std::min<qint64>(now, seconds * 1000) * 10; ++sent) {
                QMetaObject::invokeMethod(sources[size_t(sent % kSignals)], "input",
                                          Q_ARG(double, double(sent)));
            }
            if (now > seconds * 1000) {
                loop.quit();
            }
        });
        const double before = secondsOf(CLOCK_PROCESS_CPUTIME_ID);
        const double beforeHere = secondsOf(CLOCK_THREAD_CPUTIME_ID);
        clock.start();
        timer.start(beat);
        loop.exec();
        const double took = double(clock.elapsed()) * 0.001;
        state.counters["core%"] = (secondsOf(CLOCK_PROCESS_CPUTIME_ID) - before) / took * 100;
        state.counters["window%"] = (secondsOf(CLOCK_THREAD_CPUTIME_ID) - beforeHere) / took * 100;
        state.counters["lateMs"] = double(worst);
        state.counters["sent"] = double(sent);
        panel.running.stop();
    }
    if (isRecorded) {
        HistoryDatabase database;
        database.open(file, HistoryDatabase::Mode::ReadOnly);
        state.counters["written"] =
            database.value("SELECT count(*) FROM history WHERE value NOT NULL").toDouble();
        state.counters["MB"] = double(QFileInfo(file).size()) / 1e6;
    }
}
BENCHMARK_CAPTURE(busyMinute, recorded, true)->Iterations(1)->UseRealTime();
BENCHMARK_CAPTURE(busyMinute, notRecorded, false)->Iterations(1)->UseRealTime();

/// The file of a day: each second a value of 100 signals, written and sorted as a panel does it.
/// NORVO_HISTORY_DAY names one that stays, for further measurements.
class Day
{
public:
    Day() : file(qEnvironmentVariable("NORVO_HISTORY_DAY", m_folder.filePath("day.sqlite")))
    {
        QStringList names;
        for (int i = 0; i < kSignals; ++i) {
            names.append(QString("s%1.output").arg(i));
        }
        HistoryStore store(file, names, kLimits);
        store.open(QDateTime::currentMSecsSinceEpoch());
        for (int minute = 0; store.newest() < start + kDay - 60'000 && minute < 24 * 60; ++minute) {
            QVector<HistoryRow> rows;
            for (int i = 0; i < 60 * kSignals; ++i) {
                const qint64 time = start + minute * 60'000 + i / kSignals * 1000;
                rows.append(
                    {i % kSignals, {time, HistoryValue::of(double((i * 7919) % 1000) * 0.1)}});
            }
            store.append(rows);
            store.tidy(start + (minute + 1) * 60'000);
        }
    }

    static constexpr qint64 kDay = 24 * 3600 * 1000;
    static constexpr qint64 start = 1'750'000'000'000;

private:
    const QTemporaryDir m_folder;

public:
    const QString file;
};

/// Ten minutes of one signal out of the day: to stay under 20 ms.
void tenMinutesOfADay(benchmark::State& state)
{
    static const Day day;
    HistoryQuery query;
    if (!query.open(day.file)) {
        state.SkipWithError("no file");
        return;
    }
    state.counters["MB"] = double(QFileInfo(day.file).size()) / 1e6;
    int round = 0;
    for (auto _ : state) {
        const qint64 from = Day::start + (++round * 7919LL * 1000) % (Day::kDay - 600'000);
        const int rows =
            query.read({QString("s%1").arg(round % kSignals), "output", from, from + 599'999, 0})
                .size();
        if (rows != 600) {
            state.SkipWithError("rows are missing");
        }
    }
}
BENCHMARK(tenMinutesOfADay)->Unit(benchmark::kMillisecond);

/// A graph of ten minutes at 100 values a second, from the first value to the full curve: to stay
/// under 100 ms. What is read before that value came is not in it.
void graphIsFilled(benchmark::State& state, bool isReadBefore)
{
    constexpr int points = 60'000;
    for (auto _ : state) {
        state.PauseTiming();
        const QTemporaryDir folder;
        const QString file = folder.filePath("h.sqlite");
        const qint64 now = QDateTime::currentMSecsSinceEpoch();
        {
            HistoryStore store(file, {"one.output"}, kLimits);
            QVector<HistoryRow> rows;
            for (int i = 0; i < points; ++i) {
                rows.append({0, {now - (points - i) * 10, HistoryValue::of(double(i % 100))}});
            }
            store.open(now);
            store.append(rows);
            store.tidy(now);
        }
        Started panel("history: {file: " + file.toUtf8() +
                      ", signals: [one.output]}\n"
                      "devices:\n"
                      "  one: {device: graph_settings}\n"
                      "  graph: {device: output_graph, params: {widget/timePeriod: 610}}\n"
                      "connections:\n"
                      "  - one.output -> graph.input\n");
        if (isReadBefore) {
            QEventLoop loop;
            QTimer::singleShot(500, &loop, &QEventLoop::quit);
            loop.exec();
        }
        state.ResumeTiming();
        panel.send("one", 1);
        state.PauseTiming();
        panel.running.stop();
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(graphIsFilled, atOnce, false)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(9);
BENCHMARK_CAPTURE(graphIsFilled, later, true)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(9);

} // namespace
