// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/SettleDevice.h"

#include "norvo/Categories.h"
#include "norvo/Readings.h"

#include <QMetaMethod>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace {

const QString kTime = QStringLiteral("time");
const QString kMode = QStringLiteral("mode");
const QString kMin = QStringLiteral("min");
const QString kMax = QStringLiteral("max");
const QString kChanges = QStringLiteral("changes");
const QStringList kModes{"still", "flush"};

/// The finite number that the value is, if it is one.
std::optional<double> numberOf(const QVariant& value)
{
    std::optional<double> number;
    if (value.userType() == QMetaType::Double) {
        number = value.toDouble();
    } else if (value.userType() == QMetaType::QString) {
        number = norvo::readDouble(value.toString().replace(',', '.'));
    }
    return number && std::isfinite(*number) ? number : std::nullopt;
}

QString textOf(const QVariant& value)
{
    return value.userType() == QMetaType::Double ? norvo::numberText(value.toDouble())
                                                 : value.toString();
}

bool areEqual(const QVariant& a, const QVariant& b)
{
    const auto number = numberOf(a);
    const auto other = numberOf(b);
    return number && other ? *number == *other
                           : a.userType() == b.userType() && a.toString() == b.toString();
}

} // namespace

SettleDevice::SettleDevice()
{
    addParam(kTime, "500");
    getParam(kTime).setUnit("ms");
    addParam(kMode, kModes);
    addParam(kMin, "-inf");
    addParam(kMax, "inf");
    addParam(kChanges, "true");
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &SettleDevice::onTimeout);
}

DeviceTypeInfo SettleDevice::typeInfo()
{
    return {"Settle", "Passes a value on once it is still", {norvo::kCategoryLogic}};
}

bool SettleDevice::initialise()
{
    if (!paramsOk()) {
        return error(paramFaults().join("; "));
    }
    m_timeMs = std::max(0, int(getParam(kTime)));
    m_waitsForFlush = kModes.indexOf(getParam(kMode)) == 1;
    m_min = getParam(kMin);
    m_max = getParam(kMax);
    m_passesChangesOnly = getParam(kChanges);
    for (const QString& name : {kMin, kMax}) {
        if (std::isnan(double(getParam(name)))) {
            return error(QString("parameter \"%1\": \"nan\" is no bound").arg(name));
        }
    }
    if (m_min > m_max) {
        return error(QString("parameter \"max\": %1 is below min").arg(QString(getParam(kMax))));
    }
    m_last = QVariant();
    m_hasRefused = false;
    return true;
}

void SettleDevice::preShutdown()
{
    endPending();
}

void SettleDevice::input(double value)
{
    take(value);
}

void SettleDevice::input(QString text)
{
    take(text);
}

void SettleDevice::input(bool on)
{
    take(on);
}

void SettleDevice::take(const QVariant& value)
{
    if (!isRunning()) {
        return;
    }
    m_waiting = value;
    m_sinceInput.start();
    if (!m_isPending) {
        m_isPending = true;
        if (!m_waitsForFlush) {
            m_timer.start(m_timeMs);
        }
        emit pending(true);
    }
}

/// The timer is not restarted at each value, which would cost more than the value.
void SettleDevice::onTimeout()
{
    const qint64 restMs = m_timeMs - m_sinceInput.elapsed();
    if (restMs > 0) {
        m_timer.start(int(restMs));
    } else {
        flush();
    }
}

void SettleDevice::flush()
{
    if (!m_isPending || !isRunning()) {
        return;
    }
    const QVariant value = m_waiting;
    const QPointer<SettleDevice> self(this);
    cancel();
    if (self && isRunning()) {
        judge(value);
    }
}

void SettleDevice::cancel()
{
    if (m_isPending) {
        endPending();
        emit pending(false);
    }
}

void SettleDevice::forget()
{
    m_last = QVariant();
}

void SettleDevice::endPending()
{
    m_timer.stop();
    m_waiting = QVariant();
    m_isPending = false;
}

void SettleDevice::judge(const QVariant& value)
{
    const QPointer<SettleDevice> self(this);
    const QString reason = refusal(value);
    const bool hadRefused = std::exchange(m_hasRefused, !reason.isEmpty());
    if (m_hasRefused || hadRefused) {
        emit refused(reason);
    }
    if (!self || !isRunning() || !reason.isEmpty()) {
        return;
    }
    if (!m_passesChangesOnly || !m_last.isValid() || !areEqual(value, m_last)) {
        m_last = value;
        send(value);
    }
}

/// Why the value must not be passed on; empty where it may.
QString SettleDevice::refusal(const QVariant& value) const
{
    const bool isBounded = std::isfinite(m_min) || std::isfinite(m_max);
    const auto number = numberOf(value);
    if (value.userType() == QMetaType::Bool || (number && *number >= m_min && *number <= m_max)) {
        return {};
    }
    if (!number) {
        const bool mayBeText = value.userType() == QMetaType::QString && !isBounded;
        return mayBeText ? QString() : QString("\"%1\" is not a number").arg(value.toString());
    }
    return QString(*number < m_min ? "%1 is below %2" : "%1 is above %2")
        .arg(norvo::numberText(*number), norvo::numberText(*number < m_min ? m_min : m_max));
}

/// Each form that the value reads as, where it is heard. A receiver may delete the device, or end
/// its running.
void SettleDevice::send(const QVariant& value)
{
    static const QMetaMethod asText =
        QMetaMethod::fromSignal(qOverload<QString>(&SettleDevice::output));
    static const QMetaMethod asYesNo =
        QMetaMethod::fromSignal(qOverload<bool>(&SettleDevice::output));

    const QPointer<SettleDevice> self(this);
    const bool isYesNo = value.userType() == QMetaType::Bool;
    const auto number = isYesNo ? std::optional(value.toBool() ? 1.0 : 0.0) : numberOf(value);
    if (number) {
        emit output(*number);
    }
    if (self && isRunning() && isSignalConnected(asText)) {
        emit output(textOf(value));
    }
    if (self && isRunning() && isSignalConnected(asYesNo)) {
        if (const auto yes = norvo::readBool(textOf(value))) {
            emit output(*yes);
        }
    }
}
