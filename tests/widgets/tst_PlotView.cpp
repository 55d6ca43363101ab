// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotView.h"
#include "CurvePoints.h"
#include "MessageLog.h"
#include "TestMain.h"

#include <QtTest>

namespace plot = norvo::plot;

class tst_PlotView : public QObject
{
    Q_OBJECT

private slots:
    void coloursComeFromItsPalette_data();
    void coloursComeFromItsPalette();
    void zeroLineIsTheLibrarysUnlessAskedFor();
    void colourGroupIsTheCurrentOne();
    void newCurvesAreNamedInTheTextColour();
    void refreshDrawsWhileItCanBeSeen();
    void hiddenItIsDrawnForAPicture();
    void drawingIsPutOffUntilItsParentIsShown();
    void drawingIsPutOffUntilThereIsRoom();
    void itAsksForTheSameRoomWhateverItsNumbers();

    void removingBeforeAKeyKeepsThePointOnIt();
    void lastKeyIsTheGreatest();

private:
    static QPen pen(const QColor& colour, Qt::PenStyle style)
    {
        return QPen(colour, 1.0, style, Qt::SquareCap, Qt::BevelJoin);
    }
    static constexpr PlotView::Look kQueued{false, plot::kReplotQueued};
    static constexpr PlotView::Look kAtOnce{true, plot::kReplotHint};
};

void tst_PlotView::coloursComeFromItsPalette_data()
{
    QTest::addColumn<bool>("changed");
    QTest::newRow("from the start") << false;
    QTest::newRow("changed") << true;
}

void tst_PlotView::coloursComeFromItsPalette()
{
    QFETCH(bool, changed);
    PlotView view(kAtOnce);
    if (changed) {
        QPalette palette;
        palette.setColor(QPalette::Text, QColor(1, 200, 3));
        palette.setColor(QPalette::Base, QColor(4, 5, 60));
        palette.setBrush(QPalette::Window, QBrush(QColor(70, 8, 9), Qt::Dense4Pattern));
        view.setPalette(palette);
    }
    const QPalette palette = view.palette();
    const QColor text = palette.color(QPalette::Text);
    QCOMPARE(text == QColor(1, 200, 3), changed);
    for (QCPAxis* axis : {view.xAxis, view.yAxis}) {
        QCOMPARE(axis->labelColor(), text);
        QCOMPARE(axis->basePen(), pen(text, Qt::SolidLine));
        QCOMPARE(axis->tickPen(), pen(text, Qt::SolidLine));
        QCOMPARE(axis->subTickPen(), pen(text, Qt::SolidLine));
        QCOMPARE(axis->tickLabelColor(), text);
        QCOMPARE(axis->grid()->pen(), pen(text, Qt::DotLine));
        QCOMPARE(axis->grid()->zeroLinePen(), pen(text, Qt::SolidLine));
    }
    QCOMPARE(view.legend->textColor(), text);
    QCOMPARE(view.legend->brush(), palette.brush(QPalette::Window));
    QCOMPARE(view.antialiasedElements(), QCP::AntialiasedElements(0xFFFF));
    QCOMPARE(view.toPixmap(100, 80).toImage().pixelColor(1, 1), palette.color(QPalette::Base));
}

void tst_PlotView::zeroLineIsTheLibrarysUnlessAskedFor()
{
    QCustomPlot bare;
    PlotView view(kQueued);
    for (auto axis : {&QCustomPlot::xAxis, &QCustomPlot::yAxis}) {
        QCOMPARE((view.*axis)->grid()->zeroLinePen(), (bare.*axis)->grid()->zeroLinePen());
    }
}

void tst_PlotView::colourGroupIsTheCurrentOne()
{
    PlotView view(kQueued);
    QPalette palette;
    palette.setColor(QPalette::Active, QPalette::Text, Qt::green);
    palette.setColor(QPalette::Disabled, QPalette::Text, Qt::blue);
    view.setEnabled(false);
    view.setPalette(palette);
    QCOMPARE(view.xAxis->tickLabelColor(), QColor(Qt::blue));
}

