#include "host/panel/file/AtomicFile.h"

#include <QFileInfo>
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

bool writeFileAtomically(const QString& fileName, const QByteArray& content, QString& reason)
{
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile()) {
        reason = "it is no regular file";
        return false;
    }
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, content) &&
        file.commit()) {
        return true;
    }
    reason = file.errorString();
    return false;
}

} // namespace norvo
