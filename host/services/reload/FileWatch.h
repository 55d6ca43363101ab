// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTimer>

namespace norvo {

/// Tells when the content of files has changed, however they are written: in place, in several
/// steps, by another file that takes the name, behind links. The system says so; nothing is polled.
///
/// A file that is being written is left alone until it has been still for kSettleMs. One that is
/// not there has not changed; one that is empty waits for kEmptyMs, as it may be about to be
/// written.
class FileWatch : public QObject
{
    Q_OBJECT

public:
    static constexpr int kSettleMs = 60;
    static constexpr int kEmptyMs = 1000;

    explicit FileWatch(QObject* parent = nullptr);

    /// In place of the files before. Absolute paths; those that were watched before keep what is
    /// known of them, and of others the content of now is no change.
    void watch(const QStringList& files);
    QStringList files() const { return m_files.keys(); }

signals:
    void changed(QStringList files); ///< All that have since the last time.

private:
    /// What tells a file from another one of the same name, or from itself before it was written.
    struct Stamp
    {
        quint64 inode = 0; ///< 0: there is no such file.
        qint64 size = 0;
        qint64 time = 0; ///< Of the last writing, in nanoseconds.

        static Stamp of(const QString& file);
        bool operator==(const Stamp& other) const;
    };

    struct Watched
    {
        Stamp stamp;        ///< When it was last looked at.
        QByteArray content; ///< Its hash; empty: there was none.
        bool isTouched = false;
        int emptyMs = 0; ///< Known to be empty for so long.
    };

    void touch(const QString& file);
    void touchFolder(const QString& folder);
    void look();
    bool hasChanged(const QString& file, Watched& watched);
    void addPaths();

    QFileSystemWatcher m_system;
    QHash<QString, Watched> m_files;
    QHash<QString, QStringList> m_byPath; ///< Files by the paths that the system watches for them.
    QTimer m_settle;
};

} // namespace norvo
