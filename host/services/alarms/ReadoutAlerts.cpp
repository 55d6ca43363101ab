// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/ReadoutAlerts.h"

#include "host/panel/plan/Node.h"
#include "host/services/signals/SignalTap.h"

#include "norvo/BaseDevice.h"

#include <QCoreApplication>
#include <QMetaMethod>

#include <algorithm>
#include <iterator>
#include <utility>

namespace norvo {

namespace {

struct KnownAlert
{
    const char* signal;
    const char* text;
};

const KnownAlert kAlerts[] = {
    {"timeoutAlert()", QT_TRANSLATE_NOOP("norvo::ReadoutAlerts", "%1: no value comes")},
    {"minThresholdAlert()", QT_TRANSLATE_NOOP("norvo::ReadoutAlerts", "%1: below its threshold")},
    {"maxThresholdAlert()", QT_TRANSLATE_NOOP("norvo::ReadoutAlerts", "%1: above its threshold")},
};
const KnownAlert kOther = {"alarmAlert()", QT_TRANSLATE_NOOP("norvo::ReadoutAlerts", "%1: alarm")};

QStringList signalsOf(const BaseDevice& device)
{
    return device.grabMethods({}, QMetaMethod::Signal, true);
}

AlarmDefinition definitionOf(const Node& node, const KnownAlert& alert)
{
    AlarmDefinition definition;
    definition.id = node.id() + '.' + alert.signal;
    definition.device = node.id();
    definition.text = ReadoutAlerts::tr(alert.text).arg(captionOf(node));
    definition.hasSound = false; // Panels that name no alarm are as quiet as ever.
    return definition;
}

} // namespace

QString captionOf(const Node& node)
{
    for (const char* const name : {"name", "widget/caption"}) {
        if (node.device() && node.device()->params().contains(name)) {
            QString caption = node.device()->getParam(name).value().trimmed();
            if (!caption.isEmpty()) {
                return caption;
            }
        }
    }
    return node.id();
}

ReadoutAlerts::ReadoutAlerts(Define define, Tell tell)
    : m_define(std::move(define)), m_tell(std::move(tell))
{
    m_settle.setSingleShot(true);
    connect(&m_settle, &QTimer::timeout, this, &ReadoutAlerts::settle);
}

ReadoutAlerts::~ReadoutAlerts() = default;

void ReadoutAlerts::listen(const Node& node)
{
    BaseDevice* const device = node.device();
    if (!device) {
        return;
    }
    const QStringList signatures = signalsOf(*device);
    std::vector<KnownAlert> found;
    std::copy_if(std::begin(kAlerts), std::end(kAlerts), std::back_inserter(found),
                 [&](const KnownAlert& alert) { return signatures.contains(alert.signal); });
    if (found.empty() && signatures.contains(kOther.signal)) {
        found.push_back(kOther);
    }
    if (found.empty()) {
        return;
    }
    m_readouts.push_back(std::make_unique<Readout>());
    Readout& readout = *m_readouts.back();
    readout.device = node.id();
    for (const KnownAlert& alert : found) {
        hear(*device, readout, alert.signal, m_define(definitionOf(node, alert)));
    }
    SignalTap::open(
        *device, signatures.contains("output(double)") ? "output(double)" : "output",
        [this, &readout](const SignalArguments&) { takeValue(readout); }, *readout.ear);
}

void ReadoutAlerts::forgetAllBut(const QSet<QString>& devices)
{
    const auto isGone = [&](const auto& readout) { return !devices.contains(readout->device); };
    m_settling.erase(std::remove_if(m_settling.begin(), m_settling.end(), isGone),
                     m_settling.end());
    m_readouts.erase(std::remove_if(m_readouts.begin(), m_readouts.end(), isGone),
                     m_readouts.end());
}

QVector<int> ReadoutAlerts::alarms() const
{
    QVector<int> alarms;
    for (const auto& readout : m_readouts) {
        for (const Alert& alert : readout->alerts) {
            alarms.append(alert.alarm);
        }
    }
    return alarms;
}

void ReadoutAlerts::hear(BaseDevice& device, Readout& readout, const QString& signal, int alarm)
{
    if (alarm < 0) {
        return;
    }
    const std::size_t index = readout.alerts.size();
    readout.alerts.push_back({alarm, false});
    SignalTap::open(
        device, signal,
        [this, &readout, index](const SignalArguments&) {
            readout.alerts[index].isTold = true;
            m_tell(readout.alerts[index].alarm, true);
        },
        *readout.ear);
}

/// The alerts about a value come behind it: what is over is known once they had their turn.
void ReadoutAlerts::takeValue(Readout& readout)
{
    for (Alert& alert : readout.alerts) {
        alert.isTold = false;
    }
    if (!readout.isWaiting) {
        readout.isWaiting = true;
        m_settling.push_back(&readout);
        m_settle.start(0);
    }
}

void ReadoutAlerts::settle()
{
    for (Readout* const readout : std::exchange(m_settling, {})) {
        readout->isWaiting = false;
        for (const Alert& alert : readout->alerts) {
            if (!alert.isTold) {
                m_tell(alert.alarm, false);
            }
        }
    }
}

} // namespace norvo
