// SPDX-License-Identifier: GPL-3.0-or-later

#include "GraphParts.h"
#include "TestMain.h"

#include <QtTest>

/// What both kinds of graph do with a palette that changes, and with controls of an earlier start.
class tst_GraphFrame : public QObject
{
    Q_OBJECT

private slots:
    void newPaletteRecoloursAGraphOnce_data();
    void newPaletteRecoloursAGraphOnce();
    void paletteChangeEventRecoloursATimeGraphWithTheEventLoop();
    void paletteChangeEventRecoloursAVectorGraphAtOnce();
    void otherChangeEventsLeaveTheColours();

    void initialisedAgainTheOldPartsStayUnderTheNew();
    void knownSenderGoesOnInThePlotOfItsCurve();
    void deinitialiseLetsSendersGoOnInTheNewPlot();
    void partsMayBeDeletedBetweenTwoStarts_data();
    void partsMayBeDeletedBetweenTwoStarts();

private:
    /// So long that no tick comes while a test runs.
    static TimeGraph::Params noTicks() { return {{"widget/timePeriod", "1000000"}}; }

    static QPalette darkPalette()
    {
        QPalette dark = QApplication::palette();
        dark.setColor(QPalette::Text, QColor(0xee, 0xee, 0xdd));
        dark.setColor(QPalette::Base, QColor(0x10, 0x12, 0x14));
        dark.setColor(QPalette::Window, QColor(0x30, 0x32, 0x34));
        dark.setColor(QPalette::AlternateBase, QColor(0x50, 0x52, 0x54));
        return dark;
    }

    template <class Graph>
    static void compareWithDarkPalette(const Graph& stand)
    {
        QCOMPARE(stand.plot()->xAxis->tickLabelColor(), QColor(0xee, 0xee, 0xdd));
        QCOMPARE(stand.plot()->yAxis->basePen().color(), QColor(0xee, 0xee, 0xdd));
        QCOMPARE(stand.plot()->legend->brush().color(), QColor(0x30, 0x32, 0x34));
        QCOMPARE(stand.plot()->grab().toImage().pixelColor(1, 1), QColor(0x10, 0x12, 0x14));
    }

    template <class Graph>
    static void changePalette(Graph& stand, bool ofTheApplication)
    {
        QVERIFY(stand.show());
        QCoreApplication::processEvents();
        QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
        const QPalette before = QApplication::palette();
        ofTheApplication ? QApplication::setPalette(darkPalette())
                         : stand.widget->setPalette(darkPalette());
        QTRY_VERIFY(drawn.size() > 0);
        QTest::qWait(20);
        QCOMPARE(drawn.size(), 1);
        compareWithDarkPalette(stand);
        if (ofTheApplication) {
            const QImage caption = stand.caption()->grab().toImage();
            QCOMPARE(caption.pixelColor(caption.width() - 20, caption.height() / 2),
                     QColor(0x50, 0x52, 0x54));
        }
        QApplication::setPalette(before);
    }
};

void tst_GraphFrame::newPaletteRecoloursAGraphOnce_data()
{
    QTest::addColumn<bool>("ofTheApplication");
    QTest::newRow("of the widget") << false;
    QTest::newRow("of the application") << true;
}

void tst_GraphFrame::newPaletteRecoloursAGraphOnce()
{
    QFETCH(bool, ofTheApplication);
    TimeGraph timeGraph(noTicks());
    changePalette(timeGraph, ofTheApplication);
    VectorGraph vectorGraph;
    changePalette(vectorGraph, ofTheApplication);
}

void tst_GraphFrame::paletteChangeEventRecoloursATimeGraphWithTheEventLoop()
{
    TimeGraph stand(noTicks());
    QVERIFY(stand.show());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.plot()->yAxis->setLabelColor(Qt::red);
    QEvent event(QEvent::PaletteChange);
    QCoreApplication::sendEvent(stand.widget.get(), &event);
    QCOMPARE(stand.plot()->yAxis->labelColor(), stand.plot()->palette().color(QPalette::Text));
    QTRY_COMPARE(drawn.size(), 1);
}

void tst_GraphFrame::paletteChangeEventRecoloursAVectorGraphAtOnce()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.plot()->yAxis->setLabelColor(Qt::red);
    QEvent event(QEvent::PaletteChange);
    QCoreApplication::sendEvent(stand.widget.get(), &event);
    QCOMPARE(stand.plot()->yAxis->labelColor(), stand.plot()->palette().color(QPalette::Text));
    QCOMPARE(drawn.size(), 1);
}

void tst_GraphFrame::otherChangeEventsLeaveTheColours()
{
    TimeGraph timeGraph(noTicks());
    VectorGraph vectorGraph;
    timeGraph.plot()->yAxis->setLabelColor(Qt::red);
    vectorGraph.plot()->yAxis->setLabelColor(Qt::red);
    for (QEvent::Type type : {QEvent::FontChange, QEvent::StyleChange, QEvent::EnabledChange}) {
        QEvent event(type);
        QCoreApplication::sendEvent(timeGraph.widget.get(), &event);
        QCoreApplication::sendEvent(vectorGraph.widget.get(), &event);
        QCOMPARE(timeGraph.plot()->yAxis->labelColor(), QColor(Qt::red));
        QCOMPARE(vectorGraph.plot()->yAxis->labelColor(), QColor(Qt::red));
    }
}

