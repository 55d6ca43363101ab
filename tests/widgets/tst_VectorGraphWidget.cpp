#include "Declarations.h"
#include "GraphParts.h"
#include "GridPlaces.h"

#include "devices/Label.h"
#include "TestMain.h"

#include <QtTest>

class tst_VectorGraphWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlots();
    void captionAndPlotStandInTheGrid();
    void captionIsLightAndLarge();
    void sizePoliciesAreTheirs();
    void axesBeforeTheFirstArray();
    void curveIsInTheHighlightColour_data();
    void curveIsInTheHighlightColour();

    void fiveValuesStandAtOneToFive();
    void secondArrayReplacesTheFirst_data();
    void secondArrayReplacesTheFirst();
    void emptyArrayClearsTheCurve();
    void oneElementIsShown();
    void notANumberIsAGap();
    void valuesOutsideAreClippedAtTheAxes();
    void millionElementsAreDrawn();
    void valueAxisNeverScales();
    void deviceFeedsItsWidget();

    void beforeInitialiseAndAfterDeinitialiseNothingHappens();
    void foreignOrMissingDeviceMakesAnEmptyGraphInSilence();
    void initialiseAgainConnectsAgain();

    void arrayIsDrawnAtOnce();
    void hiddenGraphIsNotDrawnAndRightWhenShown();
    void minimisedGraphIsRightWhenRestored();
    void newPaletteRecoloursTheGraphOnce();
    void paletteChangeEventAppliesTheColoursAnew();

private:
    /// Pixels nearer to the curve's colour than to that of its fill.
    static int highlightedPixels(const QImage& image)
    {
        const QColor highlight = QApplication::palette().color(QPalette::Highlight);
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                count += qAbs(colour.red() - highlight.red()) +
                             qAbs(colour.green() - highlight.green()) +
                             qAbs(colour.blue() - highlight.blue()) <
                         60;
            }
        }
        return count;
    }
};

void tst_VectorGraphWidget::declaresItsSlots()
{
    QCOMPARE(methodTable(VectorGraphWidget::staticMetaObject),
             QStringList("slot input(DoubleVec)"));
}

void tst_VectorGraphWidget::captionAndPlotStandInTheGrid()
{
    VectorGraph stand({{"name", "Spectrum"}});
    const QGridLayout& grid = *stand.widget->getLayout();
    QCOMPARE(grid.count(), 2);
    QCOMPARE(stand.caption()->text(), QString("Spectrum"));
    QCOMPARE(placeOf(stand.caption(), grid), QString("row 0, column 0, 1 x 1, alignment 0x20"));
    QCOMPARE(placeOf(stand.plot(), grid), QString("row 1, column 0, 1 x 1, alignment 0x0"));
    QCOMPARE(grid.rowStretch(0), 1);
    QCOMPARE(grid.rowStretch(1), 100);
    QVERIFY(stand.widget->isInitialised());
}

void tst_VectorGraphWidget::captionIsLightAndLarge()
{
    VectorGraph stand;
    const QFont font = stand.caption()->font();
    QCOMPARE(font.family(), QString("Arial"));
    QCOMPARE(font.pointSize(), 16);
    QCOMPARE(font.weight(), 3);
    QVERIFY(!font.italic());
    QCOMPARE(stand.caption()->styleSheet(),
             QString("QWidget { background-color: palette(alternate-base); border: 1px solid "
                     "palette(base); border-radius: 5px; }"));
}

void tst_VectorGraphWidget::sizePoliciesAreTheirs()
{
    VectorGraph stand;
    const QSizePolicy expanding(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QCOMPARE(stand.widget->sizePolicy(), expanding);
    QCOMPARE(stand.plot()->sizePolicy(), expanding);
    QCOMPARE(stand.caption()->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum));
}

