// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/HeldKey.h"
#include "EventCounter.h"
#include "ModalDialog.h"
#include "Recorder.h"
#include "Touch.h"
#include "TestMain.h"

#include <QAccessible>
#include <QDialog>
#include <QLineEdit>
#include <QStackedWidget>

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

    void handThatSlidesOffAndBackIsOff();
    void fingerThatSlidesOffAndBackIsOff();
    void whatMakesTheHandUnsureTakesItAway_data();
    void whatMakesTheHandUnsureTakesItAway();
    void whatMakesAFingerUnsureTakesItAway_data() { whatMakesTheHandUnsureTakesItAway_data(); }
    void whatMakesAFingerUnsureTakesItAway();
    void modalDialogTakesTheHandAway();
    void anotherPageTakesTheHandAway();
    void focusOfAnotherControlTakesAFingerAway();
    void destructionTakesTheHandAway();
    void handThatWasTakenAwayMustPressAgain();

    void accessiblePressAndClickDoNothing();
    void slotMayDeleteTheKey_data();
    void slotMayDeleteTheKey();
    void isLargeEnoughForAGlove();
};

const QStringList kOn{"handOn()"};
const QStringList kOff{"handOff()"};
const QStringList kNothing;

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

void tst_HeldKey::handThatSlidesOffAndBackIsOff()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    QTest::mousePress(window.left, Qt::LeftButton);
    QMouseEvent off(QEvent::MouseMove, {151, 20}, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.left, &off);
    QCOMPARE(left.take(), kOn + kOff);
    QMouseEvent back(QEvent::MouseMove, {20, 20}, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.left, &back);
    QTest::mouseRelease(window.left, Qt::LeftButton);
    QCOMPARE(left.take(), kNothing);
}

void tst_HeldKey::fingerThatSlidesOffAndBackIsOff()
{
    TwoKeys<HeldKey> window;
    auto fingers = QTest::touchEvent(&window, touchScreen(), false);
    Recorder left(window.left, QPushButton::staticMetaObject);
    fingers.press(0, {20, 20}, window.left).commit();
    fingers.move(0, {180, 20}, window.left).commit();
    QCOMPARE(left.take(), kOn + kOff);
    fingers.move(0, {20, 20}, window.left).commit();
    fingers.release(0, {20, 20}, window.left).commit();
    QCOMPARE(left.take(), kNothing);
}

using Deed = void (*)(TwoKeys<HeldKey>& window);
Q_DECLARE_METATYPE(Deed)

void tst_HeldKey::whatMakesTheHandUnsureTakesItAway_data()
{
    QTest::addColumn<Deed>("deed");
    const auto row = [](const char* name, Deed deed) { QTest::newRow(name) << deed; };
    row("focus goes", [](TwoKeys<HeldKey>& window) { window.right->setFocus(); });
    row("hidden", [](TwoKeys<HeldKey>& window) { window.left->hide(); });
    row("window hidden", [](TwoKeys<HeldKey>& window) { window.hide(); });
    row("disabled", [](TwoKeys<HeldKey>& window) { window.left->setEnabled(false); });
    row("locked with the panel", [](TwoKeys<HeldKey>& window) { window.setEnabled(false); });
    row("another window", [](TwoKeys<HeldKey>& /*window*/) {
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
    });
    row("another window has the mouse", [](TwoKeys<HeldKey>& window) {
        QEvent ungrab(QEvent::UngrabMouse);
        QApplication::sendEvent(window.left, &ungrab);
    });
    row("touch is cancelled", [](TwoKeys<HeldKey>& window) {
        QTouchEvent cancel(QEvent::TouchCancel, touchScreen());
        QApplication::sendEvent(window.left, &cancel);
    });
}

void tst_HeldKey::whatMakesTheHandUnsureTakesItAway()
{
    QFETCH(Deed, deed);
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    QTest::mousePress(window.left, Qt::LeftButton);
    window.left->setFocus();
    QCOMPARE(left.take(), kOn);
    deed(window);
    QCOMPARE(left.take(), kOff);
}

/// The focus is at another key by then, where a second finger is.
void tst_HeldKey::whatMakesAFingerUnsureTakesItAway()
{
    QFETCH(Deed, deed);
    TwoKeys<HeldKey> window;
    auto fingers = QTest::touchEvent(&window, touchScreen(), false);
    Recorder left(window.left, QPushButton::staticMetaObject);
    fingers.press(0, {20, 20}, window.left).commit();
    window.right->setFocus();
    QCOMPARE(left.take(), kOn);
    deed(window);
    const bool onlyTheFocusGoes = QTest::currentDataTag() == QByteArray("focus goes");
    QCOMPARE(left.take(), onlyTheFocusGoes ? kNothing : kOff);
}

void tst_HeldKey::modalDialogTakesTheHandAway()
{
    TwoKeys<HeldKey> window;
    auto fingers = QTest::touchEvent(&window, touchScreen(), false);
    Recorder left(window.left, QPushButton::staticMetaObject);
    fingers.press(0, {20, 20}, window.left).commit();
    QCOMPARE(left.take(), kOn);
    QStringList inTheDialog;
    const ModalDialog use([&](QWidget& /*dialog*/) { inTheDialog = left.take(); });
    QDialog dialog;
    dialog.setAttribute(Qt::WA_ShowWithoutActivating);
    dialog.exec();
    QCOMPARE(inTheDialog, kOff);
}

void tst_HeldKey::anotherPageTakesTheHandAway()
{
    QStackedWidget pages;
    auto* const key = new HeldKey("key");
    pages.addWidget(key);
    pages.addWidget(new QWidget);
    pages.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pages));
    Recorder recorder(key, QPushButton::staticMetaObject);
    QTest::mousePress(key, Qt::LeftButton);
    pages.setCurrentIndex(1);
    QCOMPARE(recorder.take(), kOn + kOff);
}

void tst_HeldKey::focusOfAnotherControlTakesAFingerAway()
{
    TwoKeys<HeldKey> window;
    auto fingers = QTest::touchEvent(&window, touchScreen(), false);
    QLineEdit field(&window);
    field.move(0, 200);
    field.show();
    Recorder left(window.left, QPushButton::staticMetaObject);
    window.left->setFocus();
    fingers.press(0, {20, 20}, window.left).commit();
    window.right->setFocus(); // as the second finger does
    QCOMPARE(left.take(), kOn);
    window.left->setFocus();
    field.setFocus();
    QCOMPARE(left.take(), kOff);
}

void tst_HeldKey::destructionTakesTheHandAway()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    QTest::mousePress(window.left, Qt::LeftButton);
    delete window.left;
    QCOMPARE(left.take(), kOn + kOff);
}

void tst_HeldKey::handThatWasTakenAwayMustPressAgain()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    QTest::mousePress(window.left, Qt::LeftButton);
    window.left->setEnabled(false);
    window.left->setEnabled(true);
    QTest::mouseMove(window.left, {30, 30});
    QTest::mouseRelease(window.left, Qt::LeftButton);
    QCOMPARE(left.take(), kOn + kOff);
    QTest::mousePress(window.left, Qt::LeftButton);
    QCOMPARE(left.take(), kOn);
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
