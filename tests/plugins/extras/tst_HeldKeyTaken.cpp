// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/HeldKey.h"
#include "HandSignals.h"
#include "ModalDialog.h"
#include "Recorder.h"
#include "Touch.h"
#include "TestMain.h"

#include <QDialog>
#include <QLineEdit>
#include <QStackedWidget>

using Deed = void (*)(TwoKeys<HeldKey>& window);
Q_DECLARE_METATYPE(Deed)

/// What takes a hand away from a key, driven as hands would.
class tst_HeldKeyTaken : public QObject
{
    Q_OBJECT

private slots:

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
};

void tst_HeldKeyTaken::handThatSlidesOffAndBackIsOff()
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

void tst_HeldKeyTaken::fingerThatSlidesOffAndBackIsOff()
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

void tst_HeldKeyTaken::whatMakesTheHandUnsureTakesItAway_data()
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

void tst_HeldKeyTaken::whatMakesTheHandUnsureTakesItAway()
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
void tst_HeldKeyTaken::whatMakesAFingerUnsureTakesItAway()
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

void tst_HeldKeyTaken::modalDialogTakesTheHandAway()
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

void tst_HeldKeyTaken::anotherPageTakesTheHandAway()
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

void tst_HeldKeyTaken::focusOfAnotherControlTakesAFingerAway()
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

void tst_HeldKeyTaken::destructionTakesTheHandAway()
{
    TwoKeys<HeldKey> window;
    Recorder left(window.left, QPushButton::staticMetaObject);
    QTest::mousePress(window.left, Qt::LeftButton);
    delete window.left;
    QCOMPARE(left.take(), kOn + kOff);
}

void tst_HeldKeyTaken::handThatWasTakenAwayMustPressAgain()
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

NORVO_TEST(tst_HeldKeyTaken)
#include "tst_HeldKeyTaken.moc"
