// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/WireValues.h"

#include "host/panel/run/Panel.h"
#include "host/services/signals/SignalTap.h"
#include "host/services/values/ValueTable.h"

#include "norvo/BaseDevice.h"

namespace norvo {

struct WireValues::Heard
{
    QPointer<QObject> device; ///< One that was made anew is heard anew.
    QPointer<QObject> tap;
    QVariant value; ///< The first that the signal carries.
    qint64 stamp = -1;

    ~Heard() { delete tap; }
};

namespace {

QString keyOf(const PlannedWire& wire)
{
    return wire.from + '.' + wire.signal;
}

} // namespace

WireValues::WireValues(QObject* parent) : QObject(parent)
{
    m_clock.start();
}

WireValues::~WireValues() = default;

void WireValues::hear(const QVector<PlannedWire>& wires, const Panel& panel)
{
    QHash<QString, std::shared_ptr<Heard>> heard;
    for (const PlannedWire& wire : wires) {
        BaseDevice* const device = panel.device(wire.from);
        const QString key = keyOf(wire);
        if (!device || heard.contains(key)) {
            continue;
        }
        std::shared_ptr<Heard> one = m_heard.value(key);
        if (!one || one->device != device) {
            one = std::make_shared<Heard>();
            one->device = device;
            const auto take = [this, &heard = *one](const SignalArguments& arguments) {
                heard.value = arguments.at(0);
                heard.stamp = m_clock.elapsed();
            };
            one->tap = SignalTap::open(*device, wire.signal, take, *this);
        }
        heard.insert(key, one);
    }
    m_heard = heard;
}

const WireValues::Heard* WireValues::find(const PlannedWire& wire) const
{
    const Heard* const heard = m_heard.value(keyOf(wire)).get();
    return heard && heard->stamp >= 0 ? heard : nullptr;
}

QString WireValues::text(const PlannedWire& wire) const
{
    const Heard* const heard = find(wire);
    return !heard ? QString("-") : heard->value.isValid() ? shownText(heard->value) : tr("pulse");
}

qint64 WireValues::ageMs(const PlannedWire& wire) const
{
    const Heard* const heard = find(wire);
    return heard ? m_clock.elapsed() - heard->stamp : -1;
}

} // namespace norvo
