// SPDX-License-Identifier: GPL-3.0-or-later

#include "NumberEntryKeys.h"
#include "TestMain.h"

#include <QtTest>

class tst_NumberEntry : public QObject
{
    Q_OBJECT

private slots:
    void keysMakeTheText_data();
    void keysMakeTheText();
    void textIsJudged_data();
    void textIsJudged();
    void startIsShownWithAllItsDigits();
    void negativeZeroIsZero();
    void veryLongEntryStopsGrowing();
};

void tst_NumberEntry::keysMakeTheText_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::newRow("startIsShownWithItsDecimals") << 0.5 << 2 << ""
                                                 << "0.50";
    QTest::newRow("startIsRoundedToTheDecimals") << 0.126 << 2 << ""
                                                 << "0.13";
    QTest::newRow("startRoundedToZeroHasNoSign") << -0.001 << 2 << ""
                                                 << "0.00";
    QTest::newRow("wholeStart") << 7.0 << 0 << ""
                                << "7";
    QTest::newRow("hugeStartIsShort") << 1e300 << 2 << ""
                                      << "1e+300";
    QTest::newRow("startOf16DigitsIsShort") << 1e15 << 0 << ""
                                            << "1e+15";
    QTest::newRow("startOf15DigitsIsWhole") << 999999999999999.0 << 0 << ""
                                            << "999999999999999";
    QTest::newRow("notANumberStartsEmpty") << kNaN << 2 << ""
                                           << "";
    QTest::newRow("infinityStartsEmpty") << kInfinity << 2 << ""
                                         << "";
    QTest::newRow("firstDigitReplacesTheStart") << 0.5 << 2 << "7"
                                                << "7";
    QTest::newRow("nextDigitIsAdded") << 0.5 << 2 << "78"
                                      << "78";
    QTest::newRow("firstPointReplacesTheStart") << 0.5 << 2 << ".7"
                                                << "0.7";
    QTest::newRow("backspaceEditsTheStart") << 0.5 << 2 << "<"
                                            << "0.5";
    QTest::newRow("digitAfterBackspaceIsAdded") << 0.5 << 2 << "<7"
                                                << "0.57";
    QTest::newRow("backspaceClearsAHugeStart") << 1e300 << 2 << "<"
                                               << "";
    QTest::newRow("backspaceOnNothing") << 5.0 << 0 << "<<<"
                                        << "";
    QTest::newRow("clearLeavesNothing") << 0.5 << 2 << "c"
                                        << "";
    QTest::newRow("digitsBeyondTheDecimalsAreIgnored") << 0.0 << 2 << "1.2345"
                                                       << "1.23";
    QTest::newRow("secondPointIsIgnored") << 0.0 << 2 << "1.2.3"
                                          << "1.23";
    QTest::newRow("noPointInWholeNumbers") << 0.0 << 0 << "1.2"
                                           << "12";
    QTest::newRow("pointLeavesAWholeStart") << 4.0 << 0 << "."
                                            << "4";
    QTest::newRow("pointAfterMinus") << 4.0 << 1 << "-.5"
                                     << "-0.5";
    QTest::newRow("leadingZeroIsDropped") << 4.0 << 1 << "05"
                                          << "5";
    QTest::newRow("leadingZeroAfterMinusIsDropped") << 4.0 << 1 << "-05"
                                                    << "-5";
    QTest::newRow("signKeyTurnsTheStart") << 5.0 << 0 << "s"
                                          << "-5";
    QTest::newRow("signKeyTwiceTurnsBack") << 5.0 << 0 << "ss"
                                           << "5";
    QTest::newRow("signChosenFirstIsKept") << 5.0 << 0 << "s3"
                                           << "-3";
    QTest::newRow("signChosenBeforeAPointIsKept") << 5.0 << 2 << "s.5"
                                                  << "-0.5";
    QTest::newRow("signOfTheStartIsNotKeptBeforeAPoint") << -5.0 << 2 << ".5"
                                                         << "0.5";
    QTest::newRow("signOfTheStartIsNotKept") << -5.0 << 0 << "3"
                                             << "3";
    QTest::newRow("signTurnedToPlusIsKept") << -5.0 << 0 << "s3"
                                            << "3";
    QTest::newRow("signChosenBeforeAStepIsNotKept") << 5.0 << 0 << "sd3"
                                                    << "3";
    QTest::newRow("minusBeginsANewNumber") << -5.0 << 0 << "-3"
                                           << "-3";
    QTest::newRow("minusLaterTurnsTheSign") << 5.0 << 0 << "3-"
                                            << "-3";
    QTest::newRow("negativeDecimalsCountAsNone") << 1.0 << -3 << ".2"
                                                 << "2";
    QTest::newRow("decimalsAreBounded") << 0.1 << 400 << ""
                                        << "0.100000000000000";
}

