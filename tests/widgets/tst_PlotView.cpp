#include "widgets/PlotView.h"
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

    void removingBeforeAKeyKeepsThePointOnIt();
    void lastKeyIsTheGreatest();
    void sortedDataIsTakenAsItIs();
    void curveFindsItsRangeAsTheLibraryDoes_data();
    void curveFindsItsRangeAsTheLibraryDoes();
    void onlyTheInterfaceNamesCallsOfOneGeneration();

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
    view.refresh(plot::kReplotQueued);
    QCOMPARE(drawn.size(), 1);
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

void tst_PlotView::removingBeforeAKeyKeepsThePointOnIt()
{
    QCustomPlot bare;
    QCPGraph* const graph = bare.addGraph();
    QVERIFY(!plot::hasData(graph));
    plot::removeDataBefore(graph, 5);
    graph->setData({1, 2, 3}, {10, 20, 30});
    plot::removeDataBefore(graph, 2);
    QVERIFY(plot::hasData(graph));
    QCOMPARE(graph->dataCount(), 2);
    QCOMPARE(graph->data()->constBegin()->key, 2.0);
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

void tst_PlotView::sortedDataIsTakenAsItIs()
{
    QCustomPlot bare;
    QCPGraph* const graph = bare.addGraph();
    plot::setSortedData(graph, {1, 2}, {10, 20});
    plot::setSortedData(graph, {3}, {30});
    QCOMPARE(graph->dataCount(), 1);
    QCOMPARE(graph->data()->constBegin()->value, 30.0);
}

void tst_PlotView::curveFindsItsRangeAsTheLibraryDoes_data()
{
    QTest::addColumn<QVector<double>>("values");
    const double nan = qQNaN();
    QTest::newRow("none") << QVector<double>{};
    QTest::newRow("one") << QVector<double>{-3};
    QTest::newRow("three") << QVector<double>{2, 3, 1};
    QTest::newRow("four") << QVector<double>{4, 2, 3, 1};
    QTest::newRow("lowest and highest in each place") << QVector<double>{5, 1, 5, 5, 5, 5, 9, 5, 5};
    QTest::newRow("lowest last") << QVector<double>{5, 4, 3, 2, 1, 0};
    QTest::newRow("negative") << QVector<double>{-5, -4, -3, -2, -1};
    QTest::newRow("nan among them") << QVector<double>{nan, 2, nan, 3, nan, nan};
    QTest::newRow("nothing but nan") << QVector<double>{nan, nan, nan, nan, nan};
    QTest::newRow("infinities") << QVector<double>{1, qInf(), -qInf(), 2, 3};
    QTest::newRow("one infinity alone") << QVector<double>{qInf()};
    QTest::newRow("largest") << QVector<double>{1.7e308, -1.7e308};
}

void tst_PlotView::curveFindsItsRangeAsTheLibraryDoes()
{
    QFETCH(QVector<double>, values);
    QCustomPlot bare;
    const QVector<QCPGraph*> curves{bare.addGraph(), plot::addCurve(&bare)};
    QCOMPARE(bare.graphCount(), 2);
    QCOMPARE(bare.graph(1), curves[1]);
    QCOMPARE(bare.legend->itemCount(), 2);
    for (QCPGraph* curve : curves) {
        for (int i = 0; i < values.size(); ++i) {
            curve->addData(i, values[i]);
        }
    }
    for (QCP::SignDomain domain : {QCP::sdBoth, QCP::sdNegative, QCP::sdPositive}) {
        for (const QCPRange& keys : {QCPRange(), QCPRange(1, 2)}) {
            bool found[2];
            const QCPRange expected = curves[0]->getValueRange(found[0], domain, keys);
            const QCPRange range = curves[1]->getValueRange(found[1], domain, keys);
            QCOMPARE(found[1], found[0]);
            if (found[0]) {
                QCOMPARE(range.lower, expected.lower);
                QCOMPARE(range.upper, expected.upper);
            }
        }
    }
}

void tst_PlotView::onlyTheInterfaceNamesCallsOfOneGeneration()
{
    const QRegularExpression ofOneGeneration(
        "\\b(rp(Queued|Hint|Immediate|QueuedReplot|QueuedRefresh|RefreshHint|ImmediateRefresh)|"
        "QCUSTOMPLOT_VERSION|QCPAxisTicker\\w*|ticker|setTicker|setTickLabelType|ltDateTime|"
        "setDateTime(Format|Spec|Origin)|setAutoTick\\w*|setAutoSubTicks|setTickStep|"
        "setSubTickCount|setTickCount|"
        "setTickVector\\w*|addItem|addPlottable|QCPData|QCPDataMap|QCPGraphData|QCPDataContainer|"
        "QCPGraphDataContainer|data\\(\\)|dataCount|removeDataBefore|removeDataAfter|removeBefore|"
        "removeAfter|setAdaptiveSampling|setOpenGl|setBufferDevicePixelRatio|"
        "setSelectionRectMode|setSelectable|selection|QCPVector2D|toPainter|clearData)\\b");
    QDir folder(NORVO_SOURCE_DIR "/widgets");
    const QStringList sources = folder.entryList({"*.h", "*.cpp"});
    int readers = 0;
    for (const QString& source : sources) {
        QFile file(folder.filePath(source));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll())
                                 .remove("plot::removeDataBefore")
                                 .remove("plot::addItem");
        const bool plots = text.contains("PlotInterface.h") || text.contains("PlotView.h") ||
                           text.contains("GraphFrame.h");
        const bool header = source == "PlotInterface.h";
        if (!plots && !header && !text.contains("GraphOutputWidget.h") &&
            !text.contains("VectorGraphWidget.h")) {
            continue;
        }
        ++readers;
        const QRegularExpressionMatch match = ofOneGeneration.match(text);
        QVERIFY2(match.hasMatch() == header, qPrintable(source + ": " + match.captured()));
    }
    QVERIFY(readers >= 9);
}

NORVO_TEST(tst_PlotView)
#include "tst_PlotView.moc"
