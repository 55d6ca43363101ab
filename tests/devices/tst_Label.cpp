// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "MessageLog.h"
#include "Recorder.h"

#include "devices/Label.h"
#include "TestMain.h"

#include <QtTest>

#include <limits>

namespace {

QString quoted(const QString& text)
{
    return "output(\"" + text + "\")";
}

} // namespace

class tst_Label : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();

    void initialiseTakesTheTextAsDescription();
    void initialTextIsEmitted_data();
    void initialTextIsEmitted();
    void numberIsWrittenIntoTheTemplate_data();
    void numberIsWrittenIntoTheTemplate();
    void notANumberIsAHyphenAndLeavesTheTemplate();
    void textReplacesTheTemplateForGood();
    void numberWithoutPlaceholderEmitsTheTextUnchanged();
    void numberIsWrittenIntoTheTemplateOfANewStart();
    void warningIsPassedOn();
    void inputsDoNotNeedTheRunningFlag();
};

void tst_Label::declaresItsParameters()
{
    Label label;
    QCOMPARE(parameterTable(label),
             QStringList({"Value = ", "widget/fontSize = 15", "widget/precision = 0",
                          "widget/alignment = center [center, right, left]"}));
}

void tst_Label::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(Label::staticMetaObject),
             QStringList({"signal outputWarning(bool)", "signal output(QString)",
                          "slot inputWarning(bool)", "slot input(QString)", "slot input(double)"}));
}

void tst_Label::initialiseTakesTheTextAsDescription()
{
    Label label;
    Recorder recorder(&label);
    label.setParam("Value", "Pump");
    QVERIFY(label.initialise());
    QCOMPARE(label.description(), QString("Pump"));
    QCOMPARE(label.getValue(), QString("Pump"));
    QCOMPARE(recorder.take(), QStringList());
}

void tst_Label::initialTextIsEmitted_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("emitted");
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("plain text") << "Pump"
                                << "Pump";
    QTest::newRow("%0 is an em dash") << "%0" << QString(QChar(0x2014));
    QTest::newRow("%1 stays visible") << "T = %1 C"
                                      << "T = %1 C";
    QTest::newRow("only the lowest placeholder") << "%0 of %1" << QString(QChar(0x2014)) + " of %1";
    QTest::newRow("two-digit placeholder") << "%05" << QString(QChar(0x2014));
    QTest::newRow("every lowest placeholder")
        << "%0|%0" << QString(QChar(0x2014)) + "|" + QChar(0x2014);
}

void tst_Label::initialTextIsEmitted()
{
    QFETCH(QString, value);
    QFETCH(QString, emitted);
    Label label;
    label.setParam("Value", value);
    QVERIFY(label.initialise());
    Recorder recorder(&label);
    label.postInitialisation();
    QCOMPARE(recorder.take(), QStringList(quoted(emitted)));
    QCOMPARE(label.getValue(), value);
}

void tst_Label::numberIsWrittenIntoTheTemplate_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("precision");
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("emitted");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("precision 2") << "T = %1 C"
                                 << "2" << 3.14159 << "T = 3.14 C";
    QTest::newRow("precision 0 into %0") << "%0"
                                         << "0" << 5.0 << "5";
    QTest::newRow("trailing zeros stay") << "%1"
                                         << "3" << 1.5 << "1.500";
    QTest::newRow("fixed notation, no groups") << "%1"
                                               << "1" << 1234567.0 << "1234567.0";
    QTest::newRow("lowest placeholder first") << "%2 %1"
                                              << "0" << 7.0 << "%2 7";
    QTest::newRow("infinity") << "%1"
                              << "0" << infinity << "inf";
    QTest::newRow("minus infinity") << "%1"
                                    << "0" << -infinity << "-inf";
    QTest::newRow("precision that is no number") << "%1"
                                                 << "many" << 2.4 << "2";
    QTest::newRow("as many decimals as a double can have")
        << "%1"
        << "1074" << 0.5 << QString("0.5").leftJustified(2 + 1074, '0');
    QTest::newRow("no more decimals than a double can have")
        << "%1"
        << "2000" << 0.5 << QString("0.5").leftJustified(2 + 1074, '0');
    QTest::newRow("any number of decimals")
        << "%1"
        << "99999999999" << 0.5 << QString("0.5").leftJustified(2 + 1074, '0');
    QTest::newRow("negative precision is six") << "%1"
                                               << "-1" << 0.5 << "0.500000";
}

