// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QEvent>
#include <QHash>
#include <QObject>

/// Counts the events that reach one object, by their type.
class EventCounter : public QObject
{
public:
    explicit EventCounter(QObject* watched) { watched->installEventFilter(this); }

    /// How many came since the last call for that type.
    int take(QEvent::Type type) { return m_counts.take(type); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        ++m_counts[event->type()];
        return false;
    }

private:
    QHash<int, int> m_counts;
};
