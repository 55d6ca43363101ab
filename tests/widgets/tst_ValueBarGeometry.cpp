// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ValueBarGeometry.h"
#include "TestMain.h"

#include <QtTest>

using namespace norvo::valuebar;

class tst_ValueBarGeometry : public QObject
{
    Q_OBJECT

private slots:
    void panelIsInsetByFive();
    void scaleLiesAtThePanelsBottom_data();
    void scaleLiesAtThePanelsBottom();
    void pointerIsABlockWithAPointDownward();
    void pointerFollowsTheValue_data();
    void pointerFollowsTheValue();
    void pointerGoesRightAlsoBetweenSwappedEnds();
};

void tst_ValueBarGeometry::panelIsInsetByFive()
{
    QCOMPARE(panel({400, 120}), QRect(QPoint(5, 5), QPoint(394, 114)));
    QVERIFY(panel({10, 120}).isEmpty());
}

void tst_ValueBarGeometry::scaleLiesAtThePanelsBottom_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("share");
    QTest::addColumn<QRect>("region");

    // Top: (1 - share) x (h - 10) + 5, cut; height: share x (h - 10), cut.
    QTest::newRow("default at 400 x 120")
        << QSize(400, 120) << 0.55 << QRect(QPoint(5, 54), QPoint(394, 113));
    QTest::newRow("half at 200 x 70")
        << QSize(200, 70) << 0.5 << QRect(QPoint(5, 35), QPoint(194, 64));
    QTest::newRow("a quarter at 101 x 51")
        << QSize(101, 51) << 0.25 << QRect(QPoint(5, 35), QPoint(95, 44));
    QTest::newRow("all") << QSize(100, 50) << 1.0 << QRect(QPoint(5, 5), QPoint(94, 44));
    QTest::newRow("none is empty") << QSize(100, 50) << 0.0 << QRect(QPoint(5, 45), QPoint(94, 44));
}

void tst_ValueBarGeometry::scaleLiesAtThePanelsBottom()
{
    QFETCH(QSize, size);
    QFETCH(double, share);

    QTEST(scaleRegion(size, share), "region");
}

void tst_ValueBarGeometry::pointerIsABlockWithAPointDownward()
{
    // Panel 110 high: 0.45 of it is 49.5, cut 49, half of it 24; the centre 0.3 x 110 + 5 = 38.
    QCOMPARE(
        pointer({400, 120}, 0.45, 25.0, 125.0, 0.5),
        QPolygon({QPoint(65, 14), QPoint(85, 14), QPoint(85, 38), QPoint(75, 62), QPoint(65, 38)}));
}

void tst_ValueBarGeometry::pointerFollowsTheValue_data()
{
    QTest::addColumn<double>("normalised");
    QTest::addColumn<int>("x");

    QTest::newRow("start") << 0.0 << 25;
    QTest::newRow("end") << 1.0 << 125;
    QTest::newRow("cut toward zero") << 0.507 << 75;
    QTest::newRow("below the scale") << -0.5 << -25;
    QTest::newRow("above the scale") << 2.0 << 225;
    QTest::newRow("far beyond any screen") << 1e300 << 1000000;
}

void tst_ValueBarGeometry::pointerFollowsTheValue()
{
    QFETCH(double, normalised);

    QTEST(pointer({400, 120}, 0.45, 25.0, 125.0, normalised)[3].x(), "x");
}

void tst_ValueBarGeometry::pointerGoesRightAlsoBetweenSwappedEnds()
{
    QCOMPARE(pointer({400, 120}, 0.45, 125.0, 25.0, 0.5)[3].x(), 175);
}

NORVO_APPLESS_TEST(tst_ValueBarGeometry)
#include "tst_ValueBarGeometry.moc"
