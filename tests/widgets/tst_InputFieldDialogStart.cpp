// SPDX-License-Identifier: GPL-3.0-or-later

#include "InputFieldPress.h"
#include "TestMain.h"

#include <QtTest>

class tst_InputFieldDialogStart : public QObject
{
    Q_OBJECT

private slots:
    void keypadStartsFromTheCurrentNumberOfASpinBox();
    void keypadStartsFromTheTextOfADouble();
    void keypadStartsFromTheTextOfAnInt();
    void keypadForIntsCutsRangeAndStepTowardZero();
    void keyboardStartsFromTheTextShown();
};

void tst_InputFieldDialogStart::keypadStartsFromTheCurrentNumberOfASpinBox()
{
    InputStand stand(withDialogs({{"type", "spin"},
                                  {"min", "-2"},
                                  {"max", "2"},
                                  {"value step", "0.25"},
                                  {"decimals", "3"}}));
    stand.device.input(0.1234567);
    const auto look = [](QWidget& dialog) {
        QCOMPARE(text(dialog, "range"), QString("Allowed: -2 to 2"));
        QCOMPARE(text(dialog, "oldValue"), QString("Old value: 0.123")); // the echo has rounded it
        QCOMPARE(text(dialog, "display"), QString("0.123"));
        tap(dialog, "keyUp");
        QCOMPARE(text(dialog, "display"), QString("0.373"));
    };
    QCOMPARE(press(stand, look), 1);
}

void tst_InputFieldDialogStart::keypadStartsFromTheTextOfADouble()
{
    InputStand stand(withDialogs({{"type", "double"}, {"max", "10"}}));
    stand.device.setRunning(false); // no echo, so that the device keeps the texts as they came
    stand.device.input(QString("2.5"));
    QCOMPARE(press(stand,
                   [](QWidget& dialog) {
                       QCOMPARE(text(dialog, "oldValue"), QString("Old value: 2.5"));
                       QCOMPARE(text(dialog, "display"), QString("2.50"));
                   }),
             1);
    stand.device.input(QString("2,5")); // no number without leniency
    QCOMPARE(
        press(stand,
              [](QWidget& dialog) { QCOMPARE(text(dialog, "oldValue"), QString("Old value: 0")); }),
        1);
}

void tst_InputFieldDialogStart::keypadStartsFromTheTextOfAnInt()
{
    InputStand stand(withDialogs({{"type", "int"}, {"max", "10"}}));
    stand.device.input(QString("7"));
    QCOMPARE(press(stand, [](QWidget& dialog) { QCOMPARE(text(dialog, "display"), QString("7")); }),
             1);
    stand.device.input(QString("7.5"));
    QCOMPARE(press(stand, [](QWidget& dialog) { QCOMPARE(text(dialog, "display"), QString("0")); }),
             1);
}

void tst_InputFieldDialogStart::keypadForIntsCutsRangeAndStepTowardZero()
{
    const InputStand stand(
        withDialogs({{"type", "int"}, {"min", "-1.9"}, {"max", "10.9"}, {"value step", "2.9"}}));
    QCOMPARE(press(stand,
                   [](QWidget& dialog) {
                       QCOMPARE(text(dialog, "range"), QString("Allowed: -1 to 10"));
                       tap(dialog, "keyUp");
                       QCOMPARE(text(dialog, "display"), QString("2"));
                   }),
             1);
}

void tst_InputFieldDialogStart::keyboardStartsFromTheTextShown()
{
    const InputStand stand(withDialogs({{"type", "string"}}));
    stand.only<QLineEdit>()->setText("pump");
    QCOMPARE(press(stand,
                   [](QWidget& dialog) {
                       QCOMPARE(text(dialog, "display"), QString("pump"));
                       QVERIFY(dialog.findChild<QPushButton*>("ok")->isEnabled());
                   }),
             1);
}

NORVO_TEST(tst_InputFieldDialogStart)
#include "tst_InputFieldDialogStart.moc"
