// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/streams/MessageFilter.h"

#include <QRegularExpression>

namespace norvo {

namespace {

QString kindOf(const QString& message)
{
    static const QRegularExpression number(R"((?<![\w:])[-+]?\d[\w.+-]*)");
    return QString(message).replace(number, "#");
}

} // namespace

QStringList MessageFilter::take(const QString& message, qint64 nowMs)
{
    QStringList lines = due(nowMs);
    const QString kind = kindOf(message);
    const auto known = m_kinds.find(kind);
    if (known != m_kinds.end()) {
        known->latest = message;
        ++known->count;
    } else if (m_kinds.size() < kMaxKinds) {
        m_kinds.insert(kind, {message, nowMs, 0});
        lines += message;
    } else if (m_others.count++ == 0) {
        m_others.reportedMs = nowMs;
    }
    return lines;
}

QStringList MessageFilter::due(qint64 nowMs)
{
    QStringList lines;
    for (auto kind = m_kinds.begin(); kind != m_kinds.end();) {
        if (nowMs - kind->reportedMs < kIntervalMs) {
            ++kind;
        } else if (kind->count == 0) {
            kind = m_kinds.erase(kind);
        } else {
            lines += QString("%1 (%2 more times)").arg(kind->latest, QString::number(kind->count));
            *kind = {kind->latest, nowMs, 0};
            ++kind;
        }
    }
    if (m_others.count > 0 && nowMs - m_others.reportedMs >= kIntervalMs) {
        lines += QString("%1 other warnings").arg(m_others.count);
        m_others.count = 0;
    }
    return lines;
}

} // namespace norvo
