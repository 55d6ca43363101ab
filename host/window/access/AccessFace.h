// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/access/AccessRules.h"
#include "host/window/access/ConfirmGuard.h"
#include "host/window/access/LockGuard.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class BaseWidget;

namespace norvo {

class Access;
class LockKey;
class LockMark;
class Panel;
class PanelWindow;
class QuestionSheet;

/// Lock and question of a running panel: what its file asks for before a control takes anything.
/// Where it asks for nothing, nothing is watched and no key is shown.
class AccessFace : public QObject
{
    Q_OBJECT

public:
    /// `countFile` keeps the count of wrong PINs; empty: none does.
    AccessFace(const TypeKnowledge& knowledge, const QString& countFile, PanelWindow& window);
    ~AccessFace() override;

    /// What the file of the panel asks for from now on; before each plan is applied. Where PINs and
    /// the time to lock are as before, the role stays, else the panel is locked.
    void follow(const PanelDescription& description);
    Access* access() const { return m_access.get(); } ///< Null for a panel without PINs.
    void show(const Panel& panel);                    ///< Once the widgets are on their pages.

    /// Does it where the role may, else after its PIN; where the panel has no PIN for that role,
    /// the highest that has one will do.
    void require(Role needed, std::function<void()> action);

    /// An attempt by what no event tells of, such as a screen reader: it is done, asked for or
    /// refused as one by hand.
    static void attempt(QWidget& part, const Intent& intent);
    static bool isFree(QWidget& part); ///< Neither locked nor asked for.

signals:
    void confirmed(QString device, QString value);
    void declined(QString device, QString value);
    void problem(QString line); ///< For the user, about the count of wrong PINs.

private:
    AccessRules::Rule ruleOf(const BaseWidget& device) const;
    bool isLocked(const BaseWidget& device) const;
    void setAccess(const PanelAccess& setting);
    void followRole();
    void ask(BaseWidget& device, const Intent& intent);
    void performWhenActive(const Intent& intent, int triesLeft);
    void askForPin(Role needed, const std::function<void()>& wanted = {},
                   const QString& remark = {});
    void unlock();
    void refuse(Role needed); ///< A wrong PIN.
    void tellWait(Role needed);

    const TypeKnowledge& m_knowledge;
    const QString m_countFile;
    PanelWindow& m_window;
    AccessRules m_rules;
    PanelAccess m_setting;
    std::unique_ptr<Access> m_access;
    std::unique_ptr<ConfirmGuard> m_confirmGuard; ///< Made first: the lock's goes before it.
    std::unique_ptr<LockGuard> m_lockGuard;
    QPointer<LockKey> m_key;
    QHash<BaseWidget*, QPointer<LockMark>> m_marks;
    QPointer<QuestionSheet> m_question;
    Role m_shownRole = Role::View;
    bool m_isAskingForPin = false;
    std::function<void()> m_wanted; ///< What the PIN is asked for; empty: nothing follows it.
};

} // namespace norvo
