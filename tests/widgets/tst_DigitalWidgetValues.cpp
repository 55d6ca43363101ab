// SPDX-License-Identifier: GPL-3.0-or-later

#include "DigitalReadout.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>

class tst_DigitalWidgetValues : public QObject
{
    Q_OBJECT

private slots:
    void bandIncludesBothEdges_data();
    void bandIncludesBothEdges();
    void noValueIsWithinSwappedThresholds();
    void valueIsShownWithItsPrecision_data();
    void valueIsShownWithItsPrecision();
    void timeoutGreysAndAValueRevives();
    void withoutTimeoutTheColourStays();
};

void tst_DigitalWidgetValues::bandIncludesBothEdges_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("look");
    QTest::addColumn<QColor>("colour");
    const QColor green(0, 128, 0);
    const QColor red(255, 0, 0);
    QTest::newRow("inside") << 15.0 << ReadoutLooks::kGreen << green;
    QTest::newRow("on the lower edge") << 10.0 << ReadoutLooks::kGreen << green;
    QTest::newRow("on the upper edge") << 20.0 << ReadoutLooks::kGreen << green;
    QTest::newRow("just below") << std::nextafter(10.0, 0.0) << ReadoutLooks::kRed << red;
    QTest::newRow("just above") << std::nextafter(20.0, 30.0) << ReadoutLooks::kRed << red;
    QTest::newRow("not a number is green") << qQNaN() << ReadoutLooks::kGreen << green;
    QTest::newRow("infinity") << qInf() << ReadoutLooks::kRed << red;
    QTest::newRow("minus infinity") << -qInf() << ReadoutLooks::kRed << red;
}

void tst_DigitalWidgetValues::bandIncludesBothEdges()
{
    QFETCH(double, value);
    DigitalReadout readout({{"widget/minThreshold", "10"}, {"widget/maxThreshold", "20"}});
    readout.widget->resize(400, 200);
    readout.widget->show();
    QCOMPARE(readout.background(), QColor(128, 128, 128));
    readout.device.input(value);
    QTEST(readout.value()->styleSheet(), "look");
    QTEST(readout.background(), "colour");
    QVERIFY(readout.caption()->isEnabled());
}

void tst_DigitalWidgetValues::valueIsShownWithItsPrecision_data()
{
    QTest::addColumn<QString>("precision");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("none has no point") << "0" << 12.3 << "12";
    QTest::newRow("three") << "3" << -0.5 << "-0.500";
    QTest::newRow("no exponent") << "1" << 1e9 << "1000000000.0";
    QTest::newRow("not a number") << "1" << qQNaN() << "nan";
    QTest::newRow("infinity") << "1" << -qInf() << "-inf";
}

void tst_DigitalWidgetValues::valueIsShownWithItsPrecision()
{
    QFETCH(QString, precision);
    QFETCH(double, value);
    DigitalReadout readout({{"widget/precision", precision}});
    readout.device.input(value);
    QTEST(readout.value()->text(), "text");
}

void tst_DigitalWidgetValues::timeoutGreysAndAValueRevives()
{
    DigitalReadout readout({{"timeout", "20"}});
    readout.device.input(500.0);
    QCOMPARE(readout.value()->styleSheet(), ReadoutLooks::kRed);
    QVERIFY(readout.caption()->isEnabled());
    QTRY_COMPARE(readout.value()->styleSheet(), ReadoutLooks::kGray);
    QVERIFY(!readout.caption()->isEnabled());
    QCOMPARE(readout.value()->text(), QString("500"));
    readout.device.input(QString("50"));
    QCOMPARE(readout.value()->styleSheet(), ReadoutLooks::kGreen);
    QVERIFY(readout.caption()->isEnabled());
    QCOMPARE(readout.value()->text(), QString("50"));
}

void tst_DigitalWidgetValues::withoutTimeoutTheColourStays()
{
    DigitalReadout readout({{"timeout", "-1"}});
    DigitalReadout clock({{"timeout", "20"}});
    readout.device.input(50.0);
    clock.device.input(50.0);
    QTRY_COMPARE(clock.value()->styleSheet(), ReadoutLooks::kGray);
    QCOMPARE(readout.value()->styleSheet(), ReadoutLooks::kGreen);
}

void tst_DigitalWidgetValues::noValueIsWithinSwappedThresholds()
{
    DigitalReadout readout({{"widget/minThreshold", "20"}, {"widget/maxThreshold", "10"}});
    for (const double value : {5.0, 10.0, 15.0, 20.0, 25.0}) {
        readout.device.input(value);
        QCOMPARE(readout.value()->styleSheet(), ReadoutLooks::kRed);
    }
}

NORVO_TEST(tst_DigitalWidgetValues)
#include "tst_DigitalWidgetValues.moc"
