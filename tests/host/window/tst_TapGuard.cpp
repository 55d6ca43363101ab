// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/TapGuard.h"

#include "ShownPanel.h"
#include "TestMain.h"

using norvo::TapGuard;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  pump: {device: button, params: {text: Pump}}\n"
                          "  lamp: {device: button, params: {text: Lamp}}\n"
                          "  step: {device: button, params: {text: Step, mode: click}}\n"
                          "  agree: {device: checkbox, params: {label: Yes}}\n";

/// A clock that stands until the test moves it.
struct HeldClock
{
    TapGuard::Clock clock()
    {
        return [this] { return ms; };
    }
    qint64 ms = 1000;
};

/// The second press of a quick pair comes as a double click, as a window system sends it.
void tapTwice(QWidget& button, HeldClock& clock, qint64 pauseMs)
{
    const QPoint inside(10, button.height() / 2);
    QTest::mousePress(&button, Qt::LeftButton, {}, inside);
    QTest::mouseRelease(&button, Qt::LeftButton, {}, inside);
    clock.ms += pauseMs;
    QTest::mouseEvent(QTest::MouseDClick, &button, Qt::LeftButton, {}, inside);
    QTest::mouseRelease(&button, Qt::LeftButton, {}, inside);
}

void slideOff(QWidget& button)
{
    QTest::mousePress(&button, Qt::LeftButton);
    QTest::mouseRelease(&button, Qt::LeftButton, {}, button.rect().bottomRight() + QPoint(40, 40));
}

} // namespace

class tst_TapGuard : public QObject
{
    Q_OBJECT

private slots:
    void doubleTapOnALatchedButtonIsOne_data();
    void doubleTapOnALatchedButtonIsOne();
    void tapsThatGoOnAtOnceAreOne();
    void secondButtonIsTappedAtOnce();
    void tapThatSlidOffIsNone();
    void tapThatSlidOffASecondButtonIsNone();
    void swallowedTapThatSlidOffEndsNoPause();
    void buttonThatSpringsBackTakesEveryTap();
    void dialogKeysTakeEveryTap();
};

void tst_TapGuard::doubleTapOnALatchedButtonIsOne_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<qint64>("pauseMs");
    QTest::addColumn<bool>("isOn");
    QTest::newRow("button, at once") << "pump" << qint64(0) << true;
    QTest::newRow("button, just too soon") << "pump" << qint64(299) << true;
    QTest::newRow("button, late enough") << "pump" << qint64(300) << false;
    QTest::newRow("check box, at once") << "agree" << qint64(120) << true;
    QTest::newRow("check box, late enough") << "agree" << qint64(300) << false;
}

void tst_TapGuard::doubleTapOnALatchedButtonIsOne()
{
    QFETCH(QString, id);
    QFETCH(qint64, pauseMs);
    QFETCH(bool, isOn);
    HeldClock clock;
    const TapGuard guard(*qApp, clock.clock());
    const ShownPanel shown(kPanel);
    auto* const button = shown.only<QAbstractButton>(id);
    QVERIFY(!button->isChecked());
    tapTwice(*button, clock, pauseMs);
    QCOMPARE(button->isChecked(), isOn);
    QVERIFY(!button->isDown());
}

void tst_TapGuard::tapsThatGoOnAtOnceAreOne()
{
    HeldClock clock;
    const TapGuard guard(*qApp, clock.clock());
    const ShownPanel shown(kPanel);
    auto* const button = shown.only<QAbstractButton>("pump");
    for (int tap = 0; tap < 4; ++tap) {
        QTest::mouseClick(button, Qt::LeftButton);
        clock.ms += 200;
        QVERIFY(button->isChecked());
    }
    clock.ms += 100;
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!button->isChecked());
}

void tst_TapGuard::secondButtonIsTappedAtOnce()
{
    HeldClock clock;
    const TapGuard guard(*qApp, clock.clock());
    const ShownPanel shown(kPanel);
    QTest::mouseClick(shown.only<QAbstractButton>("pump"), Qt::LeftButton);
    QTest::mouseClick(shown.only<QAbstractButton>("lamp"), Qt::LeftButton);
    QVERIFY(shown.only<QAbstractButton>("lamp")->isChecked());
}

void tst_TapGuard::tapThatSlidOffIsNone()
{
    HeldClock clock;
    const TapGuard guard(*qApp, clock.clock());
    const ShownPanel shown(kPanel);
    auto* const button = shown.only<QAbstractButton>("pump");
    slideOff(*button);
    QVERIFY(!button->isChecked());
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(button->isChecked());
}

void tst_TapGuard::tapThatSlidOffASecondButtonIsNone()
{
    HeldClock clock;
    const TapGuard guard(*qApp, clock.clock());
    const ShownPanel shown(kPanel);
    auto* const lamp = shown.only<QAbstractButton>("lamp");
    QTest::mouseClick(shown.only<QAbstractButton>("pump"), Qt::LeftButton);
    slideOff(*lamp);
    QVERIFY(!lamp->isChecked());
    QTest::mouseClick(lamp, Qt::LeftButton);
    QVERIFY(lamp->isChecked());
}

void tst_TapGuard::swallowedTapThatSlidOffEndsNoPause()
{
    HeldClock clock;
    const TapGuard guard(*qApp, clock.clock());
    const ShownPanel shown(kPanel);
    auto* const button = shown.only<QAbstractButton>("pump");
    QTest::mouseClick(button, Qt::LeftButton);
    slideOff(*button);
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(button->isChecked());
}

void tst_TapGuard::buttonThatSpringsBackTakesEveryTap()
{
    HeldClock clock;
    const TapGuard guard(*qApp, clock.clock());
    const ShownPanel shown(kPanel);
    auto* const button = shown.only<QAbstractButton>("step");
    QSignalSpy clicks(button, &QAbstractButton::clicked);
    tapTwice(*button, clock, 100);
    QCOMPARE(clicks.size(), 2);
}

void tst_TapGuard::dialogKeysTakeEveryTap()
{
    HeldClock clock;
    const TapGuard guard(*qApp, clock.clock());
    const ShownPanel shown(kPanel);
    QDialog dialog(shown.panel.widget("pump"));
    auto* const key = new QPushButton(&dialog);
    key->setCheckable(true);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    tapTwice(*key, clock, 100);
    QVERIFY(!key->isChecked());
}

NORVO_TEST(tst_TapGuard)
#include "tst_TapGuard.moc"