void tst_GraphFrame::initialisedAgainTheOldPartsStayUnderTheNew()
{
    TimeGraph stand({{"name", "First"}});
    QVERIFY(stand.show());
    QCustomPlot* const oldPlot = stand.plot();
    QLabel* const oldCaption = stand.caption();
    stand.device.setParam("name", "Second");
    stand.widget->initialise();
    QCOMPARE(stand.widget->getLayout()->count(), 4);
    QVERIFY(stand.plot() != oldPlot);
    QCOMPARE(stand.caption()->text(), QString("Second"));
    QTRY_VERIFY(stand.plot()->isVisible());
    QTRY_COMPARE(stand.plot()->geometry(), oldPlot->geometry());
    QCOMPARE(stand.caption()->geometry(), oldCaption->geometry());
    QCOMPARE(stand.widget->childAt(oldPlot->geometry().center()), stand.plot());
    QCOMPARE(stand.widget->childAt(oldCaption->geometry().center()), stand.caption());

    QSignalSpy oldWindow(oldPlot->xAxis, SIGNAL(rangeChanged(QCPRange)));
    QSignalSpy window(stand.plot()->xAxis, SIGNAL(rangeChanged(QCPRange)));
    QTRY_VERIFY(window.size() >= 3); // still the timer of the first start
    QCOMPARE(oldWindow.size(), 0);
}

void tst_GraphFrame::knownSenderGoesOnInThePlotOfItsCurve()
{
    TimeGraph stand;
    QCustomPlot* const oldPlot = stand.plot();
    stand.input(1, "A", 100);
    stand.widget->initialise();
    QVERIFY(stand.plot() != oldPlot);
    stand.input(2, "A", 100.5);
    QCOMPARE(pointsOf(oldPlot->graph(0)), QString("(100, 1) (100.5, 2)"));
    QCOMPARE(stand.plot()->graphCount(), 0);
    stand.input(3, "B", 100.5);
    QCOMPARE(stand.curves(), QString("B: (100.5, 3)"));
    QCOMPARE(stand.curve(0)->pen().color(), QColor(Qt::green));

    stand.input(4, "A", 105); // a new segment
    QCOMPARE(stand.curves(), QString("B: (100.5, 3) | A: (105, 4)"));
    QCOMPARE(oldPlot->graphCount(), 1);
    stand.input(5, "A", 111); // with which the first has left the window
    QCOMPARE(oldPlot->graphCount(), 0);
}

void tst_GraphFrame::deinitialiseLetsSendersGoOnInTheNewPlot()
{
    TimeGraph stand;
    QCustomPlot* const oldPlot = stand.plot();
    stand.input(1, "A", 100);
    stand.widget->deinitialise();
    stand.widget->initialise();
    stand.input(2, "A", 100.5);
    QCOMPARE(stand.curves(), QString("A: (100.5, 2)"));
    QCOMPARE(pointsOf(oldPlot->graph(0)), QString("(100, 1)"));
}

void tst_GraphFrame::partsMayBeDeletedBetweenTwoStarts_data()
{
    QTest::addColumn<bool>("deinitialised");
    QTest::newRow("after deinitialise") << true;
    QTest::newRow("while initialised") << false;
}

void tst_GraphFrame::partsMayBeDeletedBetweenTwoStarts()
{
    QFETCH(bool, deinitialised);
    TimeGraph timeGraph;
    VectorGraph vectorGraph;
    timeGraph.input(1, "A", 100);
    timeGraph.input(2, "A", 105);
    vectorGraph.graph().input({1, 2});
    for (BaseWidget* widget : {timeGraph.widget.get(), vectorGraph.widget.get()}) {
        if (deinitialised) {
            widget->deinitialise();
        }
        qDeleteAll(widget->findChildren<QWidget*>("", Qt::FindDirectChildrenOnly));
        QEvent palette(QEvent::PaletteChange);
        QCoreApplication::sendEvent(widget, &palette);
    }
    timeGraph.input(3, "A", 106);
    timeGraph.graph().inputFill("A", true);
    timeGraph.graph().inputColor("A", "red");
    timeGraph.graph().inputName("A", "Pump");
    timeGraph.refresh();
    vectorGraph.graph().input({3});

    timeGraph.widget->initialise();
    vectorGraph.widget->initialise();
    timeGraph.input(4, "A", 107);
    vectorGraph.graph().input({4});
    QCOMPARE(timeGraph.curves(), QString("A: (107, 4)"));
    QCOMPARE(pointsOf(vectorGraph.curve(0)), QString("(1, 4)"));
}

NORVO_TEST(tst_GraphFrame)
#include "tst_GraphFrame.moc"
