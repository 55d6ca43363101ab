// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/graphs/GraphFiles.h"

#include "host/panel/state/AtomicFile.h"

#include <QDateTime>
#include <QFile>

namespace norvo {

namespace {

constexpr int kMaxFilesOfASecond = 100;

} // namespace

QString writeNewFile(const QString& start, const QString& end, const QByteArray& content,
                     QString& reason)
{
    const QString name = start + '-' + QDateTime::currentDateTime().toString("yyyy-MM-dd-hhmmss");
    for (int i = 1; i <= kMaxFilesOfASecond; ++i) {
        QFile file((i == 1 ? name : name + '-' + QString::number(i)) + end);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            reason = file.errorString();
            if (file.exists()) {
                continue;
            }
            return {};
        }
        file.close(); // The name is taken; the content takes its place as a whole.
        if (writeFileAtomically(file.fileName(), content, reason)) {
            return file.fileName();
        }
        file.remove();
        return {};
    }
    return {};
}

} // namespace norvo
