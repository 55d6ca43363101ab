// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/AccessFace.h"

#include "host/gui/dialogs/PinDialog.h"
#include "host/panel/plan/Node.h"
#include "host/panel/run/Panel.h"
#include "host/services/access/Access.h"
#include "host/window/PanelWindow.h"
#include "host/window/access/HandEvents.h"
#include "host/window/access/LockKey.h"
#include "host/window/access/LockMark.h"
#include "host/window/access/QuestionSheet.h"
#include "host/window/accessible/AccessibleDevice.h"
#include "host/window/strip/PanelStrip.h"

#include "norvo/BaseWidget.h"

#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace norvo {

namespace {

constexpr int kSheetWidth = 420; // pixels, at least
constexpr int kActivationMs = 10;
constexpr int kActivationTries = 50;

AccessFace* s_face = nullptr; ///< Of the panel that runs; there is one.

} // namespace

AccessFace::AccessFace(const TypeKnowledge& knowledge, const QString& countFile,
                       PanelWindow& window)
    : m_knowledge(knowledge), m_countFile(countFile), m_window(window)
{
    s_face = this;
}

AccessFace::~AccessFace()
{
    delete m_key;
    if (s_face == this) {
        s_face = nullptr;
    }
}

void AccessFace::follow(const PanelDescription& description)
{
    m_rules = AccessRules(description, m_knowledge);
    if (!m_rules.isAnyConfirmed()) {
        m_confirmGuard.reset();
    } else if (!m_confirmGuard) {
        m_confirmGuard = std::make_unique<ConfirmGuard>(
            [this](const BaseWidget& device) { return ruleOf(device).isConfirmed; },
            [this](BaseWidget& device, const Intent& intent) { ask(device, intent); });
        if (m_lockGuard) {
            qApp->installEventFilter(m_lockGuard.get()); // Before what was installed last.
        }
    }
    const PanelAccess& setting = description.access;
    if (setting.isGiven() != m_setting.isGiven() || setting.pins != m_setting.pins ||
        setting.lockAfter != m_setting.lockAfter) {
        setAccess(setting);
    }
}

/// From here on the panel is locked, if it can be.
void AccessFace::setAccess(const PanelAccess& setting)
{
    m_setting = setting;
    m_wanted = nullptr;
    m_shownRole = Role::View;
    for (const QPointer<LockMark>& mark : qAsConst(m_marks)) {
        delete mark;
    }
    m_marks.clear();
    delete m_key;
    m_lockGuard.reset();
    m_access.reset();
    if (!setting.isGiven()) {
        return;
    }
    m_access = std::make_unique<Access>(setting, m_countFile);
    m_lockGuard =
        std::make_unique<LockGuard>([this](const BaseWidget& device) { return isLocked(device); });
    connect(m_access.get(), &Access::roleChanged, this, &AccessFace::followRole);
    connect(m_access.get(), &Access::problem, this, &AccessFace::problem);
    connect(m_access.get(), &Access::refused, this, &AccessFace::refuse);
    connect(m_access.get(), &Access::unlocked, this, &AccessFace::unlock);
    connect(m_lockGuard.get(), &LockGuard::input, m_access.get(), &Access::noteInput);
    connect(m_lockGuard.get(), &LockGuard::handOn, m_access.get(), &Access::setHandOn);
    connect(m_lockGuard.get(), &LockGuard::touched, this,
            [this](BaseWidget* device) { askForPin(ruleOf(*device).role); });
}

void AccessFace::show(const Panel& panel)
{
    if (!m_access) {
        return;
    }
    const auto before = std::exchange(m_marks, {});
    for (const Node* node : panel.nodes()) {
        BaseWidget* const widget = panel.widget(node->id());
        LockMark* mark = before.value(widget);
        const bool isMarked = mark && mark->display() == widget;
        const bool isLockable =
            widget && widget->parentWidget() && ruleOf(*widget).role > Role::View;
        if (isLockable) {
            m_marks.insert(widget, isMarked ? mark : new LockMark(*widget));
        } else if (isMarked) {
            delete mark;
        }
    }
    if (!m_key) {
        m_key = new LockKey;
        m_window.strip().addPart(m_key);
        connect(m_key, &QPushButton::clicked, this,
                [this] { m_access->isLocked() ? askForPin(Role::Operate) : m_access->lock(); });
    }
    followRole();
}

AccessRules::Rule AccessFace::ruleOf(const BaseWidget& device) const
{
    return m_rules.of(device.getObjectName());
}

bool AccessFace::isLocked(const BaseWidget& device) const
{
    return m_access && !m_access->allows(ruleOf(device).role);
}

void AccessFace::followRole()
{
    for (auto mark = m_marks.cbegin(); mark != m_marks.cend(); ++mark) {
        if (*mark && (*mark)->display()) {
            (*mark)->setLocked(isLocked(*mark.key()));
        }
    }
    if (m_key) {
        m_key->setRole(m_access->role());
    }
    const bool isLess = m_access->role() < m_shownRole;
    m_shownRole = m_access->role();
    if (isLess) {
        m_lockGuard->enforce();
    }
}

