// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/AlarmSignal.h"

#include "host/panel/file/Diagnostics.h"
#include "host/panel/file/EditDistance.h"

#include "norvo/BaseDevice.h"

#include <QMetaMethod>

#include <cmath>

namespace norvo {

namespace {

const QStringList kNumbers{"double", "float", "int", "uint", "qlonglong", "qulonglong", "QVariant"};
const QStringList kTexts{"QString", "QVariant"};
const QStringList kStates{"bool", "QVariant"};

/// The types of a first argument that the limit can be held to, the best first.
QStringList typesFor(const AlarmLimit& limit)
{
    switch (limit.kind) {
    case AlarmLimit::Kind::Is:
        return kStates;
    case AlarmLimit::Kind::Equals:
        return std::isnan(limit.number) ? kTexts : kNumbers + kTexts;
    default:
        return kNumbers;
    }
}

QString wantedBy(const AlarmLimit& limit)
{
    switch (limit.kind) {
    case AlarmLimit::Kind::Above:
        return "above needs a number";
    case AlarmLimit::Kind::Below:
        return "below needs a number";
    case AlarmLimit::Kind::Is:
        return "is needs yes or no";
    default:
        return std::isnan(limit.number) ? "equals needs a text" : "equals needs a number or a text";
    }
}

QString firstArgument(const QString& signature)
{
    return signature.section('(', 1).section(')', 0, 0).section(',', 0, 0);
}

QString nameOf(const QString& signal)
{
    return signal.section('(', 0, 0).trimmed();
}

QStringList signalsOf(const BaseDevice& device, const QString& name)
{
    return device.grabMethods(name, QMetaMethod::Signal, !name.isEmpty());
}

QString unknownSignal(const AlarmSetting& alarm, const BaseDevice& device)
{
    const QStringList overloads = signalsOf(device, nameOf(alarm.signal));
    const QString text =
        QString("%1 has no signal %2").arg(inQuotes(alarm.device), inQuotes(alarm.signal));
    if (!overloads.isEmpty()) {
        return text + "; it has " + overloads.join(", ");
    }
    QStringList names;
    for (const QString& signature : signalsOf(device, {})) {
        names.append(nameOf(signature));
    }
    names.removeDuplicates();
    return text + didYouMeanOneOf(nameOf(alarm.signal), names);
}

} // namespace

std::optional<PlannedAlarm> resolveAlarm(const AlarmSetting& alarm, const BaseDevice& device,
                                         Diagnostics& diagnostics)
{
    QStringList candidates = signalsOf(device, nameOf(alarm.signal));
    if (alarm.signal.contains('(')) {
        const QString wanted = QMetaObject::normalizedSignature(alarm.signal.toUtf8().constData());
        candidates = candidates.contains(wanted) ? QStringList(wanted) : QStringList();
    }
    if (candidates.isEmpty()) {
        diagnostics.error(alarm.signalPlace, [&] { return unknownSignal(alarm, device); });
        return std::nullopt;
    }
    for (const QString& type : typesFor(alarm.limit)) {
        for (const QString& signature : candidates) {
            if (firstArgument(signature) == type) {
                return PlannedAlarm{alarm, signature};
            }
        }
    }
    diagnostics.error(alarm.signalPlace, [&] {
        return QString("%1, and %2 sends %3")
            .arg(wantedBy(alarm.limit), inQuotes(alarm.device), candidates.join(", "));
    });
    return std::nullopt;
}

} // namespace norvo