void tst_PlotView::newCurvesAreNamedInTheTextColour()
{
    PlotView view(kQueued);
    QPalette palette;
    palette.setColor(QPalette::Text, QColor(1, 200, 3));
    view.addGraph();
    view.setPalette(palette);
    view.addGraph();
    QCOMPARE(view.legend->itemCount(), 2);
    QCOMPARE(view.legend->item(0)->textColor(), QColor(1, 200, 3));
    QCOMPARE(view.legend->item(1)->textColor(), QColor(1, 200, 3));
}

void tst_PlotView::refreshDrawsWhileItCanBeSeen()
{
    PlotView view(kQueued);
    view.resize(200, 100);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTest::qWait(20);
    QSignalSpy drawn(&view, SIGNAL(afterReplot()));
    view.refresh(plot::kReplotHint);
    QCOMPARE(drawn.size(), 1);
    view.refresh(plot::kReplotQueued);
    QTRY_COMPARE(drawn.size(), 2);
    view.grab();
    QCOMPARE(drawn.size(), 2);
}

void tst_PlotView::hiddenItIsDrawnForAPicture()
{
    PlotView view(kQueued);
    view.resize(200, 100);
    view.grab();
    QTest::qWait(20);
    QSignalSpy drawn(&view, SIGNAL(afterReplot()));
    view.refresh(plot::kReplotHint);
    view.refresh(plot::kReplotQueued);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 0);
    view.grab();
    QVERIFY(drawn.size() > 0);
}

void tst_PlotView::drawingIsPutOffUntilItsParentIsShown()
{
    QWidget parent;
    parent.resize(200, 100);
    auto* const view = new PlotView(kQueued);
    view->setParent(&parent);
    view->setGeometry(parent.rect());
    QTest::qWait(20);
    QSignalSpy drawn(view, SIGNAL(afterReplot()));
    view->refresh(plot::kReplotHint);
    QCOMPARE(drawn.size(), 0);
    parent.show();
    QTRY_VERIFY(drawn.size() > 0);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 1);
}

void tst_PlotView::drawingIsPutOffUntilThereIsRoom()
{
    QWidget window;
    auto* view = new PlotView(kQueued);
    view->setParent(&window);
    view->resize(200, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(20);
    QSignalSpy drawn(view, SIGNAL(afterReplot()));
    MessageLog log;
    view->resize(200, 0);
    view->refresh(plot::kReplotHint);
    view->refresh(plot::kReplotQueued);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 0);
    view->resize(200, 80);
    QVERIFY(drawn.size() > 0);
    QCOMPARE(view->viewport().size(), QSize(200, 80));
    QCOMPARE(log.take(), QStringList());
}

void tst_PlotView::itAsksForTheSameRoomWhateverItsNumbers()
{
    PlotView view(kQueued);
    const QWidget& asked = view; // The library hides what it overrides.
    const QSize least = asked.minimumSizeHint();
    const QSize best = asked.sizeHint();
    view.resize(400, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QSet<int> widths; // Of the room that the numbers take.
    for (const double most : {1.0, 123456.0, 123456789e20}) {
        view.yAxis->setRange(0, most);
        view.replot();
        widths.insert(view.axisRect()->margins().left());
        QCOMPARE(asked.minimumSizeHint(), least);
        QCOMPARE(asked.sizeHint(), best);
    }
    QCOMPARE(widths.size(), 3);
    QVERIFY(least.width() > view.fontMetrics().horizontalAdvance("123456"));
}

void tst_PlotView::removingBeforeAKeyKeepsThePointOnIt()
{
    QCustomPlot bare;
    auto* const graph = new plot::Graph(bare.xAxis, bare.yAxis);
    plot::addPlottable(&bare, graph);
    QVERIFY(!plot::hasData(graph));
    plot::removeDataBefore(graph, 5);
    graph->setData({1, 2, 3}, {10, 20, 30});
    plot::removeDataBefore(graph, 2);
    QVERIFY(plot::hasData(graph));
    QCOMPARE(pointsOf(graph), QString("(2, 20) (3, 30)"));
    plot::removeDataBefore(graph, 4);
    QVERIFY(!plot::hasData(graph));
}

void tst_PlotView::lastKeyIsTheGreatest()
{
    QCustomPlot bare;
    QCPGraph* const graph = bare.addGraph();
    graph->addData(7, 1);
    graph->addData(5, 2);
    QCOMPARE(plot::lastKey(graph), 7.0);
}

NORVO_TEST(tst_PlotView)
#include "tst_PlotView.moc"
