// SPDX-License-Identifier: GPL-3.0-or-later

#include "GraphParts.h"
#include "TestMain.h"

#include <QtTest>

#include <ctime>

/// Where a curve breaks and what leaves the window. Times are given, so that nothing waits.
class tst_GraphOutputWidgetSegments : public QObject
{
    Q_OBJECT

private slots:
    void gapLongerThanTheTimeoutBreaksTheCurve();
    void pauseAsLongAsTheTimeoutDoesNot();
    void newSegmentTakesPenAndNameButNoFill();
    void legendKeepsOneEntryForEachSender();
    void pauseOfManySendersLeavesTheOtherRowsAlone();
    void settingsReachTheLastSegmentOnly();
    void pointsLeaveTheWindow();
    void segmentThatLeftTheWindowIsRemoved();
    void segmentsOfOtherSendersStay();
    void emptySegmentIsUsedAndNotRemoved();
    void segmentAboutToBeAppendedToIsNeverRemoved();
    void pointsOutOfOrderAreSortedIn();
    void strangePeriodsAndTimeouts_data();
    void strangePeriodsAndTimeouts();
};

void tst_GraphOutputWidgetSegments::gapLongerThanTheTimeoutBreaksTheCurve()
{
    TimeGraph stand({{"widget/timeout", "2"}});
    stand.input(1, "A", 100);
    stand.input(2, "A", 102.001);
    QCOMPARE(stand.curves(), QString("A: (100, 1) | A: (102.001, 2)"));
    stand.input(3, "A", 103);
    QCOMPARE(stand.curves(), QString("A: (100, 1) | A: (102.001, 2) (103, 3)"));
}

void tst_GraphOutputWidgetSegments::pauseAsLongAsTheTimeoutDoesNot()
{
    TimeGraph stand({{"widget/timeout", "2"}});
    stand.input(1, "A", 100);
    stand.input(2, "A", 102);
    QCOMPARE(stand.curves(), QString("A: (100, 1) (102, 2)"));
}

void tst_GraphOutputWidgetSegments::newSegmentTakesPenAndNameButNoFill()
{
    TimeGraph stand;
    stand.input(1, "A", 100);
    stand.graph().inputColor("A", "blue");
    stand.graph().inputName("A", "Pump");
    stand.graph().inputFill("A", true);
    stand.input(2, "A", 105);
    QCOMPARE(stand.plot()->graphCount(), 2);
    QCOMPARE(stand.curve(1)->pen(), stand.curve(0)->pen());
    QCOMPARE(stand.curve(1)->name(), QString("Pump"));
    QCOMPARE(stand.curve(1)->brush().style(), Qt::NoBrush);
    QCOMPARE(stand.curve(0)->brush(), QBrush(QColor(0, 0, 255, 128)));
    stand.graph().inputFill("A", true);
    QCOMPARE(stand.curve(1)->brush(), QBrush(QColor(0, 0, 255, 128)));
}

void tst_GraphOutputWidgetSegments::legendKeepsOneEntryForEachSender()
{
    TimeGraph stand;
    stand.input(1, "A", 100);
    stand.input(1, "B", 100);
    stand.input(2, "A", 103);
    QCOMPARE(stand.legend(), QStringList({"B", "A"}));
    QVERIFY(stand.plot()->legend->hasItemWithPlottable(stand.curve(2)));
    stand.input(3, "A", 106);
    stand.input(4, "A", 115);
    QCOMPARE(stand.legend(), QStringList({"B", "A"}));
}

void tst_GraphOutputWidgetSegments::pauseOfManySendersLeavesTheOtherRowsAlone()
{
    const auto processorTime = [](int senders) {
        TimeGraph stand;
        for (const double time : {100, 103}) {
            for (int i = 0; i < senders; ++i) {
                stand.input(i, QString::number(i), time);
            }
        }
        const std::clock_t start = std::clock();
        for (int i = 0; i < senders; ++i) {
            stand.input(i, QString::number(i), 106);
        }
        return double(std::clock() - start);
    };
    constexpr int times = 4;
    const double few = processorTime(400);
    const double many = processorTime(400 * times);
    QVERIFY2(many < 8 * times * few, qPrintable(QString::number(many / few)));
}

void tst_GraphOutputWidgetSegments::settingsReachTheLastSegmentOnly()
{
    TimeGraph stand;
    stand.input(1, "A", 100);
    stand.input(2, "A", 103);
    stand.graph().inputColor("A", "blue");
    stand.graph().inputName("A", "Pump");
    stand.graph().inputFill("A", true);
    QCOMPARE(stand.curve(0)->pen().color(), QColor(250, 140, 0));
    QCOMPARE(stand.curve(0)->name(), QString("A"));
    QCOMPARE(stand.curve(0)->brush().style(), Qt::NoBrush);
    QCOMPARE(stand.curve(1)->pen().color(), QColor(Qt::blue));
    QCOMPARE(stand.curve(1)->name(), QString("Pump"));
}