void AccessFace::ask(BaseWidget& device, const Intent& intent)
{
    if (m_question) {
        return;
    }
    const AccessRules::Rule rule = ruleOf(device);
    const QString name = AccessibleDevice::nameOf(device);
    const QString what = intent.value.isEmpty() ? name : name + ": " + intent.value;
    const QString question =
        rule.question.isEmpty() ? tr("Really operate %1?").arg(name) : rule.question;
    QWidget* const focus = QApplication::focusWidget();
    QWidget& opener = focus && device.isAncestorOf(focus) ? *focus
                      : device.focusProxy()               ? *device.focusProxy()
                                                          : device;
    m_question = new QuestionSheet(opener, question, what);
    connect(&device, &QObject::destroyed, m_question, &QObject::deleteLater);
    const QString id = device.getObjectName();
    connect(m_question, &QDialog::finished, this, [this, id, intent](int result) {
        m_question.clear();
        if (result == QDialog::Accepted) {
            emit confirmed(id, intent.value);
            performWhenActive(intent, kActivationTries);
        } else {
            emit declined(id, intent.value);
        }
    });
    m_question->present({kSheetWidth, 1});
}

/// A face of QML takes a key only where it has the focus, which comes back with that of the window;
/// where that does not come, the rest does not need it.
void AccessFace::performWhenActive(const Intent& intent, int triesLeft)
{
    QTimer::singleShot(kActivationMs, this, [this, intent, triesLeft] {
        if (m_window.isActiveWindow() || triesLeft <= 1) {
            if (m_confirmGuard) {
                m_confirmGuard->perform(intent);
            } else {
                intent.perform(); // It is not asked for any more.
            }
        } else {
            performWhenActive(intent, triesLeft - 1);
        }
    });
}

/// Not within the event that asks for it: the pad runs until it is closed.
void AccessFace::askForPin(Role needed, const std::function<void()>& wanted, const QString& remark)
{
    const Role asked = m_access->reachable(qMax(needed, Role::Operate));
    if (m_isAskingForPin) {
        return;
    }
    m_wanted = wanted;
    if (m_access->waitMs(asked) > 0) {
        return tellWait(asked);
    }
    m_isAskingForPin = true;
    const QString label = remark + tr("PIN: %1").arg(LockKey::nameOf(asked));
    QTimer::singleShot(0, this, [this, asked, label] {
        const QPointer<AccessFace> self(this);
        QWidget* const sheet = QApplication::activeModalWidget();
        const auto pin = PinDialog::getPin(sheet ? sheet : &m_window, label);
        if (!self) {
            return;
        }
        m_isAskingForPin = false;
        if (!pin || !m_access) {
            m_wanted = nullptr;
        } else if (!m_access->tryPin(*pin, asked)) {
            tellWait(asked);
        }
    });
}

void AccessFace::refuse(Role needed)
{
    m_access->waitMs(needed) > 0
        ? tellWait(needed)
        : askForPin(needed, std::exchange(m_wanted, nullptr), tr("This PIN is wrong.") + '\n');
}

void AccessFace::require(Role needed, std::function<void()> action)
{
    const Role role = m_access ? m_access->reachable(needed) : Role::View;
    if (!m_access || m_access->allows(role)) {
        return action();
    }
    askForPin(role, [this, role, action = std::move(action)] {
        if (!m_access || m_access->allows(role)) {
            action();
        }
    });
}

void AccessFace::unlock()
{
    if (const auto wanted = std::exchange(m_wanted, nullptr)) {
        wanted();
    }
}

void AccessFace::tellWait(Role needed)
{
    constexpr int second = 1000;
    m_wanted = nullptr;
    const qint64 seconds = (m_access->waitMs(needed) + second - 1) / second;
    auto* const sheet = new Sheet(m_window, tr("Too many wrong PINs"));
    sheet->setObjectName("waitForPin");
    sheet->content().addWidget(new QLabel(tr("Try again in %1 s.").arg(seconds)));
    sheet->present({kSheetWidth, 1});
}

void AccessFace::attempt(QWidget& part, const Intent& intent)
{
    BaseWidget* const device = HandEvents::deviceOf(&part);
    const bool isPerforming =
        s_face && s_face->m_confirmGuard && s_face->m_confirmGuard->isPerforming();
    const bool isGuarded = s_face && device && !isPerforming;
    if (isGuarded && s_face->isLocked(*device)) {
        s_face->askForPin(s_face->ruleOf(*device).role);
    } else if (isGuarded && s_face->ruleOf(*device).isConfirmed) {
        s_face->ask(*device, intent);
    } else {
        intent.perform();
    }
}

bool AccessFace::isFree(QWidget& part)
{
    BaseWidget* const device = HandEvents::deviceOf(&part);
    return !s_face || !device ||
           (!s_face->isLocked(*device) && !s_face->ruleOf(*device).isConfirmed);
}

} // namespace norvo
