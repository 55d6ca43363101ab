// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmHistory.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace norvo {

namespace {

const QStringList kEvents{"began", "ended", "acknowledged", "shelved", "unshelved"};
const QStringList kPriorityNames{"low", "medium", "high"};
const QStringList kStateNames{"normal", "active-unacknowledged", "active-acknowledged",
                              "cleared-unacknowledged"};

QString timeText(qint64 time)
{
    return QDateTime::fromMSecsSinceEpoch(time, Qt::UTC).toString(Qt::ISODateWithMs);
}

qint64 timeOf(const QJsonValue& text)
{
    const QDateTime time = QDateTime::fromString(text.toString(), Qt::ISODateWithMs);
    return time.isValid() ? std::max<qint64>(0, time.toMSecsSinceEpoch()) : 0;
}

} // namespace

QString nameOf(AlarmPriority priority)
{
    return kPriorityNames[int(priority)];
}

QString nameOf(AlarmState state)
{
    return kStateNames[int(state)];
}

AlarmEntry AlarmEntry::of(const AlarmEvent& event)
{
    const Alarm& alarm = event.alarm;
    const AlarmDefinition& definition = alarm.definition;
    return {event.when.wall,     kEvents[int(event.kind)], definition.id, definition.device,
            definition.priority, definition.text,          alarm.detail,  alarm.state,
            alarm.since.wall,    alarm.shelvedUntil.wall};
}

QByteArray AlarmEntry::toJson() const
{
    QJsonObject line{{"time", timeText(time)},
                     {"event", event},
                     {"alarm", id},
                     {"device", device},
                     {"priority", nameOf(priority)},
                     {"text", text},
                     {"state", nameOf(state)}};
    if (!detail.isEmpty()) {
        line.insert("detail", detail);
    }
    if (since > 0) {
        line.insert("since", timeText(since));
    }
    if (shelvedUntil > 0) {
        line.insert("shelvedUntil", timeText(shelvedUntil));
    }
    return QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<AlarmEntry> AlarmEntry::fromJson(const QByteArray& line)
{
    const QJsonObject read = QJsonDocument::fromJson(line).object();
    const int priority = kPriorityNames.indexOf(read["priority"].toString());
    const int state = kStateNames.indexOf(read["state"].toString());
    const QString event = read["event"].toString();
    const qint64 time = timeOf(read["time"]);
    const QString id = read["alarm"].toString();
    if (priority < 0 || state < 0 || !kEvents.contains(event) || time <= 0 || id.isEmpty()) {
        return std::nullopt;
    }
    return AlarmEntry{time,
                      event,
                      id,
                      read["device"].toString(),
                      AlarmPriority(priority),
                      read["text"].toString(),
                      read["detail"].toString(),
                      AlarmState(state),
                      timeOf(read["since"]),
                      timeOf(read["shelvedUntil"])};
}

} // namespace norvo
