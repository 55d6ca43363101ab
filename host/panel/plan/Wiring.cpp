// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/Wiring.h"

#include "host/panel/file/EditDistance.h"

#include "norvo/PortsDevice.h"

#include <QMetaMethod>
#include <QStringList>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMaxPairsNamed = 12;

/// An output or an input of a device.
struct Method
{
    QObject* object;
    QString signature;
};
using Methods = QVector<Method>;

/// One end of a connection: a device and what it sends or takes.
struct End
{
    const Endpoint& written;
    BaseDevice& device;
    QMetaMethod::MethodType type;

    QString id() const { return written.device.text; }
    QString text() const { return written.method.text.trimmed(); }
    bool isSignature() const { return text().contains('('); }
    QString name() const { return text().section('(', 0, 0).trimmed(); }

    /// The one method that `wanted`, a name or a signature, asks for; no object if there is none.
    Method find(const QString& wanted) const
    {
        QString signature;
        QObject* object = type == QMetaMethod::Signal ? device.getProvider(wanted, signature)
                                                      : device.getReceiver(wanted, signature);
        return {object, signature};
    }

    /// The signatures that the device has under this name; everything on offer for an empty one.
    QStringList signatures(const QString& wanted) const
    {
        return device.grabMethods(wanted, type, !wanted.isEmpty());
    }

    Methods methods(const QString& wanted) const
    {
        Methods found;
        const QStringList all = signatures(wanted);
        for (const QString& signature : all) {
            const Method method = find(signature);
            if (method.object) {
                found.append(method);
            }
        }
        return found;
    }
};

struct Pair
{
    Method signal;
    Method slot;
};
using Pairs = QVector<Pair>;

QString arguments(const QString& signature)
{
    return signature.mid(signature.indexOf('('));
}

bool fits(const Method& signal, const Method& slot)
{
    return QMetaObject::checkConnectArgs(signal.signature.toUtf8().constData(),
                                         slot.signature.toUtf8().constData());
}

bool isEqual(const Pair& pair)
{
    return arguments(pair.signal.signature) == arguments(pair.slot.signature);
}

Pairs fittingPairs(const Methods& signalMethods, const Methods& slotMethods)
{
    Pairs pairs;
    for (const Method& signal : signalMethods) {
        for (const Method& slot : slotMethods) {
            if (fits(signal, slot)) {
                pairs.append({signal, slot});
            }
        }
    }
    return pairs;
}

/// The methods that the text of this end can mean.
Methods candidates(const End& end)
{
    if (!end.isSignature()) {
        return end.methods(end.name());
    }
    const Method method = end.find(end.text());
    return method.object ? Methods{method} : Methods{};
}

/// Some receivers convert: they can be asked for arguments that they do not list. Adds what `slot`,
/// named without signature, answers when it is asked for the very arguments of the signals.
void addConverted(const End& slot, const Methods& signalMethods, Methods& slotMethods)
{
    if (slot.isSignature()) {
        return;
    }
    for (const Method& signal : signalMethods) {
        const Method method = slot.find(slot.name() + arguments(signal.signature));
        const auto isKnown = [&method](const Method& known) {
            return known.signature == method.signature;
        };
        if (method.object && std::none_of(slotMethods.cbegin(), slotMethods.cend(), isKnown)) {
            slotMethods.append(method);
        }
    }
}

/// Whether the panel's author has named this output or input.
bool isNamed(const End& end, const Method& method)
{
    return method.object != &end.device && dynamic_cast<const PortsDevice*>(&end.device);
}

/// Of several pairs with equal arguments the one that loses nothing: between two named ports a
/// value goes as text, which holds numbers, yes and no as well.
Pairs withoutLoss(const Pairs& pairs, const End& from, const End& to)
{
    const auto isText = [&](const Pair& pair) {
        return isNamed(from, pair.signal) && isNamed(to, pair.slot) &&
               arguments(pair.signal.signature) == "(QString)";
    };
    const auto text = std::find_if(pairs.cbegin(), pairs.cend(), isText);
    return text == pairs.cend() ? pairs : Pairs{*text};
}

QString unknownMethod(const End& end)
{
    const bool isSignal = end.type == QMetaMethod::Signal;
    QString text = QString("%1 has no %2 %3")
                       .arg(inQuotes(end.id()), isSignal ? "signal" : "slot", inQuotes(end.text()));
    const QStringList overloads = end.signatures(end.name());
    if (!overloads.isEmpty()) {
        return text + QString("; it has %1").arg(overloads.join(", "));
    }
    const QStringList all = end.signatures({});
    QStringList names;
    for (const QString& signature : all) {
        names.append(signature.section('(', 0, 0));
    }
    names.removeDuplicates();
    text += all.isEmpty() ? QString("; it has none") : QString("; it has %1").arg(all.join(", "));
    return text + didYouMean(end.name(), names);
}

QString listed(const Pairs& pairs, const End& from, const End& to)
{
    QStringList texts;
    for (const Pair& pair : pairs.mid(0, kMaxPairsNamed)) {
        texts.append(QString("%1.%2 -> %3.%4")
                         .arg(from.id(), pair.signal.signature, to.id(), pair.slot.signature));
    }
    QString text = texts.join(", ");
    if (pairs.size() > kMaxPairsNamed) {
        text += QString(" and %1 more").arg(pairs.size() - kMaxPairsNamed);
    }
    return text;
}

