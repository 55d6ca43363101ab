// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/HoldDevice.h"

#include <QPointer>

#include <algorithm>

namespace {

constexpr char kHeartbeat[] = "heartbeat";
constexpr char kLimit[] = "limit";
constexpr int kMinHeartbeatMs = 20;
constexpr int kMinLimitMs = 20;

} // namespace

HoldDevice::HoldDevice()
{
    addParam(kText, "");
    addParam(kHeartbeat, "100");
    getParam(kHeartbeat).setUnit("ms");
    addParam(kLimit, "300");
    getParam(kLimit).setUnit("ms");
    addParam(kFontSize, "14");
    m_heartbeat.setTimerType(Qt::PreciseTimer);
    connect(&m_heartbeat, &QTimer::timeout, this, &HoldDevice::beat);
}

HoldDevice::~HoldDevice()
{
    release();
}

bool HoldDevice::initialise()
{
    if (!paramsOk()) {
        return error(paramFaults().join("; "));
    }
    m_heartbeat.setInterval(std::max(kMinHeartbeatMs, int(getParam(kHeartbeat))));
    m_limitMs = std::max(kMinLimitMs, int(getParam(kLimit)));
    return true;
}

void HoldDevice::postInitialisation()
{
    emit held(false);
}

void HoldDevice::preShutdown()
{
    release();
}

void HoldDevice::press()
{
    if (!isRunning() || isHeld()) {
        return;
    }
    m_heartbeat.start();
    const QPointer<HoldDevice> self(this);
    emit pressed();
    if (self && isHeld()) {
        sendTrue();
    }
}

void HoldDevice::release()
{
    if (!isHeld()) {
        return;
    }
    m_heartbeat.stop();
    const QPointer<HoldDevice> self(this);
    emit held(false);
    if (self) {
        emit released();
    }
}

void HoldDevice::beat()
{
    const qint64 lateMs = m_sinceBeat.elapsed() - m_heartbeat.interval();
    if (lateMs <= m_limitMs) {
        sendTrue();
        return;
    }
    const QPointer<HoldDevice> self(this);
    release();
    if (self) {
        alert(QString("Released: the panel stood still, a heartbeat came %1 ms late and may be %2. "
                      "Press again to go on")
                  .arg(lateMs)
                  .arg(m_limitMs));
    }
}

void HoldDevice::sendTrue()
{
    m_sinceBeat.start();
    const QPointer<HoldDevice> self(this);
    emit held(true);
    if (self && !isHeld()) {
        emit held(false); // those behind the receiver that released it have heard true last
    }
}
