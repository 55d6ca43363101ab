// SPDX-License-Identifier: GPL-3.0-or-later

#include "RunningField.h"
#include "TestMain.h"

#include <QtTest>

#include <limits>

class tst_InputFieldWiring : public QObject
{
    Q_OBJECT

private slots:
    void numberFromTheWiringHasSixDigitsInALineEdit();
    void textFromTheWiringIsShownVerbatimByALineEdit();
    void textFromTheWiringIsReadLenientlyByASpinBox();
    void textThatIsNoNumberLeavesASpinBoxAlone();
    void valueShownAlreadyStillEndsAnEdit();
    void echoOfASpinBox();
    void echoOfALineEditForNumbers();
    void echoOfALineEditForTexts();
    void repeatedValueHasNoEcho();
    void oddNumbersFromTheWiringDoNoHarm();
};

void tst_InputFieldWiring::numberFromTheWiringHasSixDigitsInALineEdit()
{
    for (const char* type : {"string", "int", "double"}) {
        Field field(type);
        field.device.input(0.123456789);
        QCOMPARE(field.line()->text(), QString("0.123457"));
    }
}

void tst_InputFieldWiring::textFromTheWiringIsShownVerbatimByALineEdit()
{
    Field field("string");
    field.device.input(QString("about 5"));
    QCOMPARE(field.line()->text(), QString("about 5"));
    // A text that reads as a number is followed by that number, written with six digits.
    field.device.input(QString("1,23456789"));
    QCOMPARE(field.line()->text(), QString("1.23457"));
}

void tst_InputFieldWiring::textFromTheWiringIsReadLenientlyByASpinBox()
{
    const Field field("spin");
    static_cast<InputFieldWidget*>(field.widget.get())->input(QString("3,75"));
    QCOMPARE(field.spinBox()->value(), 3.75);
}

void tst_InputFieldWiring::textThatIsNoNumberLeavesASpinBoxAlone()
{
    Field field("spin");
    field.device.input(2.0);
    field.fromDevice->take();
    field.device.input(QString("abc"));
    QCOMPARE(field.spinBox()->value(), 2.0);
    QCOMPARE(field.fromDevice->take(), QStringList("wgOutput(\"abc\")"));
}

void tst_InputFieldWiring::valueShownAlreadyStillEndsAnEdit()
{
    Field field("string");
    field.device.input(2.5);
    QLineEdit* const line = field.line();
    line->setCursorPosition(1);
    field.device.input(2.5);
    QCOMPARE(line->cursorPosition(), 3);
    line->selectAll();
    field.device.input(2.5);
    QVERIFY(!line->hasSelectedText());
    QTest::keyClicks(line, "0");
    QTest::keyClick(line, Qt::Key_Backspace);
    QVERIFY(line->isUndoAvailable());
    field.device.input(2.5);
    QVERIFY(!line->isUndoAvailable());
    QVERIFY(!line->isModified());
    QTest::keyClicks(line, "0");
    QTest::keySequence(line, QKeySequence::Undo);
    QVERIFY(line->isRedoAvailable());
    QVERIFY(!line->isUndoAvailable());
    field.device.input(2.5);
    QVERIFY(!line->isRedoAvailable());
}

void tst_InputFieldWiring::echoOfASpinBox()
{
    Field field("spin");
    field.device.input(0.5);
    QCOMPARE(field.spinBox()->text(), QString("0.50"));
    QCOMPARE(field.fromWidget->take(),
             QStringList({"output(\"0.50\")", "output(0.5)", "output(0.5)"}));
    QCOMPARE(field.fromDevice->take(),
             QStringList({"wgOutput(\"0.5\")",               // to the editor, which passes it on:
                          "output(\"0.50\")", "output(0.5)", // its text,
                          "output(0.5)", "output(\"0.5\")",  // the number in its text,
                          "output(0.5)", "output(\"0.5\")",  // its value;
                          "wgOutput(0.5)"}));                // the number changes nothing more
    QCOMPARE(field.device.getCurrentString(), QString("0.5"));
}

void tst_InputFieldWiring::echoOfALineEditForNumbers()
{
    Field field("double");
    field.device.input(2.5);
    QCOMPARE(field.fromDevice->take(),
             QStringList({"wgOutput(\"2.5\")", "output(\"2.5\")", "output(2.5)", "output(2.5)",
                          "output(\"2.5\")", "wgOutput(2.5)"}));
}

void tst_InputFieldWiring::echoOfALineEditForTexts()
{
    Field field("string");
    field.device.input(QString("abc"));
    QCOMPARE(field.fromDevice->take(), QStringList({"wgOutput(\"abc\")", "output(\"abc\")"}));
}

void tst_InputFieldWiring::repeatedValueHasNoEcho()
{
    for (const char* type : {"string", "int", "double", "spin"}) {
        Field field(type);
        field.device.input(2.5);
        field.fromDevice->take();
        field.device.input(2.5);
        QCOMPARE(field.fromDevice->take(), QStringList({"wgOutput(\"2.5\")", "wgOutput(2.5)"}));
    }
}

void tst_InputFieldWiring::oddNumbersFromTheWiringDoNoHarm()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const char* type : {"string", "int", "double", "spin"}) {
        Field field(type);
        for (const double number : {infinity, -infinity, 1e308, -1e308, 5e-324,
                                    std::numeric_limits<double>::quiet_NaN()}) {
            field.device.input(number);
        }
        field.device.input(3.0);
        QCOMPARE(field.line()->text(), QString(field.spinBox() ? "3.00" : "3"));
    }
}

NORVO_TEST(tst_InputFieldWiring)
#include "tst_InputFieldWiring.moc"
