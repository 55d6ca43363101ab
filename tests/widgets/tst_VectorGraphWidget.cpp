// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "GraphParts.h"
#include "GridPlaces.h"

#include "devices/Label.h"
#include "ArrayColumn.h"
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
    void curveIsInTheColourOfTheCurrentGroup();

    void fiveValuesStandAtOneToFive();
    void secondArrayReplacesTheFirst_data();
    void secondArrayReplacesTheFirst();
    void emptyArrayClearsTheCurve();
    void oneElementIsShown();
    void valueAxisNeverScales();
    void deviceFeedsItsWidget();

    void beforeInitialiseAndAfterDeinitialiseNothingHappens();
    void foreignOrMissingDeviceMakesAnEmptyGraphInSilence();
    void initialiseAgainConnectsAgain();
};

void tst_VectorGraphWidget::declaresItsSlots()
{
    QCOMPARE(methodTable(VectorGraphWidget::staticMetaObject),
             QStringList("slot input(DoubleVec)"));
    const QMetaObject& meta = VectorGraphWidget::staticMetaObject;
    QCOMPARE(meta.method(meta.indexOfSlot("input(DoubleVec)")).parameterNames(),
             QList<QByteArray>{"data"});
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
    QCOMPARE(boundsOf(stand.plot()->xAxis), Bounds(0, 10));
    QCOMPARE(boundsOf(stand.plot()->yAxis), Bounds(-2, 3));
    QCOMPARE(stand.plot()->graphCount(), 1);
    QCOMPARE(pointCount(stand.curve(0)), 0);
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
    QTest::addColumn<ArrayColumn>("array");
    QTest::addColumn<QString>("points");
    QTest::newRow("shorter") << ArrayColumn{DoubleVec{7, 8}} << "(1, 7) (2, 8)";
    QTest::newRow("longer") << ArrayColumn{DoubleVec{7, 8, 9, 10}}
                            << "(1, 7) (2, 8) (3, 9) (4, 10)";
}

void tst_VectorGraphWidget::secondArrayReplacesTheFirst()
{
    QFETCH(ArrayColumn, array);
    const DoubleVec second = array.values;
    QFETCH(QString, points);
    VectorGraph stand;
    stand.graph().input({1, 2, 3});
    stand.graph().input(second);
    QCOMPARE(stand.plot()->graphCount(), 1);
    QCOMPARE(pointsOf(stand.curve(0)), points);
    QCOMPARE(boundsOf(stand.plot()->xAxis), Bounds(1, second.size()));
}

void tst_VectorGraphWidget::emptyArrayClearsTheCurve()
{
    VectorGraph stand;
    stand.graph().input({1, 2, 3});
    stand.graph().input({});
    QCOMPARE(pointCount(stand.curve(0)), 0);
    QCPAxis reference(stand.plot()->axisRect(), QCPAxis::atBottom);
    reference.setRange(1, 3);
    reference.setRange(1, 0);
    QCOMPARE(boundsOf(stand.plot()->xAxis), boundsOf(&reference));
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
    QCOMPARE(boundsOf(stand.plot()->xAxis), boundsOf(&reference));
    QVERIFY(!stand.plot()->toPixmap(200, 100).isNull());
}

void tst_VectorGraphWidget::valueAxisNeverScales()
{
    VectorGraph stand({{"widget/minValue", "-2"}, {"widget/maxValue", "3"}});
    stand.plot()->yAxis->setRange(5, 6);
    stand.graph().input({100, 200});
    QCOMPARE(boundsOf(stand.plot()->yAxis), Bounds(-2, 3));
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
    QTRY_VERIFY(stand.plot()->isVisible());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.device.input({2, 3});
    QCOMPARE(drawn.size(), 2);
    QCOMPARE(pointsOf(stand.curve(0)), QString("(1, 2) (2, 3)"));
    QCOMPARE(pointsOf(oldPlot->graph(0)), QString("(1, 1)"));
}

void tst_VectorGraphWidget::curveIsInTheColourOfTheCurrentGroup()
{
    VectorGraph stand;
    QPalette palette;
    palette.setColor(QPalette::Active, QPalette::Highlight, Qt::red);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, Qt::blue);
    stand.widget->setPalette(palette);
    stand.widget->setEnabled(false);
    stand.widget->initialise();
    QCOMPARE(stand.curve(0)->pen().color(), QColor(Qt::blue));
    stand.widget->setEnabled(true);
    stand.widget->initialise();
    QCOMPARE(stand.curve(0)->pen().color(), QColor(Qt::red));
}

NORVO_TEST(tst_VectorGraphWidget)
#include "tst_VectorGraphWidget.moc"