void tst_NumberEntry::keysMakeTheText()
{
    QFETCH(double, start);
    QFETCH(int, decimals);
    QFETCH(QString, keys);
    NumberEntry entry(limits(start, -100, 100, 1, decimals));
    press(entry, keys);
    QTEST(entry.text(), "text");
}

void tst_NumberEntry::textIsJudged_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("expected");
    QTest::newRow("inTheRange") << 0.0 << 10.0 << "5"
                                << "";
    QTest::newRow("lowestIsInTheRange") << 5.0 << 10.0 << "5"
                                        << "";
    QTest::newRow("highestIsInTheRange") << 0.0 << 5.0 << "5"
                                         << "";
    QTest::newRow("tooLow") << 0.5 << 10.0 << "0.4"
                            << "Below the lowest value allowed, 0.5";
    QTest::newRow("tooHigh") << 0.0 << 10.0 << "11"
                             << "Above the highest value allowed, 10";
    QTest::newRow("empty") << 0.0 << 10.0 << "c"
                           << "Enter a number";
    QTest::newRow("loneMinus") << 0.0 << 10.0 << "-"
                               << "This is not a number";
    QTest::newRow("pointAtTheEnd") << 0.0 << 10.0 << "5."
                                   << "";
    QTest::newRow("endsTheWrongWayRoundAreSwapped") << 10.0 << 0.0 << "5"
                                                    << "";
    QTest::newRow("beyondSwappedEnds") << 10.0 << 0.0 << "11"
                                       << "Above the highest value allowed, 10";
    QTest::newRow("notANumberDoesNotBoundBelow") << kNaN << 10.0 << "-999"
                                                 << "";
    QTest::newRow("notANumberDoesNotBoundAbove") << 0.0 << kNaN << "999"
                                                 << "";
    QTest::newRow("infiniteEnds") << -kInfinity << kInfinity << "-999"
                                  << "";
    QTest::newRow("equalEnds") << 3.0 << 3.0 << "4"
                               << "Above the highest value allowed, 3";
}

void tst_NumberEntry::textIsJudged()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(QString, keys);
    QFETCH(QString, expected);
    NumberEntry entry(limits(1, min, max, 1, 2));
    press(entry, keys);
    QCOMPARE(entry.error(), expected);
    QCOMPARE(entry.isAcceptable(), expected.isEmpty());
}

void tst_NumberEntry::startIsShownWithAllItsDigits()
{
    QCOMPARE(NumberEntry(limits(0.123457, 0, 1, 1, 2)).startText(), QString("0.123457"));
    QCOMPARE(NumberEntry(limits(0.12345678901234, 0, 1, 1, 2)).startText(),
             QString("0.12345678901234"));
    QCOMPARE(NumberEntry(limits(kNaN, 0, 1, 1, 2)).startText(), QString(QChar(0x2014)));
}

void tst_NumberEntry::negativeZeroIsZero()
{
    NumberEntry entry(limits(1, -1, 1, 1, 2));
    press(entry, "-0");
    QCOMPARE(entry.text(), QString("-0"));
    QVERIFY(entry.value());
    QVERIFY(!std::signbit(*entry.value()));
}

void tst_NumberEntry::veryLongEntryStopsGrowing()
{
    NumberEntry entry(limits(1, -1, 1, 1, 0));
    press(entry, QString(500, '9'));
    QCOMPARE(entry.text(), QString(40, '9'));
    QCOMPARE(entry.error(), QString("Above the highest value allowed, 1"));
    press(entry, "<");
    QCOMPARE(entry.text(), QString(39, '9'));
}

NORVO_GUILESS_TEST(tst_NumberEntry)
#include "tst_NumberEntry.moc"
