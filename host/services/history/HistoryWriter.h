// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/history/HistoryClock.h"
#include "host/services/history/HistoryQuery.h"
#include "host/services/history/HistoryStore.h"

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace norvo {

/// Writes rows into a history's file, and reads from it, in a thread of its own: nobody waits for
/// the disk. What cannot be written waits, up to kMaxQueued rows; more are counted and lost.
class HistoryWriter : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds kInterval{500}; ///< Between two batches.
    static constexpr int kMaxQueued = 200000;

    /// Reads for whoever asked, in the thread. The query is null where there is no file to read.
    /// `ahead` milliseconds is the time of the rows later than the wall clock.
    using Job = std::function<void(HistoryQuery* query, qint64 ahead)>;

    /// `fileName` is what messages call the file, and relative to the working folder of now.
    HistoryWriter(const QString& fileName, const QStringList& names,
                  const HistoryStore::Limits& limits);
    ~HistoryWriter() override; ///< Writes what it has, and a gap behind the last values.

    void add(HistoryRow row); ///< With a time of the boot clock. Cheap.
    void read(Job job);       ///< After all that was added before has been written.

signals:
    void problem(QString line); ///< One line for the user; in the thread of this object.

private:
    void run();
    bool isReady();
    bool setAside();
    void write();
    void noteSuccess();
    void follow();
    void serve(const std::vector<Job>& jobs);
    void fail(const QString& reason, const QString& consequence);
    void report(const QString& text);

    const QString m_fileName;
    const QString m_path; ///< Absolute.

    std::mutex m_mutex;
    std::condition_variable m_wake;
    QVector<HistoryRow> m_queue;
    std::vector<Job> m_jobs;
    qint64 m_lost = 0;
    bool m_isEnding = false;

    // Of the thread alone:
    HistoryStore m_store;
    HistoryQuery m_query;
    std::optional<HistoryClock> m_clock;
    QVector<HistoryRow> m_batch;
    bool m_isFailing = false;

    std::thread m_thread; ///< Last: it uses the others.
};

} // namespace norvo
