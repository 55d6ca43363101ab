// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/history/HistoryDatabase.h"
#include "host/services/history/HistoryValue.h"

#include <QStringList>
#include <QVector>

#include <functional>
#include <optional>

namespace norvo {

/// What is asked of a history: the values of one signal in a span of time, both ends included.
struct HistoryRange
{
    QString device; ///< Its id.
    QString signal; ///< Its name, without types.
    qint64 from = 0;
    qint64 to = 0;            ///< Milliseconds since the epoch, UTC, as `from`.
    int maxRows = 0;          ///< More are thinned out, but no gap; 0: all.
    bool isFirstOnly = false; ///< Only the oldest of them.
};

/// Reads a history's file, also while a panel writes it. Belongs to the thread that made it.
///
/// In a running panel HistoryService::read() does this beside the panel's thread; here whoever
/// calls waits.
class HistoryQuery
{
public:
    using Take = std::function<bool(const HistoryPoint& point)>; ///< False: enough.

    bool open(const QString& path); ///< False, and error() says why: not there, not a history.
    bool isOpen() const { return m_database.isOpen(); }
    void close() { m_database.close(); }
    const QString& error() const { return m_error; }

    QStringList signalNames(); ///< All that the file holds, "device.signal", by name.

    /// In the order of time; nothing where the signal is not in the history. Where error() says
    /// why, some or all are missing. Of more than `maxRows` the least and the greatest number of
    /// each of `maxRows` / 2 equal spans, which draws the same line; gaps within such a span, and
    /// texts, are then left out.
    QVector<HistoryPoint> read(const HistoryRange& range);

    /// The same, one by one and all of them, whatever `maxRows` says, in memory that does not grow
    /// with their number. False: error() says why it ended early.
    bool forEach(const HistoryRange& range, const Take& take);

private:
    /// Where the reading of a signal stands.
    struct Cursor
    {
        int signal;
        qint64 time;
        int seq;
        qint64 to;
    };

    int takePage(QSqlQuery& query, Cursor& cursor, int limit, const Take& take);
    bool readPages(Cursor cursor, const Take& take);
    std::optional<int> idOf(const HistoryRange& range);
    QVector<HistoryPoint> thinned(const HistoryRange& range);

    HistoryDatabase m_database;
    QString m_error;
};

} // namespace norvo
