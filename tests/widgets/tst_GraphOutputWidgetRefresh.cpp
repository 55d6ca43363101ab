// SPDX-License-Identifier: GPL-3.0-or-later

#include "GraphParts.h"
#include "TickingTimers.h"
#include "TestMain.h"

#include <QTabWidget>
#include <QtTest>

/// The window that scrolls with the present, and when it is drawn.
class tst_GraphOutputWidgetRefresh : public QObject
{
    Q_OBJECT

private slots:
    void windowEndsNow();
    void intervalIsThePeriodInMilliseconds_data();
    void intervalIsThePeriodInMilliseconds();
    void intervalIsThatOfTheFirstInitialise();
    void autoscaleFollowsTheDataWithEachTick();
    void autoscaleSeesCurvesThatAreNotVisible();
    void withoutAutoscaleTheValueAxisStandsStill();
    void deinitialiseStopsNothing();

    void valuesAreNotDrawnByThemselves();
    void windowIsDrawnWhenItMovesByAPixel();
    void windowThatStandsIsDrawnWhenSomethingChanges_data();
    void windowThatStandsIsDrawnWhenSomethingChanges();
    void hiddenGraphIsNotDrawnButGoesOn();
    void graphOnAnotherTabIsNotDrawnAndRightWhenShown();
    void minimisedGraphIsNotDrawnAndRightWhenRestored();

private:
    /// So long that no tick comes while a test runs.
    static TimeGraph::Params noTicks() { return {{"widget/timePeriod", "1000000"}}; }

    /// Whether the curve of "A" at its value 1 can be seen; its colour is pure blue.
    static bool showsACurve(const QPixmap& picture)
    {
        const QImage image = picture.toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                if (colour.blue() > 200 && colour.red() < 100 && colour.green() < 100) {
                    return true;
                }
            }
        }
        return false;
    }

    static void feedABlueCurve(TimeGraph& stand)
    {
        const double now = secondsNow();
        stand.input(1, "A", now - 5e5);
        stand.graph().inputColor("A", "blue");
        stand.input(2, "A", now - 5e5 + 1);
        stand.refresh();
    }
};

void tst_GraphOutputWidgetRefresh::windowEndsNow()
{
    TimeGraph stand({{"widget/timePeriod", "20"}});
    const double before = secondsNow();
    stand.refresh();
    const QCPRange window = stand.plot()->xAxis->range();
    QVERIFY(window.upper >= before);
    QVERIFY(window.upper <= secondsNow());
    QVERIFY(qAbs(window.size() - 20) < 1e-6);

    TimeGraph fresh({{"widget/timePeriod", "20"}});
    QVERIFY(fresh.plot()->xAxis->range().upper >= before);
}

void tst_GraphOutputWidgetRefresh::intervalIsThePeriodInMilliseconds_data()
{
    QTest::addColumn<QString>("period");
    QTest::addColumn<int>("interval");
    QTest::newRow("the default") << "10" << 33;
    QTest::newRow("negative") << "-5" << 33;
    QTest::newRow("the least") << "33" << 33;
    QTest::newRow("more than that") << "34" << 34;
    QTest::newRow("long") << "300" << 300;
}

void tst_GraphOutputWidgetRefresh::intervalIsThePeriodInMilliseconds()
{
    QFETCH(QString, period);
    QFETCH(int, interval);
    TickingTimers timers;
    TimeGraph stand({{"widget/timePeriod", period}});
    QTRY_VERIFY(!timers.intervals.isEmpty());
    QCOMPARE(timers.intervals, QSet<int>{interval});
}

void tst_GraphOutputWidgetRefresh::autoscaleFollowsTheDataWithEachTick()
{
    TimeGraph stand({{"widget/minValue", "-7"}});
    const double now = secondsNow();
    stand.input(20, "A", now);
    stand.input(30, "A", now);
    QCOMPARE(boundsOf(stand.plot()->yAxis), Bounds(-7, 1));
    QTRY_COMPARE(boundsOf(stand.plot()->yAxis), Bounds(20, 30));
    stand.input(1000, "B", now);
    QTRY_COMPARE(boundsOf(stand.plot()->yAxis), Bounds(20, 1000));
    QVERIFY(qAbs(stand.plot()->xAxis->range().size() - 10) < 1e-6);
}

void tst_GraphOutputWidgetRefresh::autoscaleSeesCurvesThatAreNotVisible()
{
    TimeGraph stand;
    stand.input(0, "A", secondsNow());
    stand.input(50, "B", secondsNow());
    stand.curve(1)->setVisible(false);
    stand.refresh();
    QCOMPARE(boundsOf(stand.plot()->yAxis), Bounds(0, 50));
}

void tst_GraphOutputWidgetRefresh::withoutAutoscaleTheValueAxisStandsStill()
{
    TimeGraph stand(
        {{"widget/autoscale", "false"}, {"widget/minValue", "-2"}, {"widget/maxValue", "3"}});
    stand.input(1000, "A", secondsNow());
    stand.plot()->yAxis->setRange(5, 6);
    stand.refresh();
    QCOMPARE(boundsOf(stand.plot()->yAxis), Bounds(-2, 3));
}

void tst_GraphOutputWidgetRefresh::deinitialiseStopsNothing()
{
    TimeGraph stand;
    stand.widget->deinitialise();
    QSignalSpy ticks(stand.plot()->xAxis, SIGNAL(rangeChanged(QCPRange)));
    QTRY_VERIFY(ticks.size() >= 3);
}

