// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/access/Access.h"

#include "host/services/access/PinHash.h"

#include <QThread>

#include <algorithm>
#include <limits>

namespace norvo {

/// Looks which of some roles a PIN belongs to.
class Access::PinCheck : public QThread
{
public:
    PinCheck(const QString& pin, const QMap<Role, QString>& hashes, Role needed, QObject* parent)
        : QThread(parent), m_pin(pin), m_hashes(hashes), m_needed(needed)
    {}

    Role needed() const { return m_needed; }
    Role found() const { return m_found; } ///< The highest; Role::View: none.

protected:
    void run() override
    {
        for (auto hash = m_hashes.cbegin(); hash != m_hashes.cend(); ++hash) {
            m_found = PinHash::fits(m_pin, *hash) ? hash.key() : m_found;
        }
    }

private:
    const QString m_pin;
    const QMap<Role, QString> m_hashes;
    const Role m_needed;
    Role m_found = Role::View;
};

Access::Access(const PanelAccess& setting, const QString& countFile, PinAttempts::Clock clock)
    : m_setting(setting), m_attempts(countFile, std::move(clock))
{
    m_attempts.read();
    connect(&m_attempts, &PinAttempts::problem, this, &Access::problem);
    m_idle.setSingleShot(true);
    m_idle.setInterval(m_setting.lockAfter);
    m_idle.callOnTimeout(this, [this] { m_isHandOn ? noteInput() : lock(); });
}

Access::~Access()
{
    if (m_check) {
        m_check->wait();
    }
}

Role Access::reachable(Role needed) const
{
    return m_setting.pins.isEmpty() ? needed : std::min(needed, m_setting.pins.lastKey());
}

qint64 Access::waitMs(Role needed) const
{
    qint64 least = std::numeric_limits<qint64>::max();
    for (const Role role : m_setting.pins.keys()) {
        least = role < needed ? least : std::min(least, m_attempts.waitMs(role));
    }
    return least;
}

/// A role that must wait is not looked at: its PIN could otherwise be guessed between the right
/// ones of another role.
bool Access::tryPin(const QString& pin, Role needed)
{
    QMap<Role, QString> hashes = m_setting.pins;
    for (const Role role : m_setting.pins.keys()) {
        if (m_attempts.waitMs(role) > 0) {
            hashes.remove(role);
        }
    }
    if (m_check || hashes.isEmpty()) {
        return false;
    }
    m_attempts.count(hashes.keys());
    m_check = new PinCheck(pin, hashes, needed, this);
    connect(m_check, &QThread::finished, this, [this] {
        PinCheck* const check = m_check;
        m_check = nullptr;
        take(*check);
        check->deleteLater();
    });
    m_check->start();
    return true;
}

void Access::take(const PinCheck& check)
{
    if (check.found() == Role::View) {
        emit refused(check.needed());
        return;
    }
    m_attempts.forget(check.found());
    setRole(check.found());
    emit unlocked(m_role);
}

void Access::lock()
{
    if (!isLocked()) {
        setRole(Role::View);
        emit locked();
    }
}

void Access::noteInput()
{
    if (!isLocked() && m_setting.lockAfter.count() > 0) {
        m_idle.start();
    }
}

void Access::setHandOn(bool isOn)
{
    m_isHandOn = isOn;
}

void Access::setRole(Role role)
{
    m_role = role;
    m_idle.stop();
    noteInput();
    emit roleChanged();
}

} // namespace norvo
