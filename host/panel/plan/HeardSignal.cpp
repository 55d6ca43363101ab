// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/HeardSignal.h"

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

/// The signal that a service is to hear, as the panel names it.
struct Heard
{
    const QString& device;
    const QString& signal;
    const Place& place;
    QStringList types; ///< Of a first argument that will do, the best first.
    QString wanted;    ///< The same in words, "above needs a number".
};

QString unknownSignal(const Heard& heard, const BaseDevice& device)
{
    const QStringList overloads = signalsOf(device, nameOf(heard.signal));
    const QString text =
        QString("%1 has no signal %2").arg(inQuotes(heard.device), inQuotes(heard.signal));
    if (!overloads.isEmpty()) {
        return text + "; it has " + overloads.join(", ");
    }
    QStringList names;
    for (const QString& signature : signalsOf(device, {})) {
        names.append(nameOf(signature));
    }
    names.removeDuplicates();
    return text + didYouMeanOneOf(nameOf(heard.signal), names);
}

/// Its signature; empty: reports what would be right.
QString resolve(const Heard& heard, const BaseDevice& device, Diagnostics& diagnostics)
{
    QStringList candidates = signalsOf(device, nameOf(heard.signal));
    if (heard.signal.contains('(')) {
        const QString wanted = QMetaObject::normalizedSignature(heard.signal.toUtf8().constData());
        candidates = candidates.contains(wanted) ? QStringList(wanted) : QStringList();
    }
    if (candidates.isEmpty()) {
        diagnostics.error(heard.place, [&] { return unknownSignal(heard, device); });
        return {};
    }
    for (const QString& type : heard.types) {
        for (const QString& signature : candidates) {
            if (firstArgument(signature) == type) {
                return signature;
            }
        }
    }
    diagnostics.error(heard.place, [&] {
        return QString("%1, and %2 sends %3")
            .arg(heard.wanted, inQuotes(heard.device), candidates.join(", "));
    });
    return {};
}

} // namespace

std::optional<PlannedAlarm> resolveAlarm(const AlarmSetting& alarm, const BaseDevice& device,
                                         Diagnostics& diagnostics)
{
    const QString signature = resolve({alarm.device, alarm.signal, alarm.signalPlace,
                                       typesFor(alarm.limit), wantedBy(alarm.limit)},
                                      device, diagnostics);
    return signature.isEmpty() ? std::nullopt : std::make_optional(PlannedAlarm{alarm, signature});
}

std::optional<PlannedHistory> resolveHistory(const HistorySignal& recorded,
                                             const BaseDevice& device, Diagnostics& diagnostics)
{
    const QString signature =
        resolve({recorded.device, recorded.signal, recorded.signalPlace,
                 kNumbers + kStates + kTexts, "a history needs a number, yes or no, or a text"},
                device, diagnostics);
    return signature.isEmpty() ? std::nullopt
                               : std::make_optional(PlannedHistory{recorded, signature});
}

} // namespace norvo
