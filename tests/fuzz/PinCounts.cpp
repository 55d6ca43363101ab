// SPDX-License-Identifier: GPL-3.0-or-later

#include "Harness.h"
#include "host/services/access/PinAttempts.h"

#include <QFile>

using norvo::PinAttempts;
using norvo::require;
using norvo::Role;

namespace {

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// No file shortens a wait that a sound one would give, and another wrong PIN never makes it
/// shorter.
NORVO_HARNESS(PinCounts)
{
    norvo::withFile(input, [](const QString& fileName) {
        const auto clock = [] { return qint64(0); };
        PinAttempts first(fileName, clock);
        first.read();
        const bool isOfRoles = contentOf(fileName).trimmed().startsWith("operate: ") ||
                               contentOf(fileName).trimmed().startsWith("engineer: ") ||
                               contentOf(fileName).trimmed().isEmpty();
        for (const Role role : {Role::Operate, Role::Engineer}) {
            const qint64 wait = first.waitMs(role);
            require(wait >= 0 && wait <= PinAttempts::kMaxWaitMs, "a wait has its bounds");
            require(isOfRoles || wait == PinAttempts::kMaxWaitMs || contentOf(fileName)[0] == 'v',
                    "a file that cannot be understood costs the longest wait");
            first.count({role});
            require(first.waitMs(role) >= wait, "a wrong PIN shortens no wait");
        }
        PinAttempts second(fileName, clock);
        second.read();
        for (const Role role : {Role::Operate, Role::Engineer}) {
            require(second.waitMs(role) == first.waitMs(role), "what is counted is read again");
        }
    });
}