void tst_VectorGraphWidget::axesBeforeTheFirstArray()
{
    VectorGraph stand({{"widget/minValue", "-2"}, {"widget/maxValue", "3"}});
    QCOMPARE(stand.plot()->xAxis->range(), QCPRange(0, 10));
    QCOMPARE(stand.plot()->yAxis->range(), QCPRange(-2, 3));
    QCOMPARE(stand.plot()->graphCount(), 1);
    QCOMPARE(stand.curve(0)->dataCount(), 0);
    QVERIFY(!stand.plot()->legend->visible());
}

void tst_VectorGraphWidget::curveIsInTheHighlightColour_data()
{
    QTest::addColumn<QString>("fillArea");
    QTest::addColumn<bool>("filled");
    QTest::newRow("filled") << "true" << true;
    QTest::newRow("not filled") << "false" << false;
}

void tst_VectorGraphWidget::curveIsInTheHighlightColour()
{
    QFETCH(QString, fillArea);
    QFETCH(bool, filled);
    OutputVector device;
    device.setParam("widget/fillArea", fillArea);
    device.setRunning(device.initialise());
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    QPalette palette;
    palette.setColor(QPalette::Highlight, QColor(10, 200, 30));
    widget->setPalette(palette);
    widget->initialise();
    const QCPGraph* curve = widget->findChild<QCustomPlot*>()->graph(0);
    QVERIFY(isCosmeticSolid(curve->pen()));
    QCOMPARE(curve->pen().color(), QColor(10, 200, 30));
    QColor half(10, 200, 30);
    half.setAlphaF(0.5);
    QCOMPARE(curve->brush(), filled ? QBrush(half) : QBrush(Qt::NoBrush));
}

void tst_VectorGraphWidget::fiveValuesStandAtOneToFive()
{
    VectorGraph stand;
    stand.graph().input({0.5, 0.25, 1, 0, 0.75});
    QCOMPARE(pointsOf(stand.curve(0)), QString("(1, 0.5) (2, 0.25) (3, 1) (4, 0) (5, 0.75)"));
    QCOMPARE(stand.plot()->xAxis->range().lower, 1.0);
    QCOMPARE(stand.plot()->xAxis->range().upper, 5.0);
}

void tst_VectorGraphWidget::secondArrayReplacesTheFirst_data()
{
    QTest::addColumn<DoubleVec>("second");
    QTest::addColumn<QString>("points");
    QTest::newRow("shorter") << DoubleVec{7, 8} << "(1, 7) (2, 8)";
    QTest::newRow("longer") << DoubleVec{7, 8, 9, 10} << "(1, 7) (2, 8) (3, 9) (4, 10)";
}

void tst_VectorGraphWidget::secondArrayReplacesTheFirst()
{
    QFETCH(DoubleVec, second);
    QFETCH(QString, points);
    VectorGraph stand;
    stand.graph().input({1, 2, 3});
    stand.graph().input(second);
    QCOMPARE(stand.plot()->graphCount(), 1);
    QCOMPARE(pointsOf(stand.curve(0)), points);
    QCOMPARE(stand.plot()->xAxis->range(), QCPRange(1, second.size()));
}

void tst_VectorGraphWidget::emptyArrayClearsTheCurve()
{
    VectorGraph stand;
    stand.graph().input({1, 2, 3});
    stand.graph().input({});
    QCOMPARE(stand.curve(0)->dataCount(), 0);
    QCPAxis reference(stand.plot()->axisRect(), QCPAxis::atBottom);
    reference.setRange(1, 3);
    reference.setRange(1, 0);
    QCOMPARE(stand.plot()->xAxis->range(), reference.range());
    QVERIFY(!stand.plot()->toPixmap(200, 100).isNull());
}

void tst_VectorGraphWidget::oneElementIsShown()
{
    VectorGraph stand;
    stand.graph().input({0.5});
    QCOMPARE(pointsOf(stand.curve(0)), QString("(1, 0.5)"));
    QCPAxis reference(stand.plot()->axisRect(), QCPAxis::atBottom);
    reference.setRange(0, 10);
    reference.setRange(1, 1);
    QCOMPARE(stand.plot()->xAxis->range(), reference.range());
    QVERIFY(!stand.plot()->toPixmap(200, 100).isNull());
}

