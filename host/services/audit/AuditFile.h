// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/disk/DiskSync.h"

#include <QByteArray>
#include <QObject>
#include <QPair>
#include <QString>
#include <QVariant>
#include <QVector>

namespace norvo {

/// The names and values of one JSON line, in their order. Values: text, number, yes or no.
using AuditFields = QVector<QPair<QString, QVariant>>;

/// A file of JSON lines that only grows: each line is handed to the system at once, whole or not at
/// all, and is on the disk within DiskSync::kDelay.
///
/// A file that would exceed its size is renamed to end in ".1", and older ones move on to ".2" and
/// so forth up to the number that is kept. Only one program at a time writes a file.
class AuditFile : public QObject
{
    Q_OBJECT

public:
    struct Limits
    {
        qint64 maxBytes = 10LL * 1000 * 1000; ///< Of one file.
        int kept = 5;                         ///< Older files; 0: none.
    };

    explicit AuditFile(const QString& fileName, const Limits& limits);
    ~AuditFile() override;
    Q_DISABLE_COPY(AuditFile)

    /// Opens the file, and takes half a line off its end that a loss of power has left there.
    bool open();
    /// Begins with the time in UTC, to the millisecond. A line that cannot be written is counted;
    /// the next one that can be is preceded by one with the event "lost" and their number.
    void write(const AuditFields& fields);

signals:
    void problem(QString line); ///< One line for the user; once, until a line was written again.

private:
    void close();
    void mendEnd();
    bool rotate();
    int spacesBefore(const QByteArray& line) const;
    bool append(QByteArray line);
    void report(const QString& what);

    const QString m_fileName; ///< As messages name it.
    const QString m_path;     ///< Absolute.
    const Limits m_limits;
    DiskSync m_sync;
    int m_fd = -1;
    qint64 m_size = 0;
    int m_lost = 0;
    bool m_isReported = false;
};

} // namespace norvo
