// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/access/PinAttempts.h"

#include <QObject>
#include <QTimer>

namespace norvo {

/// Who may operate the panel now: the role that the last PIN has given, until the panel is locked
/// by hand or has had no input for a time.
class Access : public QObject
{
    Q_OBJECT

public:
    /// `countFile` keeps the count of wrong PINs; empty: none does.
    Access(const PanelAccess& setting, const QString& countFile, PinAttempts::Clock clock = {});
    ~Access() override; ///< Waits for a PIN that is being checked.

    Role role() const { return m_role; }
    bool isLocked() const { return m_role == Role::View; }
    bool allows(Role needed) const { return needed <= m_role; }
    /// The role itself, or the highest that has a PIN.
    Role reachable(Role needed) const;
    /// How long a PIN that opens `needed` must wait; 0: it can be tried.
    qint64 waitMs(Role needed) const;

    /// Checks the PIN on a thread of its own, and answers by unlocked() or refused(). False: not
    /// now, because another is being checked or all must wait.
    bool tryPin(const QString& pin, Role needed);
    void lock();
    void noteInput(); ///< The panel locks itself so much later.
    void
    setHandOn(bool isOn); ///< While one is on a key or a slider the panel does not lock itself.

signals:
    void roleChanged(); ///< Whichever way.
    void unlocked(norvo::Role role);
    void locked();
    void refused(norvo::Role needed); ///< A wrong PIN, for what asks for that role.
    void problem(QString line);

private:
    class PinCheck;

    void take(const PinCheck& check);
    void setRole(Role role);

    const PanelAccess m_setting;
    PinAttempts m_attempts;
    Role m_role = Role::View;
    QTimer m_idle;
    bool m_isHandOn = false;
    PinCheck* m_check = nullptr;
};

} // namespace norvo

Q_DECLARE_METATYPE(norvo::Role)
