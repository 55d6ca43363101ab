// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/HeldKey.h"
#include "EventCounter.h"
#include "HandSignals.h"
#include "Recorder.h"
#include "Touch.h"
#include "TestMain.h"

#include <QAccessible>

/// What counts as a hand on a key, driven as hands would.
class tst_HeldKey : public QObject
{
    Q_OBJECT

private slots:
    void mouseHoldsFromPressToRelease();
    void otherMouseButtonDoesNotPress();
    void secondPressOfADoubleClickHolds();
    void spaceBarHoldsAndItsRepeatIsIgnored();
    void otherKeysAreLeftToTheWindow();
    void spaceBarThatWasTakenAwayDoesNotPressByItsRepeat();
    void fingerHolds();
    void twoFingersHoldTwoKeys();
    void handThatCameFirstHoldsAlone();
    void secondFingerOnTheKeyDoesNotHoldIt();
    void secondFingerThatLiftsOrSlidesLeavesTheFirst();

    void accessiblePressAndClickDoNothing();
    void slotMayDeleteTheKey_data();
    void slotMayDeleteTheKey();
    void isLargeEnoughForAGlove();
};

void tst_HeldKey::mouseHoldsFromPressToRelease()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    QTest::mousePress(window.left, Qt::LeftButton);
    QCOMPARE(left.take(), kOn);
    QTest::mouseMove(window.left, {140, 90});
    QTest::mouseRelease(window.left, Qt::RightButton);
    QCOMPARE(left.take(), kNothing);
    QTest::mouseRelease(window.left, Qt::LeftButton);
    QCOMPARE(left.take(), kOff);
}

void tst_HeldKey::otherMouseButtonDoesNotPress()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    QTest::mouseClick(window.left, Qt::RightButton);
    QTest::mouseClick(window.left, Qt::MiddleButton);
    QCOMPARE(left.take(), kNothing);
}

void tst_HeldKey::secondPressOfADoubleClickHolds()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    QTest::mouseClick(window.left, Qt::LeftButton);
    QCOMPARE(left.take(), kOn + kOff);
    QTest::mouseDClick(window.left, Qt::LeftButton); // the event of the second press alone
    QCOMPARE(left.take(), kOn);
}

void tst_HeldKey::spaceBarHoldsAndItsRepeatIsIgnored()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    window.left->setFocus();
    QTest::keyPress(window.left, Qt::Key_Space);
    for (int i = 0; i < 3; ++i) { // as X11 repeats a key
        QKeyEvent up(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, " ", true);
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
        QApplication::sendEvent(window.left, &up);
        QApplication::sendEvent(window.left, &down);
    }
    QCOMPARE(left.take(), kOn);
    QTest::keyRelease(window.left, Qt::Key_Space);
    QCOMPARE(left.take(), kOff);
    QTest::keyClick(window.left, Qt::Key_Return);
    QCOMPARE(left.take(), kNothing);
}

void tst_HeldKey::fingerHolds()
{
    TwoKeys<HeldKey> window;
    auto fingers = QTest::touchEvent(&window, touchScreen(), false);
    Recorder left(window.left, QPushButton::staticMetaObject);
    fingers.press(0, {20, 20}, window.left).commit();
    QCOMPARE(left.take(), kOn);
    fingers.move(0, {140, 20}, window.left).commit();
    QCOMPARE(left.take(), kNothing);
    fingers.release(0, {140, 20}, window.left).commit();
    QCOMPARE(left.take(), kOff);
}

void tst_HeldKey::twoFingersHoldTwoKeys()
{
    TwoKeys<HeldKey> window;
    auto fingers = QTest::touchEvent(&window, touchScreen(), false);
    Recorder left(window.left, QPushButton::staticMetaObject);
    Recorder right(window.right, QPushButton::staticMetaObject);
    fingers.press(0, {20, 20}, window.left).commit();
    fingers.stationary(0).press(1, {20, 20}, window.right).commit();
    QCOMPARE(left.take(), kOn);
    QCOMPARE(right.take(), kOn);
    fingers.release(0, {20, 20}, window.left).stationary(1).commit();
    QCOMPARE(left.take(), kOff);
    QCOMPARE(right.take(), kNothing);
    fingers.release(1, {20, 20}, window.right).commit();
    QCOMPARE(right.take(), kOff);
}

void tst_HeldKey::secondFingerOnTheKeyDoesNotHoldIt()
{
    TwoKeys<HeldKey> window;
    auto fingers = QTest::touchEvent(&window, touchScreen(), false);
    Recorder left(window.left, QPushButton::staticMetaObject);
    fingers.press(0, {20, 20}, window.left).commit();
    fingers.stationary(0).press(1, {90, 20}, window.left).commit();
    QCOMPARE(left.take(), kOn);
    fingers.release(0, {20, 20}, window.left).stationary(1).commit();
    QCOMPARE(left.take(), kOff);
    fingers.release(1, {90, 20}, window.left).commit();
    QCOMPARE(left.take(), kNothing);
}

