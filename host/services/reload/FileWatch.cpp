// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/reload/FileWatch.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace norvo {

namespace {

constexpr int kMaxLinks = 40; // As many as the system follows.

/// Empty where the file is not there, or cannot be read.
QByteArray contentOf(const QString& name)
{
    QFile file(name);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    const bool isRead =
        QFileInfo(name).isFile() && file.open(QIODevice::ReadOnly) && hash.addData(&file);
    return isRead ? hash.result() : QByteArray();
}

/// The nearest folder that there is.
QString folderOf(const QString& file)
{
    QString folder = QFileInfo(file).path();
    while (!QFileInfo::exists(folder) && folder != QFileInfo(folder).path()) {
        folder = QFileInfo(folder).path();
    }
    return folder;
}

/// The file, the folders in which it may be made anew, and the same of what links lead to.
QStringList pathsOf(QString file)
{
    QStringList paths{file, folderOf(file)};
    for (int i = 0; i < kMaxLinks && QFileInfo(file).isSymLink(); ++i) {
        file = QFileInfo(file).symLinkTarget();
        paths << file << folderOf(file);
    }
    return paths;
}

} // namespace

FileWatch::Stamp FileWatch::Stamp::of(const QString& file)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(file).constData(), &info) != 0) {
        return {};
    }
    constexpr qint64 nanoseconds = 1'000'000'000;
    return {info.st_ino, info.st_size, info.st_mtim.tv_sec * nanoseconds + info.st_mtim.tv_nsec};
}

bool FileWatch::Stamp::operator==(const Stamp& other) const
{
    return inode == other.inode && size == other.size && time == other.time;
}

FileWatch::FileWatch(QObject* parent) : QObject(parent)
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(kSettleMs);
    m_settle.setTimerType(Qt::PreciseTimer);
    connect(&m_settle, &QTimer::timeout, this, &FileWatch::look);
    connect(&m_system, &QFileSystemWatcher::fileChanged, this, &FileWatch::touch);
    connect(&m_system, &QFileSystemWatcher::directoryChanged, this, &FileWatch::touchFolder);
}

void FileWatch::watch(const QStringList& files)
{
    QHash<QString, Watched> wanted;
    for (const QString& file : files) {
        const auto known = m_files.constFind(file);
        wanted.insert(
            file, known != m_files.constEnd() ? *known : Watched{Stamp::of(file), contentOf(file)});
    }
    m_files = wanted;
    addPaths();
}

/// What was replaced is not watched by the system any more, and links may lead elsewhere.
void FileWatch::addPaths()
{
    m_byPath.clear();
    for (auto file = m_files.keyBegin(); file != m_files.keyEnd(); ++file) {
        const QStringList paths = pathsOf(*file);
        for (const QString& path : paths) {
            if (QFileInfo::exists(path)) {
                m_byPath[path].append(*file);
            }
        }
    }
    QStringList added = m_byPath.keys();
    QStringList removed;
    const QStringList watched = m_system.files() + m_system.directories();
    for (const QString& path : watched) {
        if (!added.removeOne(path)) {
            removed.append(path);
        }
    }
    if (!removed.isEmpty()) {
        m_system.removePaths(removed);
    }
    if (!added.isEmpty()) {
        m_system.addPaths(added);
    }
}

void FileWatch::touch(const QString& path)
{
    const QStringList files = m_byPath.value(path);
    for (const QString& file : files) {
        m_files[file].isTouched = true;
    }
    m_settle.start();
}

/// Others write in the folder, too.
void FileWatch::touchFolder(const QString& folder)
{
    const QStringList files = m_byPath.value(folder);
    for (const QString& file : files) {
        if (!(Stamp::of(file) == m_files[file].stamp)) {
            m_files[file].isTouched = true;
            m_settle.start();
        }
    }
}

void FileWatch::look()
{
    bool isStill = true;
    QStringList changes;
    for (auto file = m_files.begin(); file != m_files.end(); ++file) {
        if (!file->isTouched) {
            continue;
        }
        const Stamp stamp = Stamp::of(file.key());
        file->stamp = stamp;
        if (stamp.inode != 0 && stamp.size == 0 && file->emptyMs < kEmptyMs) {
            file->emptyMs += kSettleMs;
            isStill = false;
        } else if (hasChanged(file.key(), *file)) {
            changes.append(file.key());
        }
    }
    addPaths();
    if (!isStill) {
        m_settle.start();
    }
    if (!changes.isEmpty()) {
        emit changed(changes);
    }
}

bool FileWatch::hasChanged(const QString& file, Watched& watched)
{
    watched.isTouched = false;
    watched.emptyMs = 0;
    const QByteArray content = contentOf(file);
    if (content.isEmpty() || content == watched.content) {
        return false;
    }
    watched.content = content;
    return true;
}

} // namespace norvo
