// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/StopDevice.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace {

constexpr char kStopped[] = "stopped";
constexpr char kRepeat[] = "repeat";
constexpr int kMinRepeatMs = 50;

} // namespace

StopDevice::StopDevice()
{
    addParam(kText, "STOP");
    addParam(kStopped, "false");
    getParam(kStopped).setPersistent();
    addParam(kRepeat, "500");
    getParam(kRepeat).setUnit("ms");
    addParam(kRelease, "1500");
    getParam(kRelease).setUnit("ms");
    addParam(kFontSize, "20");
    connect(&m_repeat, &QTimer::timeout, this, &StopDevice::send);
}

QObject* StopDevice::getReceiver(const QString& name, QString& signature)
{
    QObject* const receiver = BaseGuiDevice::getReceiver(name, signature);
    m_expectsAnswer = m_expectsAnswer || signature.startsWith("acknowledged(");
    return receiver;
}

bool StopDevice::initialise()
{
    if (!paramsOk()) {
        return error(paramFaults().join("; "));
    }
    m_stopped = getParam(kStopped);
    m_confirmed = false;
    m_repeat.setInterval(std::max(kMinRepeatMs, int(getParam(kRepeat))));
    return true;
}

void StopDevice::postInitialisation()
{
    send();
}

void StopDevice::preShutdown()
{
    m_repeat.stop();
}

void StopDevice::hit()
{
    if (!isRunning()) {
        return;
    }
    const QPointer<StopDevice> self(this);
    if (m_stopped) {
        send();
    } else {
        setStopped(true);
    }
    if (self) {
        emit pressed();
    }
}

void StopDevice::unlatch()
{
    if (!isRunning() || !m_stopped) {
        return;
    }
    const QPointer<StopDevice> self(this);
    setStopped(false);
    if (self) {
        emit released();
    }
}

void StopDevice::stop()
{
    if (isRunning() && !m_stopped) {
        setStopped(true);
    }
}

void StopDevice::acknowledged(bool isStopped)
{
    if (isStopped == m_stopped) {
        setConfirmed(true);
    } else if (m_stopped) {
        setConfirmed(false);
    }
}

void StopDevice::acknowledged()
{
    setConfirmed(true);
}

/// The machine hears of it first, and the confirmation of the state before is void by then.
void StopDevice::setStopped(bool stopped)
{
    const QPointer<StopDevice> self(this);
    const bool wasConfirmed = std::exchange(m_confirmed, false);
    m_stopped = stopped;
    send();
    if (self) {
        setParam(kStopped, stopped ? "true" : "false");
    }
    if (self && wasConfirmed && !m_confirmed) {
        emit confirmed(false);
    }
}

void StopDevice::setConfirmed(bool confirmed)
{
    if (!isRunning() || confirmed == m_confirmed) {
        return;
    }
    m_confirmed = confirmed;
    if (confirmed) {
        m_repeat.stop();
    } else {
        m_repeat.start();
    }
    emit this->confirmed(confirmed);
}

void StopDevice::send()
{
    if (!m_confirmed && (m_stopped || m_expectsAnswer)) {
        m_repeat.start();
    } else {
        m_repeat.stop();
    }
    const QPointer<StopDevice> self(this);
    const bool sent = m_stopped;
    emit stopped(sent);
    if (self && m_stopped != sent) {
        emit stopped(m_stopped); // those behind the receiver that latched it have heard no last
    }
}
