// SPDX-License-Identifier: GPL-3.0-or-later

#include "NumberEntryKeys.h"
#include "TestMain.h"

#include <QtTest>

class tst_NumberEntrySteps : public QObject
{
    Q_OBJECT

private slots:
    void stepsStayInTheRange_data();
    void stepsStayInTheRange();
    void rangeIsShown_data();
    void rangeIsShown();
};

void tst_NumberEntrySteps::stepsStayInTheRange_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::newRow("up") << 0.1 << 0.0 << 1.0 << 0.2 << 2 << "u"
                        << "0.30";
    QTest::newRow("down") << 0.3 << 0.0 << 1.0 << 0.1 << 2 << "dd"
                          << "0.10";
    QTest::newRow("downToZeroWithoutASign") << 0.3 << -1.0 << 1.0 << 0.1 << 2 << "ddd"
                                            << "0.00";
    QTest::newRow("notAboveTheHighest") << 0.9 << 0.0 << 1.0 << 0.4 << 1 << "uu"
                                        << "1.0";
    QTest::newRow("notBelowTheLowest") << 0.3 << 0.0 << 1.0 << 0.4 << 1 << "d"
                                       << "0.0";
    QTest::newRow("fromOutsideToTheNearestEnd") << 500.0 << 0.0 << 1.0 << 0.1 << 1 << "u"
                                                << "1.0";
    QTest::newRow("digitAfterAStepReplaces") << 3.0 << 0.0 << 9.0 << 1.0 << 0 << "u2"
                                             << "2";
    QTest::newRow("fromNothingBeginsAtTheStart") << 3.0 << 0.0 << 9.0 << 1.0 << 0 << "cu"
                                                 << "4";
    QTest::newRow("fromNotANumberBeginsAtZero") << kNaN << 0.0 << 9.0 << 1.0 << 0 << "u"
                                                << "1";
    QTest::newRow("zeroStepIsOneUnit") << 3.0 << 0.0 << 9.0 << 0.0 << 0 << "u"
                                       << "4";
    QTest::newRow("zeroStepIsOneUnitOfTheDecimals") << 3.0 << 0.0 << 9.0 << 0.0 << 2 << "u"
                                                    << "3.01";
    QTest::newRow("tinyStepIsOneUnit") << 3.0 << 0.0 << 9.0 << 1e-9 << 1 << "u"
                                       << "3.1";
    QTest::newRow("negativeDecimalsAreNone") << 3.0 << 0.0 << 9.0 << 0.0 << -3 << "u"
                                             << "4";
    QTest::newRow("negativeStepLosesItsSign") << 3.0 << 0.0 << 9.0 << -2.0 << 0 << "u"
                                              << "5";
    QTest::newRow("notANumberStepIsOneUnit") << 3.0 << 0.0 << 9.0 << kNaN << 0 << "u"
                                             << "4";
    QTest::newRow("infiniteStepIsOneUnit") << 3.0 << 0.0 << 9.0 << kInfinity << 0 << "d"
                                           << "2";
    QTest::newRow("roundingStaysAboveTheLowest") << 0.5 << 0.004 << 1.0 << 1.0 << 2 << "d"
                                                 << "0.01";
    QTest::newRow("roundingStaysBelowTheHighest") << 0.5 << 0.0 << 0.996 << 1.0 << 2 << "u"
                                                  << "0.99";
    QTest::newRow("withoutEnds") << 3.0 << kNaN << kNaN << 5.0 << 0 << "dd"
                                 << "-7";
    QTest::newRow("hugeRange") << 0.0 << -1e308 << 1e308 << 1e308 << 0 << "uuu"
                               << "1e+308";
}

void tst_NumberEntrySteps::stepsStayInTheRange()
{
    QFETCH(double, start);
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, step);
    QFETCH(int, decimals);
    QFETCH(QString, keys);
    NumberEntry entry(limits(start, min, max, step, decimals));
    press(entry, keys);
    QTEST(entry.text(), "text");
    QVERIFY2(entry.isAcceptable(), qPrintable(entry.error()));
}

void tst_NumberEntrySteps::rangeIsShown_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QString>("text");
    QTest::newRow("bothEnds") << -0.5 << 10.0 << "-0.5 to 10";
    QTest::newRow("allOfInt") << -2147483648.0 << 2147483647.0 << "-2147483648 to 2147483647";
    QTest::newRow("noLowerEnd") << kNaN << 10.0 << "at most 10";
    QTest::newRow("noUpperEnd") << 0.0 << kInfinity << "at least 0";
    QTest::newRow("noEnds") << std::numeric_limits<double>::lowest()
                            << std::numeric_limits<double>::max() << "any number";
}

void tst_NumberEntrySteps::rangeIsShown()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QTEST(NumberEntry(limits(1, min, max, 1, 2)).rangeText(), "text");
}

NORVO_GUILESS_TEST(tst_NumberEntrySteps)
#include "tst_NumberEntrySteps.moc"
