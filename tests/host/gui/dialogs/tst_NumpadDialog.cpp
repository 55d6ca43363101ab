// SPDX-License-Identifier: GPL-3.0-or-later

#include "NumpadUse.h"
#include "TestMain.h"

#include <QtTest>

class tst_NumpadDialog : public QObject
{
    Q_OBJECT

private slots:
    void tappedNumberIsReturned();
    void everyKeyActs_data();
    void everyKeyActs();
    void cancelReturnsTheStart_data();
    void cancelReturnsTheStart();
    void physicalKeyboardServes_data();
    void physicalKeyboardServes();
    void digitsOfAnyScriptAreTyped();
    void signOfTheStepIsIgnored();
    void wholeNumbersHaveNoPoint();
    void wholeNumberIsReturned();
    void wholeStartIsCutIntoAnInt_data();
    void wholeStartIsCutIntoAnInt();
    void nullOkIsAllowed();
    void parentThatDiesCancels();
};

void tst_NumpadDialog::tappedNumberIsReturned()
{
    const Answer answer = enterDouble(0.5, [](QWidget& dialog) {
        QCOMPARE(shown(dialog), QString("0.50"));
        tapAll(dialog, {"key3", "keyPoint", "key7", "key5", "key9"});
        QCOMPARE(shown(dialog), QString("3.75"));
        tap(dialog, "ok");
    });
    QCOMPARE(answer.dialogs, 1);
    QVERIFY(answer.ok);
    QCOMPARE(answer.number, 3.75);
}

void tst_NumpadDialog::everyKeyActs_data()
{
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("text");
    for (int digit = 0; digit <= 9; ++digit) {
        QTest::addRow("digit %d", digit)
            << QStringList(QString("key%1").arg(digit)) << QString::number(digit);
    }
    QTest::newRow("point") << QStringList{"key1", "keyPoint"} << "1.";
    QTest::newRow("sign") << QStringList{"keySign"} << "-5.00";
    QTest::newRow("backspace") << QStringList{"keyBackspace"} << "5.0";
    QTest::newRow("clear") << QStringList{"keyClear"} << "";
    QTest::newRow("step up") << QStringList{"keyUp"} << "5.50";
    QTest::newRow("step down") << QStringList{"keyDown", "keyDown"} << "4.00";
}

void tst_NumpadDialog::everyKeyActs()
{
    QFETCH(QStringList, keys);
    QFETCH(QString, text);
    QString result;
    enterDouble(5, [&](QWidget& dialog) {
        tapAll(dialog, keys);
        result = shown(dialog);
    });
    QCOMPARE(result, text);
}

void tst_NumpadDialog::cancelReturnsTheStart_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("key") << "key";
    QTest::newRow("Escape") << "escape";
    QTest::newRow("window") << "window";
}

void tst_NumpadDialog::cancelReturnsTheStart()
{
    QFETCH(QString, way);
    const Answer answer = enterDouble(0.123457, [&](QWidget& dialog) {
        tap(dialog, "key7");
        if (way == "key") {
            tap(dialog, "cancel");
        } else if (way == "escape") {
            QTest::keyClick(&dialog, Qt::Key_Escape);
        } else {
            dialog.close();
        }
        QVERIFY(!dialog.isVisible());
    });
    QVERIFY(!answer.ok);
    QCOMPARE(answer.number, 0.123457);
    QVERIFY(qIsNaN(enterDouble(kNaN, [](QWidget& dialog) { dialog.close(); }).number));
}

void tst_NumpadDialog::physicalKeyboardServes_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<int>("last");
    QTest::addColumn<double>("number");
    QTest::newRow("Enter confirms") << "7.5" << int(Qt::Key_Enter) << 7.5;
    QTest::newRow("Return confirms") << "7.5" << int(Qt::Key_Return) << 7.5;
    QTest::newRow("comma is a point") << "7,25" << int(Qt::Key_Return) << 7.25;
    QTest::newRow("letters are ignored") << "x7e5" << int(Qt::Key_Return) << 7.0;
}

