// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/state/FileLock.h"
#include "host/services/history/HistoryDatabase.h"
#include "host/services/history/HistoryValue.h"

#include <QHash>
#include <QStringList>
#include <QVector>

#include <memory>

namespace norvo {

/// A value for the file.
struct HistoryRow
{
    int signal = 0; ///< Its place in the list of names.
    HistoryPoint point;
};

/// The file of a history, as its only writer. Belongs to one thread.
///
/// New rows go to the end of a small table, and from there sorted by signal into the large one: a
/// batch of few values of many signals would otherwise write a page of the disk for each.
class HistoryStore
{
public:
    struct Limits
    {
        qint64 keptMs = 0;   ///< Older rows are removed.
        qint64 maxBytes = 0; ///< Of the file, without its log of some megabytes.
    };

    enum class Opening {
        Open,
        Busy,    ///< Another program writes it.
        Later,   ///< error() says why; it may succeed another time.
        Unusable ///< Corrupt, or not a history: to be set aside.
    };

    static constexpr qint64 kMaxAhead = 24LL * 3600 * 1000; ///< Of the file, in milliseconds.
    static constexpr int kMaxRecent = 20000;                ///< Rows not yet sorted in.

    HistoryStore(const QString& path, const QStringList& names, const Limits& limits);

    /// Makes a file that is not there. `wall` is the time now. What the last run left open gets a
    /// gap behind its last value.
    Opening open(qint64 wall);
    bool isOpen() const { return m_database.isOpen(); }
    void close();
    /// Renames the file to end in ".bad", where it replaces an older one.
    bool setAside();

    qint64 newest() const { return m_newest; } ///< Time of the newest row; 0: none.
    /// All or none; false: error() says why. A time that is not behind that of the signal's last
    /// row counts as the same.
    bool append(const QVector<HistoryRow>& rows);
    bool addGaps(); ///< Behind the last value of each signal that has none there.
    /// One step of what keeps the file small; false: error() says why. Each takes well below a
    /// second. `now` is the newest time.
    bool tidy(qint64 now);

    QString error() const { return m_error.isEmpty() ? m_database.error() : m_error; }
    bool isCorrupt() const { return m_database.isCorrupt(); }

private:
    struct Last
    {
        qint64 time = 0;
        int seq = 0;
        bool isGap = true;
    };

    Opening prepare();
    bool makeTables();
    bool readSignals();
    bool insert(int id, const HistoryPoint& point, QHash<int, Last>& last);
    bool sortIn();
    bool trim(qint64 now);
    bool removeBefore(qint64 time);
    bool giveBack(int pages);
    qint64 oldest();

    const QString m_path;
    const QStringList m_names;
    const Limits m_limits;
    std::unique_ptr<FileLock> m_lock;
    HistoryDatabase m_database;
    std::unique_ptr<QSqlQuery> m_insert;
    QVector<int> m_ids;      ///< Of the names.
    QHash<int, Last> m_last; ///< By id, of all signals of the file.
    qint64 m_newest = 0;
    qint64 m_sortedAt = 0; ///< By the history's time.
    qint64 m_trimmedAt = 0;
    bool m_isTrimming = false; ///< There was something to do at the last step.
    int m_recent = 0;
    QString m_error; ///< That is not the database's.
};

} // namespace norvo