void tst_VectorGraphWidget::notANumberIsAGap()
{
    VectorGraph stand({{"widget/fillArea", "false"}});
    stand.graph().input({0.5, 0.5, qQNaN(), 0.5, 0.5});
    QCOMPARE(stand.curve(0)->dataCount(), 5);
    const QImage image = stand.plot()->toPixmap(400, 300).toImage();
    stand.plot()->setViewport(QRect(0, 0, 400, 300));
    stand.plot()->replot();
    const auto highlightedAt = [&](double index) {
        const int x = qRound(stand.plot()->xAxis->coordToPixel(index));
        return highlightedPixels(image.copy(x, 0, 1, image.height())) +
               highlightedPixels(image.copy(x - 1, 0, 1, image.height()));
    };
    stand.graph().input({0.5, 0.5, qInf(), -qInf(), 1e308});
    QVERIFY(highlightedAt(1.5) > 0);
    QVERIFY(highlightedAt(4.5) > 0);
    QCOMPARE(highlightedAt(2.5), 0);
    QCOMPARE(highlightedAt(3.5), 0);
    QVERIFY(!stand.plot()->toPixmap(200, 100).isNull());
}

void tst_VectorGraphWidget::valuesOutsideAreClippedAtTheAxes()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    stand.graph().input({-50, 50, -50, 50, -50});
    const QImage image = stand.plot()->grab().toImage();
    const QRect area = stand.plot()->axisRect()->rect();
    QVERIFY(highlightedPixels(image.copy(area)) > 0);
    QCOMPARE(highlightedPixels(image.copy(0, 0, image.width(), area.top() - 1)), 0);
    QCOMPARE(highlightedPixels(image.copy(0, area.bottom() + 2, image.width(), image.height())), 0);
}

void tst_VectorGraphWidget::millionElementsAreDrawn()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    DoubleVec values(1000000);
    for (int i = 0; i < values.size(); ++i) {
        values[i] = 0.5 + 0.4 * std::sin(i * 1e-4);
    }
    stand.graph().input(values);
    QCOMPARE(stand.curve(0)->dataCount(), values.size());
    QCOMPARE(stand.plot()->xAxis->range(), QCPRange(1, 1000000));
    QVERIFY(highlightedPixels(stand.plot()->grab().toImage()) > 100);
}

void tst_VectorGraphWidget::valueAxisNeverScales()
{
    VectorGraph stand({{"widget/minValue", "-2"}, {"widget/maxValue", "3"}});
    stand.plot()->yAxis->setRange(5, 6);
    stand.graph().input({100, 200});
    QCOMPARE(stand.plot()->yAxis->range(), QCPRange(-2, 3));
}

void tst_VectorGraphWidget::deviceFeedsItsWidget()
{
    VectorGraph stand;
    stand.device.input({3, 4});
    QCOMPARE(pointsOf(stand.curve(0)), QString("(1, 3) (2, 4)"));
}

void tst_VectorGraphWidget::beforeInitialiseAndAfterDeinitialiseNothingHappens()
{
    OutputVector device;
    VectorGraphWidget bare(&device, nullptr);
    bare.input({1, 2});
    QEvent palette(QEvent::PaletteChange);
    QCoreApplication::sendEvent(&bare, &palette);
    QVERIFY(bare.findChildren<QWidget*>().isEmpty());

    VectorGraph stand;
    stand.graph().input({1, 2});
    stand.widget->deinitialise();
    QVERIFY(!stand.widget->isInitialised());
    stand.graph().input({3});
    QCOMPARE(pointsOf(stand.curve(0)), QString("(1, 1) (2, 2)"));
}

