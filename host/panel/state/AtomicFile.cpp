// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/state/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

namespace norvo {

namespace {

/// On a full disk a writing may end half-way without an error; the next one has it.
bool writeAll(QIODevice& file, const QByteArray& content)
{
    qint64 done = 0;
    while (done < content.size()) {
        const qint64 written = file.write(content.constData() + done, content.size() - done);
        if (written <= 0) {
            return false;
        }
        done += written;
    }
    return true;
}

} // namespace

bool writeFileAtomically(const QString& fileName, const QByteArray& content, QString& reason,
                         const std::function<bool()>& isUnchanged)
{
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile()) {
        reason = "it is not a regular file";
        return false;
    }
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, content)) {
        if (isUnchanged && !isUnchanged()) {
            reason = "the file was changed meanwhile";
            return false; // What was written goes with the object.
        }
        if (file.commit()) {
            return true;
        }
    }
    reason = file.errorString();
    return false;
}

void removeLeftovers(const QString& fileName)
{
    // QSaveFile adds a point and six letters. Those of a user's own copy ("backup") are of one
    // case.
    static const QRegularExpression random("^(?=.*[a-z])(?=.*[A-Z])[A-Za-z]{6}$");
    const QFileInfo info(fileName);
    const QString start = info.fileName() + '.';
    const QFileInfoList files =
        info.dir().entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& file : files) {
        const QString name = file.fileName();
        if (name.startsWith(start) && random.match(name.mid(start.size())).hasMatch()) {
            QFile::remove(file.filePath());
        }
    }
}

} // namespace norvo
