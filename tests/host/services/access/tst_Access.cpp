// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestPins.h"
#include "host/services/access/Access.h"
#include "host/services/access/PinHash.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QtTest>

using namespace norvo;

/// Who may operate the panel now.
class tst_Access : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!PinHash::isAvailable()) {
            QSKIP("built without libsodium");
        }
    }
    void hashIsSaltedAndFitsItsPinOnly();
    void panelStartsLocked();
    void pinGivesItsRole_data();
    void pinGivesItsRole();
    void wrongPinIsRefusedAndCounted();
    void checkingAPinDoesNotHoldUpTheWindow();
    void roleThatMustWaitIsNotLookedAt();
    void onePinAtATime();
    void panelLocksItselfWithoutInput();
    void panelStaysOpenWhileAHandIsOn();
    void noTimeMeansByHandOnly();
    void endWaitsForAPinThatIsBeingChecked();

private:
    /// Whether the PIN has opened the panel.
    static bool opens(Access& access, const QString& pin, Role needed = Role::Operate)
    {
        QSignalSpy refused(&access, &Access::refused);
        QSignalSpy unlocked(&access, &Access::unlocked);
        if (!access.tryPin(pin, needed)) {
            return false;
        }
        while (refused.isEmpty() && unlocked.isEmpty()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return refused.isEmpty();
    }
};

void tst_Access::hashIsSaltedAndFitsItsPinOnly()
{
    const QString hash = PinHash::make("4711");
    QVERIFY(hash.startsWith("$argon2id$v=19$m=65536,t=2,p=1$"));
    QVERIFY(hash != PinHash::make("4711"));
    QVERIFY(PinHash::fits("4711", hash));
    QVERIFY(!PinHash::fits("4712", hash));
    QVERIFY(!PinHash::fits("", hash));
    QVERIFY(!PinHash::fits("4711", "$argon2id$nonsense"));
    QVERIFY(!PinHash::fits("4711", QString(500, 'x')));
}

void tst_Access::panelStartsLocked()
{
    const Access access(pins::both(), {});
    QVERIFY(access.isLocked());
    QVERIFY(access.allows(Role::View));
    QVERIFY(!access.allows(Role::Operate));
    QVERIFY(!access.allows(Role::Engineer));
}

void tst_Access::pinGivesItsRole_data()
{
    QTest::addColumn<QString>("pin");
    QTest::addColumn<Role>("role");
    QTest::newRow("operate") << pins::kOperate << Role::Operate;
    QTest::newRow("engineer") << pins::kEngineer << Role::Engineer;
}

void tst_Access::pinGivesItsRole()
{
    QFETCH(QString, pin);
    QFETCH(Role, role);
    Access access(pins::both(), {});
    const QSignalSpy changes(&access, &Access::roleChanged);
    QVERIFY(opens(access, pin));
    QCOMPARE(access.role(), role);
    QVERIFY(access.allows(Role::Operate));
    QCOMPARE(access.allows(Role::Engineer), role == Role::Engineer);
    const QSignalSpy locked(&access, &Access::locked);
    access.lock();
    access.lock();
    QVERIFY(access.isLocked());
    QCOMPARE(locked.size(), 1);
    QCOMPARE(changes.size(), 2);
}

void tst_Access::wrongPinIsRefusedAndCounted()
{
    qint64 now = 0;
    Access access(pins::both(), {}, [&now] { return now; });
    for (int i = 0; i < 3; ++i) {
        QVERIFY(!opens(access, "0000"));
        QVERIFY(access.isLocked());
    }
    QCOMPARE(access.waitMs(Role::Operate), 1000);
    QVERIFY(!access.tryPin(pins::kOperate, Role::Operate));
    now += 1000;
    QCOMPARE(access.waitMs(Role::Operate), 0);
    QVERIFY(opens(access, pins::kOperate));
}

/// Events are handled while it runs.
void tst_Access::checkingAPinDoesNotHoldUpTheWindow()
{
    PanelAccess setting = pins::both();
    setting.pins[Role::Operate] = PinHash::make("4711");
    Access access(setting, {});
    bool isAnswered = false;
    connect(&access, &Access::unlocked, this, [&isAnswered] { isAnswered = true; });
    QVERIFY(access.tryPin("4711", Role::Operate));
    QVERIFY(!isAnswered);
    bool isEventHandled = false;
    QTimer::singleShot(0, this, [&] { isEventHandled = !isAnswered; });
    QTRY_VERIFY(isAnswered);
    QVERIFY(isEventHandled);
}

void tst_Access::roleThatMustWaitIsNotLookedAt()
{
    qint64 now = 0;
    Access access(pins::both(), {}, [&now] { return now; });
    for (int i = 0; i < 2; ++i) {
        QVERIFY(!opens(access, "0000"));
    }
    // An operator who guesses the engineer's PIN between the right ones of his own.
    for (int i = 0; i < 3; ++i) {
        QVERIFY(!opens(access, "0000", Role::Engineer));
        now += 400000;
        QVERIFY(opens(access, pins::kOperate));
        access.lock();
    }
    QVERIFY(!opens(access, "0000", Role::Engineer));
    QVERIFY(access.waitMs(Role::Engineer) > 1000);
    QCOMPARE(access.waitMs(Role::Operate), 0);
    QVERIFY(!opens(access, pins::kEngineer, Role::Engineer)); // Right, and too early.
    now += 400000;
    QVERIFY(opens(access, pins::kEngineer, Role::Engineer));
}

void tst_Access::onePinAtATime()
{
    Access access(pins::both(), {});
    const QSignalSpy unlocked(&access, &Access::unlocked);
    QVERIFY(access.tryPin(pins::kOperate, Role::Operate));
    QVERIFY(!access.tryPin(pins::kEngineer, Role::Engineer));
    QTRY_COMPARE(unlocked.size(), 1);
    QCOMPARE(access.role(), Role::Operate);
}

void tst_Access::panelLocksItselfWithoutInput()
{
    PanelAccess setting = pins::both();
    setting.lockAfter = std::chrono::milliseconds(50);
    Access access(setting, {});
    QVERIFY(opens(access, pins::kOperate));
    QTRY_VERIFY(access.isLocked());
    access.noteInput();
    QVERIFY(access.isLocked());
}

void tst_Access::panelStaysOpenWhileAHandIsOn()
{
    PanelAccess setting = pins::both();
    setting.lockAfter = std::chrono::milliseconds(20);
    Access access(setting, {});
    access.setHandOn(true);
    QVERIFY(opens(access, pins::kOperate));
    QTest::qWait(200);
    QVERIFY(!access.isLocked());
    access.setHandOn(false);
    QTRY_VERIFY(access.isLocked());
}

void tst_Access::noTimeMeansByHandOnly()
{
    PanelAccess setting = pins::both();
    setting.lockAfter = std::chrono::milliseconds(0);
    Access access(setting, {});
    QVERIFY(opens(access, pins::kOperate));
    QTest::qWait(50);
    QVERIFY(!access.isLocked());
}

void tst_Access::endWaitsForAPinThatIsBeingChecked()
{
    PanelAccess setting = pins::both();
    setting.pins[Role::Operate] = PinHash::make("4711");
    Access access(setting, {});
    QVERIFY(access.tryPin("4711", Role::Operate));
} // A thread that outlives its object would end the test program.

NORVO_TEST(tst_Access)
#include "tst_Access.moc"
