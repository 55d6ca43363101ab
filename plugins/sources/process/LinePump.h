// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/sources/process/FileDescriptor.h"
#include "plugins/sources/process/LineQueue.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

namespace norvo {

/// Brings lines from a pipe to the event loop, a bounded piece each turn.
///
/// A turn reads 64 KiB at most and emits for 2 ms at most. A writer that
/// keeps it busy makes it pause for 5 ms between turns; the writer meets a full pipe meanwhile.
class LinePump : public QObject
{
    Q_OBJECT

public:
    LinePump(FileDescriptor readEnd, const LineQueue::Limits& limits, QObject* parent);

    LineQueue& queue() { return m_queue; }

    /// The writer is gone: takes what is left in the pipe; drained() follows when all is emitted.
    void finish();
    void discard(); ///< Throws away what is there, so that the writer does not wait for it.

signals:
    void line(const QByteArray& line); ///< A receiver may delete the pump.
    void drained();

private:
    void turn();
    void readRest(); ///< What the pipe holds now.
    int readOnce();  ///< Bytes read; 0 at the end of the stream, below 0 when there are none.

    FileDescriptor m_pipe;
    QSocketNotifier m_notifier;
    QTimer m_pause;
    LineQueue m_queue;
    bool m_inTurn = false;
    bool m_atEnd = false;
    bool m_finished = false;
};

} // namespace norvo
