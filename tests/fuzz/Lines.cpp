// SPDX-License-Identifier: GPL-3.0-or-later

#include "FuzzInput.h"
#include "Harness.h"
#include "plugins/sources/process/CommandWords.h"
#include "plugins/sources/process/LineQueue.h"

#include <algorithm>

using norvo::LineQueue;
using norvo::require;

namespace {

constexpr LineQueue::Limits kLimits{64, 8, 256};

QByteArrayList linesOf(LineQueue& queue)
{
    QByteArrayList lines;
    while (!queue.isEmpty()) {
        lines += queue.takeFirst();
        require(lines.last().size() <= kLimits.lineBytes, "a line is no longer than its limit");
    }
    return lines;
}

} // namespace

/// First line: how long the pieces are; then what a child process writes. In whatever pieces it
/// comes, the lines are the same. The whole as a command is split, or refused with a text.
NORVO_HARNESS(Lines)
{
    norvo::FuzzInput parts(input);
    norvo::FuzzInput pieces(parts.line());
    const QByteArray stream = parts.rest();
    LineQueue whole(kLimits);
    whole.append(stream.constData(), stream.size());
    whole.finish();
    LineQueue inPieces(kLimits);
    for (int at = 0; at < stream.size();) {
        const int size = qMin(1 + pieces.choice(80), stream.size() - at);
        inPieces.append(stream.constData() + at, size);
        at += size;
    }
    inPieces.finish();
    const QByteArrayList lines = linesOf(whole);
    require(lines.size() <= kLimits.lines, "no more lines wait than may");
    require(lines == linesOf(inPieces), "lines do not depend on the pieces that they come in");
    const QByteArrayList written = stream.split('\n');
    const auto cut = std::count_if(written.cbegin(), written.cend(), [](const QByteArray& line) {
        return line.size() > kLimits.lineBytes;
    });
    require(whole.takeDropped() == inPieces.takeDropped(), "nor does what is dropped");
    require(whole.takeCut() == cut && inPieces.takeCut() == cut, "a line that is cut counts once");

    const norvo::CommandWords command = norvo::splitCommand(QString::fromUtf8(input));
    require(command.error.isEmpty() != command.words.isEmpty(), "a command has words or an error");
}
