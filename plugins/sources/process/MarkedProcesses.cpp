// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/MarkedProcesses.h"

#include <QDir>
#include <QFile>
#include <QUuid>

namespace norvo {

namespace {

constexpr qint64 kMaxEnvironment = qint64(4) * 1024 * 1024;

/// A process that only waits to be reaped has no environment any more.
bool isMarked(const QString& pid, const QByteArray& mark)
{
    QFile file("/proc/" + pid + "/environ");
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) &&
           ('\0' + file.read(kMaxEnvironment)).contains('\0' + mark + '=');
}

} // namespace

QByteArray newProcessMark()
{
    return "NORVO_PROCESS_" + QUuid::createUuid().toRfc4122().toHex();
}

std::vector<pid_t> markedProcesses(const QByteArray& mark)
{
    std::vector<pid_t> found;
    const QStringList entries = QDir("/proc").entryList(QDir::Dirs, QDir::NoSort);
    for (const QString& entry : entries) {
        bool isProcess = false;
        const pid_t pid = entry.toInt(&isProcess);
        if (isProcess && isMarked(entry, mark)) {
            found.push_back(pid);
        }
    }
    return found;
}

} // namespace norvo