void tst_NumpadDialog::physicalKeyboardServes()
{
    QFETCH(QString, keys);
    QFETCH(int, last);
    QFETCH(double, number);
    const Answer answer = enterDouble(5, [&](QWidget& dialog) {
        QTest::keyClicks(&dialog, keys);
        if (keys == "x7e5") {
            QCOMPARE(shown(dialog), QString("75"));
            QTest::keyClick(&dialog, Qt::Key_Backspace);
        }
        QTest::keyClick(&dialog, Qt::Key_Up);
        QTest::keyClick(&dialog, Qt::Key_Down);
        QTest::keyClick(&dialog, Qt::Key(last));
    });
    QVERIFY(answer.ok);
    QCOMPARE(answer.number, number);
    enterDouble(5, [](QWidget& dialog) {
        QTest::keyClick(&dialog, Qt::Key_Up);
        QCOMPARE(shown(dialog), QString("5.50"));
        QTest::keyClick(&dialog, Qt::Key_Delete);
        QCOMPARE(shown(dialog), QString());
    });
}

void tst_NumpadDialog::digitsOfAnyScriptAreTyped()
{
    enterDouble(5, [](QWidget& dialog) {
        QKeyEvent arabicSeven(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier,
                              QString(QChar(0x667)));
        QApplication::sendEvent(&dialog, &arabicSeven);
        QCOMPARE(shown(dialog), QString("7"));
    });
}

void tst_NumpadDialog::signOfTheStepIsIgnored()
{
    enterInt(3, 0, 10, -2, [](QWidget& dialog) {
        tap(dialog, "keyUp");
        QCOMPARE(shown(dialog), QString("5"));
    });
}

void tst_NumpadDialog::wholeNumbersHaveNoPoint()
{
    const Answer answer = enterInt(3, -10, 10, 2, [](QWidget& dialog) {
        QVERIFY(!dialog.findChild<QWidget*>("keyPoint"));
        QCOMPARE(shown(dialog), QString("3"));
        QTest::keyClicks(&dialog, "1.0");
        QCOMPARE(shown(dialog), QString("10"));
        tapAll(dialog, {"keyDown", "ok"});
    });
    QCOMPARE(answer.number, 8.0);
}

void tst_NumpadDialog::wholeNumberIsReturned()
{
    const int lowest = std::numeric_limits<int>::min();
    const int highest = std::numeric_limits<int>::max();
    const Answer answer = enterInt(0, lowest, highest, 0, [](QWidget& dialog) {
        QTest::keyClicks(&dialog, "-2147483649");
        QCOMPARE(labelled(dialog, "reason"),
                 QString("Below the lowest value allowed, -2147483648"));
        tapAll(dialog, {"keyBackspace", "key8", "keyUp", "ok"});
    });
    QVERIFY(answer.ok);
    QCOMPARE(answer.number, -2147483647.0);
}

void tst_NumpadDialog::wholeStartIsCutIntoAnInt_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<int>("number");
    QTest::newRow("fraction") << -1.9 << -1;
    QTest::newRow("above every int") << 1e300 << std::numeric_limits<int>::max();
    QTest::newRow("below every int") << -1e300 << std::numeric_limits<int>::min();
    QTest::newRow("no number") << kNaN << 0;
}

void tst_NumpadDialog::wholeStartIsCutIntoAnInt()
{
    QFETCH(double, start);
    QFETCH(int, number);
    const auto cancel = [&](QWidget& dialog) {
        QCOMPARE(shown(dialog), QString::number(number));
        tap(dialog, "cancel");
    };
    const Answer answer = enterInt(start, 0, 10, 1, cancel);
    QVERIFY(!answer.ok);
    QCOMPARE(answer.number, double(number));
}

void tst_NumpadDialog::nullOkIsAllowed()
{
    ModalDialog confirmed([](QWidget& dialog) { tapAll(dialog, {"key7", "ok"}); });
    QCOMPARE(NumpadDialog::getDouble(nullptr, "", "", 1, 0, 10, 2, nullptr), 7.0);
    ModalDialog cancelled([](QWidget& dialog) { tapAll(dialog, {"key7", "cancel"}); });
    QCOMPARE(NumpadDialog::getInt(nullptr, "", "", 1, 0, 10, 1, nullptr), 1);
}

void tst_NumpadDialog::parentThatDiesCancels()
{
    auto* const parent = new QWidget;
    bool ok = true;
    ModalDialog modal([&](QWidget&) { delete parent; });
    QCOMPARE(NumpadDialog::getDouble(parent, "", "", 0.5, 0, 1, 2, &ok), 0.5);
    QVERIFY(!ok);
    QCOMPARE(modal.count(), 1);
}

NORVO_TEST(tst_NumpadDialog)
#include "tst_NumpadDialog.moc"
