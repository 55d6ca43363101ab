#include "GraphParts.h"
#include "TestMain.h"

#include <QTabWidget>
#include <QtTest>

/// The window that scrolls with the present, and when it is drawn.
class tst_GraphOutputWidgetRefresh : public QObject
{
    Q_OBJECT

private slots:
    void windowEndsNow();
    void refreshesAboutThirtyTimesASecondByDefault();
    void longPeriodIsTheIntervalInMilliseconds();
    void autoscaleFollowsTheDataWithEachTick();
    void autoscaleSeesCurvesThatAreNotVisible();
    void withoutAutoscaleTheValueAxisStandsStill();
    void deinitialiseStopsNothing();

    void manyTicksOfATurnAreDrawnOnce();
    void valuesAreNotDrawnByThemselves();
    void hiddenGraphIsNotDrawnButGoesOn();
    void graphOnAnotherTabIsNotDrawnAndRightWhenShown();
    void minimisedGraphIsNotDrawnAndRightWhenRestored();

    void newPaletteRecoloursTheGraphOnce_data();
    void newPaletteRecoloursTheGraphOnce();
    void paletteChangeEventAppliesTheColoursAnew();
    void otherChangeEventsLeaveTheColours();

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

void tst_GraphOutputWidgetRefresh::refreshesAboutThirtyTimesASecondByDefault()
{
    TimeGraph stand;
    QSignalSpy ticks(stand.plot()->xAxis, SIGNAL(rangeChanged(QCPRange)));
    QElapsedTimer clock;
    clock.start();
    QTRY_VERIFY(ticks.size() >= 20);
    QVERIFY2(clock.elapsed() >= 20 * 30 - 50, qPrintable(QString::number(clock.elapsed())));
}

void tst_GraphOutputWidgetRefresh::longPeriodIsTheIntervalInMilliseconds()
{
    TimeGraph stand({{"widget/timePeriod", "300"}});
    QSignalSpy ticks(stand.plot()->xAxis, SIGNAL(rangeChanged(QCPRange)));
    QTRY_COMPARE(ticks.size(), 1);
    QElapsedTimer clock;
    clock.start();
    QTRY_COMPARE(ticks.size(), 3);
    QVERIFY2(clock.elapsed() >= 500, qPrintable(QString::number(clock.elapsed())));
}

void tst_GraphOutputWidgetRefresh::autoscaleFollowsTheDataWithEachTick()
{
    TimeGraph stand({{"widget/minValue", "-7"}});
    const double now = secondsNow();
    stand.input(20, "A", now);
    stand.input(30, "A", now);
    QCOMPARE(stand.plot()->yAxis->range(), QCPRange(-7, 1));
    QTRY_COMPARE(stand.plot()->yAxis->range(), QCPRange(20, 30));
    stand.input(1000, "B", now);
    QTRY_COMPARE(stand.plot()->yAxis->range(), QCPRange(20, 1000));
    QVERIFY(qAbs(stand.plot()->xAxis->range().size() - 10) < 1e-6);
}

void tst_GraphOutputWidgetRefresh::autoscaleSeesCurvesThatAreNotVisible()
{
    TimeGraph stand;
    stand.input(0, "A", secondsNow());
    stand.input(50, "B", secondsNow());
    stand.curve(1)->setVisible(false);
    stand.refresh();
    QCOMPARE(stand.plot()->yAxis->range(), QCPRange(0, 50));
}

void tst_GraphOutputWidgetRefresh::withoutAutoscaleTheValueAxisStandsStill()
{
    TimeGraph stand(
        {{"widget/autoscale", "false"}, {"widget/minValue", "-2"}, {"widget/maxValue", "3"}});
    stand.input(1000, "A", secondsNow());
    stand.plot()->yAxis->setRange(5, 6);
    stand.refresh();
    QCOMPARE(stand.plot()->yAxis->range(), QCPRange(-2, 3));
}

void tst_GraphOutputWidgetRefresh::deinitialiseStopsNothing()
{
    TimeGraph stand;
    stand.widget->deinitialise();
    QSignalSpy ticks(stand.plot()->xAxis, SIGNAL(rangeChanged(QCPRange)));
    QTRY_VERIFY(ticks.size() >= 3);
}

void tst_GraphOutputWidgetRefresh::manyTicksOfATurnAreDrawnOnce()
{
    TimeGraph stand(noTicks());
    QVERIFY(stand.show());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    for (int i = 0; i < 10; ++i) {
        stand.refresh();
    }
    QCOMPARE(drawn.size(), 0);
    QTRY_COMPARE(drawn.size(), 1);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 1);
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
    QCOMPARE(stand.plot()->yAxis->range(), QCPRange(20, 30));
    QCOMPARE(stand.curve(0)->dataCount(), 2);
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

void tst_GraphOutputWidgetRefresh::newPaletteRecoloursTheGraphOnce_data()
{
    QTest::addColumn<bool>("ofTheApplication");
    QTest::newRow("of the widget") << false;
    QTest::newRow("of the application") << true;
}

void tst_GraphOutputWidgetRefresh::newPaletteRecoloursTheGraphOnce()
{
    QFETCH(bool, ofTheApplication);
    TimeGraph stand(noTicks());
    QVERIFY(stand.show());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));

    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Text, QColor(0xee, 0xee, 0xdd));
    dark.setColor(QPalette::Base, QColor(0x10, 0x12, 0x14));
    dark.setColor(QPalette::Window, QColor(0x30, 0x32, 0x34));
    dark.setColor(QPalette::AlternateBase, QColor(0x50, 0x52, 0x54));
    ofTheApplication ? QApplication::setPalette(dark) : stand.widget->setPalette(dark);
    QTRY_VERIFY(drawn.size() > 0);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 1);
    QCOMPARE(stand.plot()->xAxis->tickLabelColor(), QColor(0xee, 0xee, 0xdd));
    QCOMPARE(stand.plot()->legend->brush().color(), QColor(0x30, 0x32, 0x34));
    QCOMPARE(stand.plot()->grab().toImage().pixelColor(1, 1), QColor(0x10, 0x12, 0x14));
    if (ofTheApplication) {
        const QImage caption = stand.caption()->grab().toImage();
        QCOMPARE(caption.pixelColor(caption.width() - 20, caption.height() / 2),
                 QColor(0x50, 0x52, 0x54));
    }
    QApplication::setPalette(before);
}

void tst_GraphOutputWidgetRefresh::paletteChangeEventAppliesTheColoursAnew()
{
    TimeGraph stand(noTicks());
    const QColor text = stand.plot()->palette().color(QPalette::Text);
    stand.plot()->yAxis->setLabelColor(Qt::red);
    QEvent event(QEvent::PaletteChange);
    QCoreApplication::sendEvent(stand.widget.get(), &event);
    QCOMPARE(stand.plot()->yAxis->labelColor(), text);
}

void tst_GraphOutputWidgetRefresh::otherChangeEventsLeaveTheColours()
{
    TimeGraph stand(noTicks());
    stand.plot()->yAxis->setLabelColor(Qt::red);
    for (QEvent::Type type : {QEvent::FontChange, QEvent::StyleChange, QEvent::EnabledChange}) {
        QEvent event(type);
        QCoreApplication::sendEvent(stand.widget.get(), &event);
        QCOMPARE(stand.plot()->yAxis->labelColor(), QColor(Qt::red));
    }
}

NORVO_TEST(tst_GraphOutputWidgetRefresh)
#include "tst_GraphOutputWidgetRefresh.moc"