void tst_VectorGraphWidget::foreignOrMissingDeviceMakesAnEmptyGraphInSilence()
{
    Label label;
    for (BaseGuiDevice* device : QVector<BaseGuiDevice*>{&label, nullptr}) {
        VectorGraphWidget widget(device, nullptr);
        widget.initialise(); // a connection that Qt refuses would fail the test
        QVERIFY(widget.isInitialised());
        QCOMPARE(widget.findChild<QCustomPlot*>()->graphCount(), 1);
    }
}

void tst_VectorGraphWidget::initialiseAgainConnectsAgain()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    QCustomPlot* const oldPlot = stand.plot();
    stand.device.input({1});
    stand.widget->deinitialise();
    stand.widget->initialise();
    QCOMPARE(stand.plots(), 2);
    QVERIFY(!oldPlot->isVisible());
    QTRY_VERIFY(stand.plot()->isVisible());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.device.input({2, 3});
    QCOMPARE(drawn.size(), 2);
    QCOMPARE(pointsOf(stand.curve(0)), QString("(1, 2) (2, 3)"));
    QCOMPARE(pointsOf(oldPlot->graph(0)), QString("(1, 1)"));
}

void tst_VectorGraphWidget::arrayIsDrawnAtOnce()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.graph().input({1, 2});
    QCOMPARE(drawn.size(), 1);
}

void tst_VectorGraphWidget::hiddenGraphIsNotDrawnAndRightWhenShown()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    stand.widget->hide();
    QTest::qWait(20);
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.graph().input({0.2, 0.8});
    stand.graph().input({0.3, 0.9});
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 0);
    QCOMPARE(pointsOf(stand.curve(0)), QString("(1, 0.3) (2, 0.9)"));
    stand.widget->show();
    QTRY_VERIFY(drawn.size() > 0);
    QCOMPARE(drawn.size(), 1);
    QVERIFY(highlightedPixels(stand.plot()->grab().toImage()) > 100);
    QCOMPARE(drawn.size(), 1);
}

void tst_VectorGraphWidget::minimisedGraphIsRightWhenRestored()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    stand.widget->showMinimized();
    QTRY_VERIFY(stand.widget->isMinimized());
    QTest::qWait(20);
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.graph().input({0.3, 0.9});
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 0);
    stand.widget->showNormal();
    QTRY_COMPARE(drawn.size(), 1);
    QVERIFY(highlightedPixels(stand.plot()->grab().toImage()) > 100);
}

void tst_VectorGraphWidget::newPaletteRecoloursTheGraphOnce()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    QPalette dark = stand.widget->palette();
    dark.setColor(QPalette::Text, QColor(0xee, 0xee, 0xdd));
    dark.setColor(QPalette::Base, QColor(0x10, 0x12, 0x14));
    stand.widget->setPalette(dark);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 1);
    QCOMPARE(stand.plot()->yAxis->basePen().color(), QColor(0xee, 0xee, 0xdd));
    QCOMPARE(stand.plot()->xAxis->grid()->zeroLinePen().color(), QColor(0xee, 0xee, 0xdd));
    QCOMPARE(stand.plot()->grab().toImage().pixelColor(1, 1), QColor(0x10, 0x12, 0x14));
}

void tst_VectorGraphWidget::paletteChangeEventAppliesTheColoursAnew()
{
    VectorGraph stand;
    QEvent style(QEvent::StyleChange);
    QEvent palette(QEvent::PaletteChange);
    stand.plot()->yAxis->setLabelColor(Qt::red);
    QCoreApplication::sendEvent(stand.widget.get(), &style);
    QCOMPARE(stand.plot()->yAxis->labelColor(), QColor(Qt::red));
    QCoreApplication::sendEvent(stand.widget.get(), &palette);
    QCOMPARE(stand.plot()->yAxis->labelColor(), stand.plot()->palette().color(QPalette::Text));
}

NORVO_TEST(tst_VectorGraphWidget)
#include "tst_VectorGraphWidget.moc"