void tst_GraphOutputWidgetSegments::pointsLeaveTheWindow()
{
    TimeGraph stand({{"widget/timePeriod", "3"}});
    for (int t = 100; t <= 105; ++t) {
        stand.input(t - 100, "A", t);
    }
    QCOMPARE(stand.curves(), QString("A: (102, 2) (103, 3) (104, 4) (105, 5)"));
}

void tst_GraphOutputWidgetSegments::segmentThatLeftTheWindowIsRemoved()
{
    TimeGraph stand({{"widget/timePeriod", "5"}});
    stand.input(1, "A", 100);
    stand.input(2, "A", 102);
    stand.input(3, "A", 105);
    QCOMPARE(stand.curves(), QString("A: (100, 1) | A: (102, 2) | A: (105, 3)"));
    stand.input(4, "A", 105.5);
    QCOMPARE(stand.curves(), QString("A: (102, 2) | A: (105, 3) (105.5, 4)"));
    stand.input(5, "A", 110);
    QCOMPARE(stand.curves(), QString("A: (105, 3) (105.5, 4) | A: (110, 5)"));
    stand.input(6, "A", 200);
    QCOMPARE(stand.curves(), QString("A: (200, 6)"));
    QCOMPARE(stand.legend(), QStringList("A"));
}

void tst_GraphOutputWidgetSegments::segmentsOfOtherSendersStay()
{
    TimeGraph stand;
    stand.input(1, "A", 100);
    stand.input(1, "B", 200);
    QCOMPARE(stand.curves(), QString("A: (100, 1) | B: (200, 1)"));
}

void tst_GraphOutputWidgetSegments::emptySegmentIsUsedAndNotRemoved()
{
    TimeGraph stand;
    stand.graph().inputName("A", "Pump");
    QCPGraph* const segment = stand.curve(0);
    stand.input(1, "A", 100);
    QCOMPARE(stand.curves(), QString("Pump: (100, 1)"));
    QCOMPARE(stand.curve(0), segment);
}

void tst_GraphOutputWidgetSegments::segmentAboutToBeAppendedToIsNeverRemoved()
{
    TimeGraph stand({{"widget/timePeriod", "2"}, {"widget/timeout", "60"}});
    stand.input(1, "A", 100);
    QCPGraph* const segment = stand.curve(0);
    stand.input(2, "A", 130);
    QCOMPARE(stand.curves(), QString("A: (130, 2)"));
    QCOMPARE(stand.curve(0), segment);
}

void tst_GraphOutputWidgetSegments::pointsOutOfOrderAreSortedIn()
{
    TimeGraph stand;
    stand.input(1, "A", 100);
    stand.input(2, "A", 99.5);
    stand.input(3, "A", 100.5);
    QCOMPARE(stand.curves(), QString("A: (99.5, 2) (100, 1) (100.5, 3)"));
}

void tst_GraphOutputWidgetSegments::strangePeriodsAndTimeouts_data()
{
    QTest::addColumn<QString>("period");
    QTest::addColumn<QString>("timeout");
    QTest::addColumn<QString>("curves");
    QTest::newRow("period 0") << "0"
                              << "1"
                              << "A: (101, 2)";
    QTest::newRow("negative period") << "-5"
                                     << "1"
                                     << "A: (101, 2)";
    QTest::newRow("both longest") << "2147483647"
                                  << "2147483647"
                                  << "A: (100, 1) (101, 2)";
    QTest::newRow("both lowest") << "-2147483648"
                                 << "-2147483648"
                                 << "A: (101, 2)";
    QTest::newRow("timeout 0") << "10"
                               << "0"
                               << "A: (100, 1) | A: (101, 2)";
    QTest::newRow("negative timeout") << "10"
                                      << "-1"
                                      << "A: (100, 1) | A: (101, 2)";
}

void tst_GraphOutputWidgetSegments::strangePeriodsAndTimeouts()
{
    QFETCH(QString, period);
    QFETCH(QString, timeout);
    QFETCH(QString, curves);
    TimeGraph stand({{"widget/timePeriod", period}, {"widget/timeout", timeout}});
    stand.input(1, "A", 100);
    stand.input(2, "A", 101);
    QCOMPARE(stand.curves(), curves);
    stand.refresh();
    QVERIFY(!stand.plot()->toPixmap(200, 100).isNull());
}

NORVO_TEST(tst_GraphOutputWidgetSegments)
#include "tst_GraphOutputWidgetSegments.moc"