void tst_GraphOutputWidgetRefresh::valuesAreNotDrawnByThemselves()
{
    TimeGraph stand(noTicks());
    QVERIFY(stand.show());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.input(1, "A", secondsNow());
    stand.input(2, "B", secondsNow());
    stand.graph().inputFill("A", true);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 0);
}

void tst_GraphOutputWidgetRefresh::windowIsDrawnWhenItMovesByAPixel()
{
    TimeGraph stand({{"widget/timePeriod", "100000"}}); // A pixel is minutes.
    QVERIFY(stand.show());
    stand.refresh();
    QTest::qWait(20);
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    const double end = stand.plot()->xAxis->range().upper;
    QTest::qWait(20);
    stand.refresh();
    QCoreApplication::processEvents();
    QCOMPARE(drawn.size(), 0);
    QVERIFY(stand.plot()->xAxis->range().upper > end);

    TimeGraph quick({{"widget/timePeriod", "1"}});
    QVERIFY(quick.show());
    QSignalSpy drawnQuickly(quick.plot(), SIGNAL(afterReplot()));
    QTRY_VERIFY(drawnQuickly.size() >= 3);
}

void tst_GraphOutputWidgetRefresh::windowThatStandsIsDrawnWhenSomethingChanges_data()
{
    QTest::addColumn<QString>("change");
    for (const char* change : {"input", "fill", "colour", "name", "range", "size"}) {
        QTest::newRow(change) << QString(change);
    }
}

void tst_GraphOutputWidgetRefresh::windowThatStandsIsDrawnWhenSomethingChanges()
{
    QFETCH(QString, change);
    TimeGraph stand(noTicks());
    stand.input(1, "A", secondsNow() - 10);
    stand.input(2, "A", secondsNow() - 9);
    QVERIFY(stand.show());
    stand.refresh();
    QTest::qWait(20);
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    if (change == "input") {
        stand.input(1.5, "A", secondsNow());
    } else if (change == "fill") {
        stand.graph().inputFill("A", true);
    } else if (change == "colour") {
        stand.graph().inputColor("A", "blue");
    } else if (change == "name") {
        stand.graph().inputName("A", "other");
    } else if (change == "range") {
        stand.curve(0)->setData({secondsNow() - 1, secondsNow()}, {5, 77});
    } else {
        stand.widget->resize(700, 300);
        QTRY_VERIFY(!drawn.isEmpty());
        drawn.clear();
    }
    stand.refresh();
    QTRY_COMPARE(drawn.size(), 1);
    stand.refresh(); // Longer numbers beside the axis have left it less room.
    QTest::qWait(20);
    const int drawings = drawn.size();
    stand.refresh();
    QTest::qWait(20);
    QCOMPARE(drawn.size(), drawings);
}

void tst_GraphOutputWidgetRefresh::hiddenGraphIsNotDrawnButGoesOn()
{
    TimeGraph stand;
    QVERIFY(stand.show());
    stand.widget->hide();
    QTest::qWait(50); // what it had still asked for
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    QSignalSpy ticks(stand.plot()->xAxis, SIGNAL(rangeChanged(QCPRange)));
    stand.input(20, "A", secondsNow());
    stand.input(30, "A", secondsNow());
    QTRY_VERIFY(ticks.size() >= 6);
    QCOMPARE(drawn.size(), 0);
    QCOMPARE(boundsOf(stand.plot()->yAxis), Bounds(20, 30));
    QCOMPARE(pointCount(stand.curve(0)), 2);
}

void tst_GraphOutputWidgetRefresh::graphOnAnotherTabIsNotDrawnAndRightWhenShown()
{
    QTabWidget tabs; // outlives the graph, which is not its to delete
    TimeGraph stand(noTicks());
    tabs.addTab(stand.widget.get(), "graph");
    tabs.addTab(new QWidget, "other");
    tabs.resize(400, 300);
    tabs.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tabs));
    tabs.setCurrentIndex(1);
    QTest::qWait(50);
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    feedABlueCurve(stand);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 0);

    tabs.setCurrentIndex(0);
    QTRY_VERIFY(drawn.size() > 0);
    QCOMPARE(drawn.size(), 1);
    QVERIFY(showsACurve(stand.widget->grab()));
    QCOMPARE(drawn.size(), 1);
}

void tst_GraphOutputWidgetRefresh::minimisedGraphIsNotDrawnAndRightWhenRestored()
{
    TimeGraph stand(noTicks());
    QVERIFY(stand.show());
    stand.widget->showMinimized();
    QTRY_VERIFY(stand.widget->isMinimized());
    QTest::qWait(50);
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    feedABlueCurve(stand);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 0);

    stand.widget->showNormal();
    QTRY_VERIFY(drawn.size() > 0);
    QVERIFY(showsACurve(stand.widget->grab()));
    QCOMPARE(drawn.size(), 1);
}

void tst_GraphOutputWidgetRefresh::intervalIsThatOfTheFirstInitialise()
{
    TimeGraph stand({{"widget/timePeriod", "34"}});
    stand.device.setParam("widget/timePeriod", "50");
    stand.widget->initialise();
    TickingTimers timers;
    QTRY_VERIFY(!timers.intervals.isEmpty());
    QCOMPARE(timers.intervals, QSet<int>{34});
}

NORVO_TEST(tst_GraphOutputWidgetRefresh)
#include "tst_GraphOutputWidgetRefresh.moc"
