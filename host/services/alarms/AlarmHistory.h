// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/alarms/Alarm.h"
#include "host/services/disk/DiskSync.h"

#include <QHash>
#include <QObject>
#include <QTimer>

#include <deque>
#include <memory>
#include <optional>

namespace norvo {

class FileLock;

/// One thing that happened to an alarm, as the history keeps it.
struct AlarmEntry
{
    qint64 time = 0; ///< In milliseconds since 1970, as all of these.
    QString event;   ///< began, ended, acknowledged, shelved or unshelved.
    QString id;
    QString device;
    AlarmPriority priority = AlarmPriority::Medium;
    QString text;
    QString detail;
    AlarmState state = AlarmState::Normal; ///< After it.
    qint64 since = 0;                      ///< When the alarm last began.
    qint64 shelvedUntil = 0;               ///< 0: it is not shelved.

    bool isUnfinished() const { return state != AlarmState::Normal || shelvedUntil > 0; }

    static AlarmEntry of(const AlarmEvent& event);
    QByteArray toJson() const; ///< One line, its end included.
    static std::optional<AlarmEntry> fromJson(const QByteArray& line); ///< None: it is no entry.
};

/// The names of priorities and states as files have them.
QString nameOf(AlarmPriority priority);
QString nameOf(AlarmState state);

/// What happened to the alarms of a panel: the last entries, in memory and in a file of JSON lines.
///
/// An entry is handed to the system soon after it happened, and then survives the end of the
/// program in any way; it is on the disk within DiskSync::kDelay from there. The file is cut to its
/// last entries from time to time; those that tell of an alarm which is not over stay, however old.
class AlarmHistory : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMaxEntries = 10000;
    static constexpr int kWriteDelayMs = 200; ///< From an entry to its writing.
    static constexpr int kRetryMs = 5000;     ///< From a writing that failed to the next.

    /// Without a name everything stays in memory.
    explicit AlarmHistory(const QString& fileName, QObject* parent = nullptr);
    ~AlarmHistory() override; ///< Writes what is not yet written.

    /// The file that goes with a file of state: panel.alarms.jsonl beside panel.state.yaml.
    static QString besideState(const QString& stateFile);

    /// Reads the file, if there is one, and keeps other panels from writing it. Lines that are no
    /// entries are left out, and their number is reported.
    void read();
    const std::deque<AlarmEntry>& entries() const { return m_entries; } ///< The oldest first.
    /// The last entry of each alarm that is not over, by its id.
    const QHash<QString, AlarmEntry>& unfinished() const { return m_unfinished; }

    void add(const AlarmEntry& entry);
    /// Writes what is not yet written. A failure is reported once, until a writing has succeeded;
    /// what it was about is written later.
    void save();

    QByteArray toCsv() const; ///< With a line of headings; times in the local zone.

signals:
    void problem(QString line); ///< One line for the user, with the file's name.

private:
    bool lock();
    void takeLine(const QByteArray& line);
    void remember(const AlarmEntry& entry, const QByteArray& line);
    bool append(const QByteArray& text, QString& reason);
    bool rewrite(QString& reason);
    void warn(const QString& text);

    const QString m_fileName; ///< As messages name it.
    const QString m_path;     ///< Absolute; empty: none.
    bool m_isWriting = false;
    std::unique_ptr<FileLock> m_lock;
    std::deque<AlarmEntry> m_entries;
    std::deque<QByteArray> m_lines; ///< Of the same: made once, so that writing all takes no time.
    QHash<QString, AlarmEntry> m_unfinished;
    int m_linesInFile = 0;
    std::size_t m_unsaved = 0; ///< So many of the last entries.
    int m_badLines = 0;
    bool m_isFailureReported = false;
    QTimer m_delay;
    std::optional<DiskSync> m_sync; ///< From the first writing on.
};

} // namespace norvo