/// All pairs of the two devices that fit, those nearest to what was written first.
Pairs nearestPairs(const End& from, const End& to)
{
    Pairs pairs = fittingPairs(from.methods({}), to.methods({}));
    const auto distance = [&from, &to](const Pair& pair) {
        return (pair.signal.signature.section('(', 0, 0) == from.name() ? 0 : 1) +
               (pair.slot.signature.section('(', 0, 0) == to.name() ? 0 : 1) +
               (isEqual(pair) ? 0 : 1);
    };
    std::stable_sort(pairs.begin(), pairs.end(), [&distance](const Pair& a, const Pair& b) {
        return distance(a) < distance(b);
    });
    return pairs;
}

QString typeMismatch(const End& from, const End& to, const Methods& signalMethods,
                     const Methods& slotMethods)
{
    const auto list = [](const Methods& methods) {
        QStringList signatures;
        for (const Method& method : methods) {
            signatures.append(method.signature);
        }
        return signatures.join(" or ");
    };
    const QString text = QString("%1.%2 does not fit %3.%4")
                             .arg(from.id(), list(signalMethods), to.id(), list(slotMethods));
    const Pairs pairs = nearestPairs(from, to);
    return text + (pairs.isEmpty() ? QString("; nothing that %1 sends fits %2")
                                         .arg(inQuotes(from.id()), inQuotes(to.id()))
                                   : QString("; what fits: %1").arg(listed(pairs, from, to)));
}

QMetaMethod signalOf(const Wire& wire)
{
    const QMetaObject* const meta = wire.provider->metaObject();
    return meta->method(meta->indexOfSignal(wire.signal.toUtf8().constData()));
}

/// What a connection can mean, and what that was chosen from.
struct Meaning
{
    Meaning(const End& source, const End& target)
        : signalMethods(candidates(source)), slotMethods(candidates(target))
    {
        addConverted(target, signalMethods, slotMethods);
        pairs = fittingPairs(signalMethods, slotMethods);
        Pairs equal;
        std::copy_if(pairs.cbegin(), pairs.cend(), std::back_inserter(equal), isEqual);
        if (!equal.isEmpty()) {
            pairs = withoutLoss(equal, source, target);
        }
    }

    Methods signalMethods;
    Methods slotMethods;
    Pairs pairs;
};

Wire wireOf(const Pair& pair)
{
    return {pair.signal.object, pair.signal.signature, pair.slot.object, pair.slot.signature};
}

} // namespace

std::optional<Wire> resolveConnection(const ConnectionSetting& connection, BaseDevice& from,
                                      BaseDevice& to, Diagnostics& diagnostics)
{
    const End source{connection.from, from, QMetaMethod::Signal};
    const End target{connection.to, to, QMetaMethod::Slot};
    const Meaning meaning(source, target);
    if (meaning.signalMethods.isEmpty()) {
        diagnostics.error(connection.from.method.place, [&] { return unknownMethod(source); });
    }
    if (meaning.slotMethods.isEmpty()) {
        diagnostics.error(connection.to.method.place, [&] { return unknownMethod(target); });
    }
    if (meaning.signalMethods.isEmpty() || meaning.slotMethods.isEmpty()) {
        return std::nullopt;
    }
    if (meaning.pairs.isEmpty()) {
        diagnostics.error(connection.whole.place, [&] {
            return typeMismatch(source, target, meaning.signalMethods, meaning.slotMethods);
        });
        return std::nullopt;
    }
    if (meaning.pairs.size() > 1) {
        diagnostics.error(connection.whole.place, [&] {
            return QString("%1 can mean several pairs; choose one of: %2")
                .arg(inQuotes(connection.whole.text), listed(meaning.pairs, source, target));
        });
        return std::nullopt;
    }
    return wireOf(meaning.pairs.constFirst());
}

QVector<Wire> possibleWires(const ConnectionSetting& connection, BaseDevice& from, BaseDevice& to)
{
    const Meaning meaning({connection.from, from, QMetaMethod::Signal},
                          {connection.to, to, QMetaMethod::Slot});
    QVector<Wire> wires;
    std::transform(meaning.pairs.cbegin(), meaning.pairs.cend(), std::back_inserter(wires), wireOf);
    return wires;
}

bool canBeQueued(const Wire& wire)
{
    const QMetaMethod signal = signalOf(wire);
    for (int i = 0; i < signal.parameterCount(); ++i) {
        // Asking for a parameter's type also registers it, which a queued connection needs.
        if (signal.parameterType(i) == QMetaType::UnknownType) {
            return false;
        }
    }
    return true;
}

QMetaObject::Connection connectWire(const Wire& wire, Qt::ConnectionType type)
{
    if (type == Qt::QueuedConnection && !canBeQueued(wire)) {
        return {};
    }
    return QObject::connect(wire.provider, ("2" + wire.signal.toUtf8()).constData(), wire.receiver,
                            ("1" + wire.slot.toUtf8()).constData(), type);
}

} // namespace norvo
