// SPDX-License-Identifier: GPL-3.0-or-later

// What a line costs from the bytes of a serial port to its value, and from those of a program.

#include "plugins/serial/FrameQueue.h"
#include "plugins/serial/FrameText.h"
#include "plugins/sources/process/LineQueue.h"

#include <benchmark/benchmark.h>

#include <QString>

namespace {

constexpr int kReadBytes = 64 * 1024;

/// As many lines of a usual length as one read brings.
QByteArray oneRead()
{
    QByteArray read;
    while (read.size() < kReadBytes - 32) {
        read += "temperature 21.53 heater on\n";
    }
    return read;
}

template <class Queue, class Text>
void linesOf(benchmark::State& state, Queue& queue, Text text)
{
    const QByteArray read = oneRead();
    int64_t lines = 0;
    for (auto _ : state) {
        queue.append(read);
        for (; !queue.isEmpty(); ++lines) {
            benchmark::DoNotOptimize(text(queue.takeFirst()));
        }
    }
    state.SetItemsProcessed(lines);
}

void linesOfASerialPort(benchmark::State& state)
{
    norvo::FrameQueue queue(norvo::Framing(), {10000, 1024 * 1024});
    queue.notePause();
    linesOf(state, queue, [](const QByteArray& line) {
        return norvo::readFrameText(norvo::FrameText::Utf8, line);
    });
}
BENCHMARK(linesOfASerialPort)->Unit(benchmark::kMicrosecond);

/// The lines of a program, with the one interface that both have here.
class ProgramLines : public norvo::LineQueue
{
public:
    using LineQueue::LineQueue;

    void append(const QByteArray& bytes) { LineQueue::append(bytes.constData(), bytes.size()); }
};

void linesOfAProgram(benchmark::State& state)
{
    ProgramLines queue({1024 * 1024, 50000, 4 * 1024 * 1024});
    linesOf(state, queue, [](const QByteArray& line) { return QString::fromUtf8(line); });
}
BENCHMARK(linesOfAProgram)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
