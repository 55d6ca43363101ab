// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QSet>
#include <QTimer>

/// The intervals of all timers that time out while this lives.
class TickingTimers : public QObject
{
public:
    TickingTimers() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (const auto* timer = qobject_cast<QTimer*>(watched);
            timer && event->type() == QEvent::Timer) {
            intervals.insert(timer->interval());
        }
        return false;
    }

    QSet<int> intervals;
};