void tst_Label::numberIsWrittenIntoTheTemplate()
{
    QFETCH(QString, value);
    QFETCH(QString, precision);
    QFETCH(double, number);
    QFETCH(QString, emitted);
    Label label;
    label.setParam("Value", value);
    label.setParam("widget/precision", precision);
    QVERIFY(label.initialise());
    Recorder recorder(&label);
    label.input(number);
    label.input(number);
    QCOMPARE(recorder.take(), QStringList({quoted(emitted), quoted(emitted)}));
    QCOMPARE(label.getValue(), value);
    QCOMPARE(label.description(), value);
}

void tst_Label::notANumberIsAHyphenAndLeavesTheTemplate()
{
    Label label;
    label.setParam("Value", "%1 V");
    QVERIFY(label.initialise());
    Recorder recorder(&label);
    label.input(std::numeric_limits<double>::quiet_NaN());
    label.input(4.0);
    QCOMPARE(recorder.take(), QStringList({quoted("-"), quoted("4 V")}));
}

void tst_Label::textReplacesTheTemplateForGood()
{
    Label label;
    label.setParam("Value", "%1 V");
    QVERIFY(label.initialise());
    Recorder recorder(&label);
    label.input(QString("now %1 A"));
    label.input(4.0);
    QCOMPARE(recorder.take(), QStringList({quoted("now %1 A"), quoted("now 4 A")}));
    QCOMPARE(label.description(), QString("now %1 A"));
    QCOMPARE(label.getValue(), QString("now %1 A"));
}

void tst_Label::numberWithoutPlaceholderEmitsTheTextUnchanged()
{
    Label label;
    label.setParam("Value", "%1 V");
    QVERIFY(label.initialise());
    Recorder recorder(&label);
    label.input(QString("abc"));
    MessageLog log;
    label.input(1.0);
    QCOMPARE(recorder.take(), QStringList({quoted("abc"), quoted("abc")}));
    QCOMPARE(log.take(), QStringList("warning: QString::arg: Argument missing: abc, 1"));
    for (int i = 0; i < 10; ++i) { // once for each text is enough
        label.input(2.0);
    }
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(recorder.take(), QStringList(QVector<QString>(10, quoted("abc")).toList()));

    label.input(QString("def"));
    label.input(3.0);
    QCOMPARE(log.take(), QStringList("warning: QString::arg: Argument missing: def, 3"));
    label.input(QString("%1"));
    recorder.take();
    label.input(4.0);
    QCOMPARE(recorder.take(), QStringList(quoted("4")));
}

void tst_Label::warningIsPassedOn()
{
    Label label;
    QVERIFY(label.initialise());
    Recorder recorder(&label);
    label.inputWarning(true);
    label.inputWarning(true);
    label.inputWarning(false);
    QCOMPARE(recorder.take(),
             QStringList({"outputWarning(true)", "outputWarning(true)", "outputWarning(false)"}));
}

void tst_Label::inputsDoNotNeedTheRunningFlag()
{
    Label label;
    label.setParam("Value", "%1");
    QVERIFY(label.initialise());
    QVERIFY(!label.isRunning());
    Recorder recorder(&label);
    label.input(1.0);
    label.input(QString("text"));
    QCOMPARE(recorder.take(), QStringList({quoted("1"), quoted("text")}));
}

void tst_Label::numberIsWrittenIntoTheTemplateOfANewStart()
{
    Label label;
    label.setParam("Value", "no placeholder");
    QVERIFY(label.initialise());
    MessageLog log; // Qt's warning of the missing placeholder
    label.input(1.0);
    label.setParam("Value", "%1 bar");
    QVERIFY(label.initialise());
    Recorder recorder(&label);
    label.input(2.0);
    QCOMPARE(recorder.take(), QStringList(quoted("2 bar")));
}

NORVO_GUILESS_TEST(tst_Label)
#include "tst_Label.moc"
