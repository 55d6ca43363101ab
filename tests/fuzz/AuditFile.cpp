// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/audit/AuditFile.h"
#include "Harness.h"

#include <QFile>
#include <QJsonDocument>

using norvo::require;

/// Behind whatever an audit holds, a line is written that is whole, and all whole lines before it
/// stay.
NORVO_HARNESS(AuditFile)
{
    norvo::withFile(input, [&input](const QString& fileName) {
        {
            norvo::AuditFile audit(fileName, {});
            require(audit.open(), "the audit can be opened");
            audit.write({{"event", QString::fromUtf8(input)}, {"value", 1.5}});
        }
        QFile file(fileName);
        require(file.open(QIODevice::ReadOnly), "the audit can be read");
        const QByteArray now = file.readAll();
        const int kept = input.lastIndexOf('\n') + 1;
        require(now.startsWith(input.left(kept)), "whole lines stay");
        const QByteArray line = now.mid(kept).trimmed();
        require(now.endsWith('\n') && !line.contains('\n'), "one whole line is added");
        require(QJsonDocument::fromJson(line).isObject(), "a line is a JSON object");
    });
}
