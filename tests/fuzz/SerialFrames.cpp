// SPDX-License-Identifier: GPL-3.0-or-later

#include "FuzzInput.h"
#include "Harness.h"
#include "plugins/serial/FrameQueue.h"
#include "plugins/serial/FrameText.h"

using norvo::FrameQueue;
using norvo::FrameText;
using norvo::Framing;
using norvo::require;

namespace {

constexpr FrameQueue::Limits kLimits{1000, 1 << 20};

Framing framingOf(norvo::FuzzInput& choices)
{
    static const char* const prefixes[] = {"1", "2 big", "2 little", "4 big", "4 little"};
    Framing framing;
    framing.kind = Framing::Kind(choices.choice(3));
    framing.length = 1 + choices.choice(40);
    framing.readPrefix(prefixes[choices.choice(5)]);
    framing.readEnd(QString::fromUtf8(choices.rest()));
    return framing;
}

QByteArrayList framesOf(FrameQueue& queue)
{
    QByteArrayList frames;
    while (!queue.isEmpty()) {
        frames += queue.takeFirst();
    }
    return frames;
}

/// What is written as a frame is read as that frame.
void requireRoundTrip(const Framing& framing, const QByteArray& content)
{
    const auto frame = framing.wrap(content);
    const bool isWhole = framing.kind != Framing::Kind::Fixed || content.size() == framing.length;
    if (!frame || !isWhole) {
        return;
    }
    FrameQueue queue(framing, kLimits);
    queue.notePause();
    queue.append(*frame);
    const QByteArrayList frames = framesOf(queue);
    require(frames == QByteArrayList{content}, "what is written as a frame is read as that frame");
}

} // namespace

/// First line: the length of pieces; second: the framing; then what comes. In whatever pieces it
/// comes, the frames are the same.
NORVO_HARNESS(SerialFrames)
{
    norvo::FuzzInput parts(input);
    norvo::FuzzInput pieces(parts.line());
    norvo::FuzzInput choices(parts.line());
    const Framing framing = framingOf(choices);
    const QByteArray stream = parts.rest();
    FrameQueue whole(framing, kLimits);
    whole.notePause();
    whole.append(stream);
    FrameQueue inPieces(framing, kLimits);
    inPieces.notePause();
    for (int at = 0; at < stream.size();) {
        const int size = 1 + pieces.choice(80);
        inPieces.append(stream.mid(at, size));
        at += size;
    }
    const QByteArrayList frames = framesOf(whole);
    for (const QByteArray& frame : frames) {
        for (const FrameText form : {FrameText::Latin1, FrameText::Hex}) {
            const auto written = norvo::writeFrameText(form, norvo::readFrameText(form, frame));
            require(written == frame, "a frame's text is written as that frame");
        }
        norvo::readFrameText(FrameText::Utf8, frame);
        norvo::writeFrameText(FrameText::Hex, QString::fromUtf8(frame));
    }
    require(frames == framesOf(inPieces), "frames do not depend on the pieces that they come in");
    requireRoundTrip(framing, stream);
}
