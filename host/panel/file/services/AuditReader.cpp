// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/services/AuditReader.h"

#include <QMap>
#include <QRegularExpression>

#include <cmath>

namespace norvo {

namespace {

const QMap<QString, double> kBytes{{"kB", 1e3}, {"MB", 1e6}, {"GB", 1e9}};
const QStringList kKeys{"file", "size", "keep"};

void readFile(const YamlEntry& entry, const ReadContext& context, AuditSetting& audit)
{
    const QString name = entry.value->isText() ? context.text(*entry.value).trimmed() : QString();
    if (name.isEmpty()) {
        context.refuse(entry.place, "audit must name a file, such as panel.audit.jsonl, or be a "
                                    "map of file, size and keep");
    }
    audit.file = name;
}

void readSize(const YamlEntry& entry, const ReadContext& context, AuditSetting& audit)
{
    static const QRegularExpression pattern(auditSizePattern());
    const auto match = pattern.match(entry.value->text);
    const double bytes = match.captured(1).toDouble() * kBytes.value(match.captured(2));
    if (entry.value->isText() && match.hasMatch() && bytes >= double(AuditSetting::kMinBytes) &&
        bytes <= double(AuditSetting::kMaxBytes)) {
        audit.maxBytes = std::llround(bytes);
    } else {
        context.refuse(entry.place,
                       "size must be from 1 kB to 1 GB with its unit, such as \"10 MB\"");
    }
}

void readKept(const YamlEntry& entry, const ReadContext& context, AuditSetting& audit)
{
    bool isNumber = false;
    const int kept = entry.value->text.toInt(&isNumber);
    if (entry.value->isText() && isNumber && kept >= 0 && kept <= AuditSetting::kMaxKept) {
        audit.kept = kept;
    } else {
        context.refuse(entry.place, "keep must be a whole number of files from 0 to 1000");
    }
}

} // namespace

QString auditSizePattern()
{
    return "^\\s*(\\d{1,6}(?:\\.\\d{1,6})?)\\s*(kB|MB|GB)\\s*$";
}

void readAudit(const YamlEntry& entry, const ReadContext& context, AuditSetting& audit)
{
    if (entry.value->kind != YamlNode::Kind::Map) {
        return readFile(entry, context, audit);
    }
    bool hasFile = false;
    for (const YamlEntry& part : entry.value->entries) {
        if (!isUsable(part)) {
            continue;
        }
        const QString& key = part.key->text;
        if (key == "file") {
            hasFile = true;
            readFile(part, context, audit);
        } else if (key == "size") {
            readSize(part, context, audit);
        } else if (key == "keep") {
            readKept(part, context, audit);
        } else {
            context.refuseKey(*part.key, " of audit", kKeys, "audit has file, size and keep");
        }
    }
    if (!hasFile) {
        context.refuse(entry.place, "audit lacks file, the name of the file that it is written to");
    }
}

} // namespace norvo
