// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmLines.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>

namespace norvo {

namespace {

/// So that a greater number goes first; of equal ones that which began last does.
int rankOf(const Alarm& alarm)
{
    return (alarm.isUnacknowledged() ? 8 : 0) + int(alarm.definition.priority) * 2 +
           (alarm.isActive() ? 1 : 0);
}

} // namespace

bool isWorse(const Alarm& a, const Alarm& b)
{
    const int difference = rankOf(a) - rankOf(b);
    return difference != 0 ? difference > 0 : a.since.wall > b.since.wall;
}

QVector<AlarmLine> alarmLines(const AlarmModel& model)
{
    QVector<int> shown;
    QHash<int, int> bursts; // How many are shown of each; 0 stands for those of an earlier run.
    for (int i = 0; i < int(model.alarms().size()); ++i) {
        if (model.at(i).isShown()) {
            shown.append(i);
            ++bursts[model.at(i).burst];
        }
    }
    bursts.remove(0);
    std::stable_sort(shown.begin(), shown.end(),
                     [&model](int a, int b) { return isWorse(model.at(a), model.at(b)); });
    QVector<AlarmLine> lines;
    QHash<int, int> lineOf; // By burst.
    for (const int alarm : qAsConst(shown)) {
        const int burst = model.at(alarm).burst;
        if (bursts.value(burst) < kFloodSize) {
            lines.append(AlarmLine{{alarm}});
        } else if (lineOf.contains(burst)) {
            lines[lineOf.value(burst)].alarms.append(alarm);
        } else {
            lineOf.insert(burst, lines.size());
            lines.append(AlarmLine{{alarm}});
        }
    }
    for (const int line : qAsConst(lineOf)) {
        QVector<int>& alarms = lines[line].alarms;
        std::stable_sort(alarms.begin(), alarms.end(), [&model](int a, int b) {
            return model.at(a).since.steady < model.at(b).since.steady;
        });
    }
    return lines;
}

QString textOf(const AlarmLine& line, const AlarmModel& model)
{
    const Alarm& first = model.at(line.alarms.constFirst());
    if (line.isFlood()) {
        return QCoreApplication::translate("norvo::AlarmLines", "%1 alarms at once, first: %2")
            .arg(QString::number(line.alarms.size()), first.definition.text);
    }
    return first.detail.isEmpty() ? first.definition.text
                                  : first.definition.text + " (" + first.detail + ')';
}

} // namespace norvo
