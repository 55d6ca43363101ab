// SPDX-License-Identifier: GPL-3.0-or-later

#include "ProgressReadout.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>

class tst_DigitalWithProgressValues : public QObject
{
    Q_OBJECT

private slots:
    void barStartsWhereZeroLies_data();
    void barStartsWhereZeroLies();
    void barFollowsTheValue_data();
    void barFollowsTheValue();
    void bandIncludesBothEdges_data();
    void bandIncludesBothEdges();
    void rangeOfTheThresholdsByDefault();
    void timeoutGreysAndAValueRevives();
};

void tst_DigitalWithProgressValues::barStartsWhereZeroLies_data()
{
    QTest::addColumn<QString>("minValue");
    QTest::addColumn<QString>("maxValue");
    QTest::addColumn<int>("step");
    constexpr int untouched = -1; // what a bar holds that was given a value outside its range
    QTest::newRow("at the empty end") << "0"
                                      << "100" << 0;
    QTest::newRow("at the full end") << "-100"
                                     << "0" << 1000;
    QTest::newRow("between") << "-50"
                             << "150" << 250;
    QTest::newRow("cut, not rounded") << "-2"
                                      << "1" << 666;
    QTest::newRow("cut toward zero from below") << "0.0005"
                                                << "1" << 0;
    QTest::newRow("below") << "10"
                           << "20" << untouched;
    QTest::newRow("above") << "-20"
                           << "-10" << untouched;
    QTest::newRow("far below") << "1e300"
                               << "1.0000001e300" << untouched;
    QTest::newRow("equal ends") << "5"
                                << "5" << untouched;
    QTest::newRow("equal negative ends") << "-5"
                                         << "-5" << untouched;
    QTest::newRow("both ends zero") << "0"
                                    << "0" << untouched;
    QTest::newRow("not a number") << "nan"
                                  << "5" << untouched;
}

void tst_DigitalWithProgressValues::barStartsWhereZeroLies()
{
    QFETCH(QString, minValue);
    QFETCH(QString, maxValue);
    ProgressReadout readout({{"minValue", minValue}, {"maxValue", maxValue}});
    QTEST(readout.bar()->value(), "step");
}

void tst_DigitalWithProgressValues::barFollowsTheValue_data()
{
    QTest::addColumn<QString>("minValue");
    QTest::addColumn<QString>("maxValue");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("step");
    QTest::newRow("empty end") << "10"
                               << "30" << 10.0 << 0;
    QTest::newRow("full end") << "10"
                              << "30" << 30.0 << 1000;
    QTest::newRow("middle") << "10"
                            << "30" << 20.0 << 500;
    QTest::newRow("cut, not rounded") << "0"
                                      << "3" << 2.0 << 666;
    QTest::newRow("below empties") << "10"
                                   << "30" << -5.0 << 0;
    QTest::newRow("above fills") << "10"
                                 << "30" << 31.0 << 1000;
    QTest::newRow("infinity fills") << "10"
                                    << "30" << qInf() << 1000;
    QTest::newRow("minus infinity empties") << "10"
                                            << "30" << -qInf() << 0;
    QTest::newRow("not a number empties") << "10"
                                          << "30" << qQNaN() << 0;
    QTest::newRow("equal ends, above") << "5"
                                       << "5" << 6.0 << 1000;
    QTest::newRow("equal ends, below") << "5"
                                       << "5" << 4.0 << 0;
    QTest::newRow("equal ends, on them") << "5"
                                         << "5" << 5.0 << 0;
    QTest::newRow("ends the other way round") << "30"
                                              << "10" << 15.0 << 750;
    QTest::newRow("tiny range, huge value") << "0"
                                            << "1e-300" << 1e300 << 1000;
}

void tst_DigitalWithProgressValues::barFollowsTheValue()
{
    QFETCH(QString, minValue);
    QFETCH(QString, maxValue);
    QFETCH(double, value);
    ProgressReadout readout({{"minValue", minValue}, {"maxValue", maxValue}});
    readout.device.input(value);
    QTEST(readout.bar()->value(), "step");
}

void tst_DigitalWithProgressValues::bandIncludesBothEdges_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("green");
    QTest::newRow("inside") << 15.0 << true;
    QTest::newRow("on the lower edge") << 10.0 << true;
    QTest::newRow("on the upper edge") << 20.0 << true;
    QTest::newRow("just below") << std::nextafter(10.0, 0.0) << false;
    QTest::newRow("just above") << std::nextafter(20.0, 30.0) << false;
    QTest::newRow("not a number is green") << qQNaN() << true;
}

void tst_DigitalWithProgressValues::bandIncludesBothEdges()
{
    QFETCH(double, value);
    QFETCH(bool, green);
    ProgressReadout readout({{"minThreshold", "10"},
                             {"maxThreshold", "20"},
                             {"minValue", "0"},
                             {"maxValue", "30"},
                             {"precision", "1"}});
    readout.widget->resize(300, 200);
    readout.widget->show();
    QCOMPARE(readout.valueBackground(), QColor(128, 128, 128));
    readout.device.input(value);
    QCOMPARE(readout.value()->text(), QString::number(value, 'f', 1));
    QCOMPARE(readout.value()->styleSheet(), green ? ReadoutLooks::kGreen : ReadoutLooks::kRed);
    QCOMPARE(readout.bar()->styleSheet(), green ? ReadoutLooks::kGreenBar : ReadoutLooks::kRedBar);
    QCOMPARE(readout.valueBackground(), green ? QColor(0, 128, 0) : QColor(255, 0, 0));
    if (!qIsNaN(value)) {
        QCOMPARE(readout.barChunk(), green ? QColor(0, 128, 0) : QColor(255, 0, 0));
    }
    for (const QWidget* part : QList<QWidget*>{readout.caption(), readout.bar(), readout.minLabel(),
                                               readout.maxLabel()}) {
        QVERIFY(part->isEnabled());
    }
}

void tst_DigitalWithProgressValues::rangeOfTheThresholdsByDefault()
{
    ProgressReadout readout({{"minThreshold", "20"}, {"maxThreshold", "60"}});
    QCOMPARE(readout.minLabel()->text(), QString("20"));
    QCOMPARE(readout.maxLabel()->text(), QString("60"));
    readout.device.input(30.0);
    QCOMPARE(readout.bar()->value(), 250);
}

void tst_DigitalWithProgressValues::timeoutGreysAndAValueRevives()
{
    ProgressReadout readout({{"timeout", "20"}});
    readout.device.input(500.0);
    QTRY_COMPARE(readout.value()->styleSheet(), ReadoutLooks::kGray);
    QCOMPARE(readout.bar()->styleSheet(), ReadoutLooks::kGrayBar);
    QCOMPARE(readout.bar()->value(), 1000);
    QVERIFY(!readout.bar()->isEnabled());
    QVERIFY(!readout.caption()->isEnabled());
    QVERIFY(!readout.minLabel()->isEnabled());
    readout.device.input(QString("50"));
    QCOMPARE(readout.value()->styleSheet(), ReadoutLooks::kGreen);
    QCOMPARE(readout.bar()->styleSheet(), ReadoutLooks::kGreenBar);
    QVERIFY(readout.bar()->isEnabled());
}

NORVO_TEST(tst_DigitalWithProgressValues)
#include "tst_DigitalWithProgressValues.moc"
