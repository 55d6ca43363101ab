// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/PlannedWire.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

namespace norvo {

class Node;
class Panel;
struct PanelPlan;

/// What a panel gets values from, as it is now.
struct Source
{
    enum class State {
        Unknown, ///< It has said nothing yet.
        Well,
        Lost ///< Its other side is away, its program has ended, or the device did not start.
    };

    QString id;
    State state = State::Unknown;
    QDateTime since;    ///< In that state.
    QString message;    ///< The last fault that it told; empty: none.
    quint64 values = 0; ///< That it has sent along wires.
};

/// Watches the devices of a panel that have an output connected(bool), running(bool) or
/// fault(QString): the first of these that is there tells the state. One that only tells faults is
/// lost from a fault to its next value.
///
/// What is wired to a lost source, also through other devices, is stale at once. Another source on
/// the way ends that: what it sends comes from elsewhere.
class SourceWatch : public QObject
{
    Q_OBJECT

public:
    SourceWatch();
    ~SourceWatch() override;

    /// Before each plan is applied: sources speak while a panel starts, too. Those that run on are
    /// watched as before, and those that go are not heard any more.
    void listen(const PanelPlan& plan);
    /// Once it is applied: some have their outputs no sooner, and some did not start. Says of all
    /// displays that are stale then that they are.
    void complete(const Panel& panel);

    QVector<Source> sources() const; ///< In the order of the file.
    bool isEmpty() const { return m_watched.empty(); }
    bool isStale(const QString& device) const { return m_losses.value(device) > 0; }

signals:
    void changed(); ///< The state or the message of a source; not that it has sent values.
    void staleChanged(QString device, bool isStale);

private:
    struct Watched;

    bool watch(const Node& node);
    void hearStates(const Node& node, Watched& watched);
    void countValues(const Node& node, Watched& watched);
    void setState(Watched& watched, Source::State state);
    void tellFault(Watched& watched, const QString& text, bool isLoss);
    void forgetAllBut(const QSet<QString>& devices);
    void findLosses();
    QStringList reachedFrom(const QString& id) const;

    QHash<QString, QVector<PlannedWire>> m_wires;    ///< By the device that they begin at.
    std::vector<std::unique_ptr<Watched>> m_watched; ///< In the order of the file once complete.
    QHash<QString, Watched*> m_byId;
    QSet<QString> m_new;          ///< Devices that the plan has made.
    QHash<QString, int> m_losses; ///< By device: how many lost sources reach it.
};

} // namespace norvo
