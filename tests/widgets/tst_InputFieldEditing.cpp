// SPDX-License-Identifier: GPL-3.0-or-later

#include "RunningField.h"
#include "TestMain.h"

#include <QtTest>

class tst_InputFieldEditing : public QObject
{
    Q_OBJECT

private slots:
    void typedTextLeavesAsTextOnly();
    void typedNumberLeavesAsTextThenNumber();
    void typedCommaIsNoNumberForTheWidgetButForTheDevice();
    void intTakesDigitsOnly();
    void doubleTakesItsDecimalsOnly();
    void spinBoxIsTypedInto();
    void spinBoxIsSteppedByArrowWheelAndKey();
    void sameTextIsPassedOnOnce_data();
    void sameTextIsPassedOnOnce();
    void entryThatTheWiringReplacedIsPassedOnAgain();
    void editsAreDroppedWhileTheDeviceDoesNotRun();
};

void tst_InputFieldEditing::typedTextLeavesAsTextOnly()
{
    const Field field("string");
    QTest::keyClicks(field.line(), "ab");
    field.fromWidget->take();
    field.fromDevice->take();
    QTest::keyClicks(field.line(), "c");
    QCOMPARE(field.fromWidget->take(), QStringList("output(\"abc\")"));
    QCOMPARE(field.fromDevice->take(), QStringList("output(\"abc\")"));
    QCOMPARE(field.device.getCurrentString(), QString("abc"));
    QCOMPARE(field.device.description(), QString("abc"));
}

void tst_InputFieldEditing::typedNumberLeavesAsTextThenNumber()
{
    const Field field("string");
    QTest::keyClicks(field.line(), "2.");
    field.fromWidget->take();
    QTest::keyClicks(field.line(), "5");
    QCOMPARE(field.fromWidget->take(), QStringList({"output(\"2.5\")", "output(2.5)"}));
    QCOMPARE(field.device.getCurrentNumber(), 2.5);
}

void tst_InputFieldEditing::typedCommaIsNoNumberForTheWidgetButForTheDevice()
{
    const Field field("string");
    QTest::keyClicks(field.line(), "2,");
    field.fromWidget->take();
    field.fromDevice->take();
    QTest::keyClicks(field.line(), "5");
    QCOMPARE(field.fromWidget->take(), QStringList("output(\"2,5\")"));
    QCOMPARE(field.fromDevice->take(), QStringList({"output(\"2,5\")", "output(2.5)"}));
}

void tst_InputFieldEditing::intTakesDigitsOnly()
{
    const Field field("int");
    QTest::keyClicks(field.line(), "x1.2y");
    QCOMPARE(field.line()->text(), QString("12"));
    QCOMPARE(field.fromWidget->take(),
             QStringList({"output(\"1\")", "output(1)", "output(\"12\")", "output(12)"}));
    QCOMPARE(field.device.getCurrentNumber(), 12.0);
}

void tst_InputFieldEditing::doubleTakesItsDecimalsOnly()
{
    const Field field("double");
    QTest::keyClicks(field.line(), "-1.256");
    QCOMPARE(field.line()->text(), QString("-1.25"));
    QCOMPARE(field.device.getCurrentNumber(), -1.25);
}

void tst_InputFieldEditing::spinBoxIsTypedInto()
{
    const Field field("spin");
    field.spinBox()->selectAll();
    QTest::keyClicks(field.spinBox(), "7");
    QCOMPARE(field.spinBox()->value(), 7.0);
    QCOMPARE(field.fromWidget->take(), QStringList({"output(\"7\")", "output(7)", "output(7)"}));
    QCOMPARE(field.device.getCurrentNumber(), 7.0);
}

void tst_InputFieldEditing::spinBoxIsSteppedByArrowWheelAndKey()
{
    const Field field("spin");
    QVERIFY(QTest::qWaitForWindowExposed(field.widget.get()));
    QDoubleSpinBox* const spinBox = field.spinBox();
    const QPoint up(spinBox->width() - 15, 10);
    QTest::mouseClick(spinBox, Qt::LeftButton, {}, up);
    QCOMPARE(spinBox->text(), QString("0.10"));
    QCOMPARE(field.fromWidget->take(),
             QStringList({"output(\"0.10\")", "output(0.1)", "output(0.1)"}));

    const QPoint down(up.x(), spinBox->height() - 10);
    QTest::mouseClick(spinBox, Qt::LeftButton, {}, down);
    QCOMPARE(spinBox->text(), QString("0.00"));

    QTest::keyClick(spinBox, Qt::Key_Up);
    QCOMPARE(spinBox->text(), QString("0.10"));

    QWheelEvent wheel(spinBox->rect().center(), spinBox->mapToGlobal(spinBox->rect().center()), {},
                      {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(spinBox, &wheel);
    QCOMPARE(spinBox->text(), QString("0.20"));
}

void tst_InputFieldEditing::sameTextIsPassedOnOnce_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("spin") << "spin";
    QTest::newRow("string") << "string";
}

void tst_InputFieldEditing::sameTextIsPassedOnOnce()
{
    QFETCH(QString, type);
    const Field field(type);
    field.invokeOnEdit("0.5");
    QCOMPARE(field.fromWidget->take(), QStringList({"output(\"0.5\")", "output(0.5)"}));
    field.invokeOnEdit("0.5");
    QCOMPARE(field.fromWidget->take(), QStringList());
    field.invokeOnEdit("");
    QCOMPARE(field.fromWidget->take(), QStringList("output(\"\")"));
}

/// A receiver that puts another text in place of the typed one, such as a limit.
void tst_InputFieldEditing::entryThatTheWiringReplacedIsPassedOnAgain()
{
    Field field("string");
    connect(&field.device, qOverload<QString>(&InputDevice::output), this,
            [&field](const QString& text) {
                if (text == "9") {
                    field.device.input(QString("5"));
                }
            });
    QTest::keyClicks(field.line(), "9");
    QCOMPARE(field.line()->text(), QString("5"));
    field.fromWidget->take();
    field.line()->selectAll();
    QTest::keyClicks(field.line(), "9");
    QVERIFY(field.fromWidget->take().contains("output(\"9\")"));
    QCOMPARE(field.line()->text(), QString("5"));
}

void tst_InputFieldEditing::editsAreDroppedWhileTheDeviceDoesNotRun()
{
    Field field("string");
    field.device.setRunning(false);
    QTest::keyClicks(field.line(), "5");
    QCOMPARE(field.fromWidget->take(), QStringList({"output(\"5\")", "output(5)"}));
    QCOMPARE(field.fromDevice->take(), QStringList());
    field.device.input(7.0);
    QCOMPARE(field.line()->text(), QString("7"));
    QCOMPARE(field.fromDevice->take(), QStringList({"wgOutput(\"7\")", "wgOutput(7)"}));
}

NORVO_TEST(tst_InputFieldEditing)
#include "tst_InputFieldEditing.moc"