void tst_HeldKey::accessiblePressAndClickDoNothing()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    QAccessibleActionInterface* const actions =
        QAccessible::queryAccessibleInterface(window.left)->actionInterface();
    QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    window.left->click();
    window.left->animateClick(0);
    QTest::qWait(20);
    QCOMPARE(left.take(), kNothing);
}

void tst_HeldKey::slotMayDeleteTheKey_data()
{
    QTest::addColumn<bool>("on");
    QTest::newRow("press") << true;
    QTest::newRow("release") << false;
}

void tst_HeldKey::slotMayDeleteTheKey()
{
    QFETCH(bool, on);
    TwoKeys<HeldKey> window;
    const QPointer<HeldKey> key(window.left);
    connect(window.left, on ? &HeldKey::handOn : &HeldKey::handOff, this, [&] { delete key; });
    QMouseEvent press(QEvent::MouseButtonPress, {20, 20}, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(window.left, &press);
    if (key) {
        QMouseEvent release(QEvent::MouseButtonRelease, {20, 20}, Qt::LeftButton, {}, {});
        QApplication::sendEvent(window.left, &release);
    }
    QVERIFY(!key);
}

void tst_HeldKey::isLargeEnoughForAGlove()
{
    const HeldKey key("");
    QVERIFY(key.sizeHint().width() >= 60 && key.sizeHint().height() >= 60);
    QVERIFY(key.minimumSizeHint().width() >= 60 && key.minimumSizeHint().height() >= 60);
}

void tst_HeldKey::secondFingerThatLiftsOrSlidesLeavesTheFirst()
{
    TwoKeys<HeldKey> window;
    auto fingers = QTest::touchEvent(&window, touchScreen(), false);
    Recorder left(window.left, QPushButton::staticMetaObject);
    fingers.press(3, {20, 20}, window.left).commit();
    fingers.stationary(3).press(4, {90, 20}, window.left).commit();
    fingers.stationary(3).move(4, {180, 20}, window.left).commit();
    fingers.stationary(3).release(4, {180, 20}, window.left).commit();
    QCOMPARE(left.take(), kOn);
    fingers.release(3, {20, 20}, window.left).commit();
    QCOMPARE(left.take(), kOff);
    fingers.press(5, {20, 20}, window.right).commit(); // the next time it is not the first finger
    fingers.stationary(5).press(6, {20, 20}, window.left).commit();
    fingers.stationary(5).release(6, {20, 20}, window.left).commit();
    QCOMPARE(left.take(), kOn + kOff);
}

void tst_HeldKey::handThatCameFirstHoldsAlone()
{
    TwoKeys<HeldKey> window;
    window.left->setFocus();
    auto fingers = QTest::touchEvent(&window, touchScreen(), false);
    Recorder left(window.left, QPushButton::staticMetaObject);
    const auto slide = [&] {
        QMouseEvent off(QEvent::MouseMove, {151, 20}, Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(window.left, &off);
    };
    fingers.press(0, {20, 20}, window.left).commit();
    QTest::mousePress(window.left, Qt::LeftButton);
    slide();
    QTest::mouseRelease(window.left, Qt::LeftButton);
    QTest::keyClick(window.left, Qt::Key_Space);
    QCOMPARE(left.take(), kOn);
    fingers.release(0, {20, 20}, window.left).commit();
    QCOMPARE(left.take(), kOff);
    QTest::mousePress(window.left, Qt::LeftButton);
    QTest::keyClick(window.left, Qt::Key_Space);
    QCOMPARE(left.take(), kOn);
    QTest::mouseRelease(window.left, Qt::LeftButton);
    QCOMPARE(left.take(), kOff);
    QTest::keyPress(window.left, Qt::Key_Space);
    QTest::mouseClick(window.left, Qt::LeftButton);
    slide();
    QCOMPARE(left.take(), kOn);
    QTest::keyRelease(window.left, Qt::Key_Space);
    QCOMPARE(left.take(), kOff);
}

void tst_HeldKey::spaceBarThatWasTakenAwayDoesNotPressByItsRepeat()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    window.left->setFocus();
    QTest::keyPress(window.left, Qt::Key_Space);
    window.right->setFocus();
    window.left->setFocus();
    QCOMPARE(left.take(), kOn + kOff);
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
    QApplication::sendEvent(window.left, &down);
    QCOMPARE(left.take(), kNothing);
}

void tst_HeldKey::otherKeysAreLeftToTheWindow()
{
    TwoKeys<HeldKey> window;
    EventCounter events(&window);
    window.left->setFocus();
    QTest::keyClick(window.left, Qt::Key_F5);
    QTest::keyClick(window.left, Qt::Key_Return);
    QCOMPARE(events.take(QEvent::KeyPress), 2);
    QCOMPARE(events.take(QEvent::KeyRelease), 2);
    QTest::keyClick(window.left, Qt::Key_Space);
    QCOMPARE(events.take(QEvent::KeyPress) + events.take(QEvent::KeyRelease), 0);
}

NORVO_TEST(tst_HeldKey)
#include "tst_HeldKey.moc"
