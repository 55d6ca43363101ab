// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "GraphParts.h"
#include "GridPlaces.h"

#include "devices/GraphSettingsDevice.h"
#include "devices/Label.h"
#include "TestMain.h"

#include <QtTest>

#include <limits>

/// What initialise() builds; curves and time are for the other tests of the class.
class tst_GraphOutputWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlots();
    void captionAndPlotStandInTheGrid();
    void emptyNameShowsTheObjectName();
    void captionIsLightAndLarge();
    void sizePoliciesAreTheirs();
    void thresholdsAreDarkRedLines();
    void thresholdsAreDrawnAcrossThePlot();
    void valueAxisStartsWithItsParameters();
    void noLegendWithoutSenders();
    void isReadyWithoutEverBeingShown();

    void beforeInitialiseNothingHappens();
    void foreignOrMissingDeviceMakesAnEmptyGraphInSilence();
    void deviceFeedsItsWidget();
    void settingsBeforeTheWidgetReachItAfterwards();
    void initialisedAgainItGoesByItsNewParameters();
    void nameOfARelayChangesItsCurveOnly();
};

void tst_GraphOutputWidget::declaresItsSlots()
{
    QCOMPARE(methodTable(GraphOutputWidget::staticMetaObject),
             QStringList({"slot input(double,QString,double)", "slot inputFill(QString,bool)",
                          "slot inputColor(QString,QString)", "slot inputName(QString,QString)",
                          "slot updateGraph() (not public)"}));
}

void tst_GraphOutputWidget::captionAndPlotStandInTheGrid()
{
    TimeGraph stand({{"name", "Boiler"}});
    const QGridLayout& grid = *stand.widget->getLayout();
    QCOMPARE(grid.count(), 2);
    QCOMPARE(stand.caption()->text(), QString("Boiler"));
    QCOMPARE(placeOf(stand.caption(), grid), QString("row 0, column 0, 1 x 1, alignment 0x20"));
    QCOMPARE(placeOf(stand.plot(), grid), QString("row 1, column 0, 1 x 1, alignment 0x0"));
    QCOMPARE(grid.rowStretch(0), 1);
    QCOMPARE(grid.rowStretch(1), 100);
    QVERIFY(stand.widget->isInitialised());
}

void tst_GraphOutputWidget::emptyNameShowsTheObjectName()
{
    TimeGraph stand;
    QCOMPARE(stand.caption()->text(), QString("device"));
}

void tst_GraphOutputWidget::captionIsLightAndLarge()
{
    TimeGraph stand;
    const QFont font = stand.caption()->font();
    QCOMPARE(font.family(), QString("Arial"));
    QCOMPARE(font.pointSize(), 16);
    QCOMPARE(font.weight(), 3);
    QVERIFY(!font.italic());
    QCOMPARE(stand.caption()->styleSheet(),
             QString("QWidget { background-color: palette(alternate-base); border: 1px solid "
                     "palette(base); border-radius: 5px; }"));
}

void tst_GraphOutputWidget::sizePoliciesAreTheirs()
{
    TimeGraph stand;
    const QSizePolicy expanding(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QCOMPARE(stand.widget->sizePolicy(), expanding);
    QCOMPARE(stand.plot()->sizePolicy(), expanding);
    QCOMPARE(stand.caption()->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum));
}

void tst_GraphOutputWidget::thresholdsAreDarkRedLines()
{
    TimeGraph stand({{"widget/minThreshold", "-2.5"}, {"widget/maxThreshold", "40"}});
    QCOMPARE(stand.plot()->itemCount(), 2);
    const QVector<double> thresholds{-2.5, 40};
    for (int i = 0; i < 2; ++i) {
        auto* const line = qobject_cast<QCPItemStraightLine*>(stand.plot()->item(i));
        QVERIFY(line);
        QVERIFY(line->point1->coords() ==
                QPointF(std::numeric_limits<double>::min(), thresholds[i]));
        QVERIFY(line->point2->coords() ==
                QPointF(std::numeric_limits<double>::max(), thresholds[i]));
        QCOMPARE(line->pen(),
                 QPen(QColor(Qt::darkRed), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        QCOMPARE(line->pen().widthF(), 1.0);
    }
}

void tst_GraphOutputWidget::thresholdsAreDrawnAcrossThePlot()
{
    TimeGraph stand({{"widget/autoscale", "false"},
                     {"widget/minThreshold", "0.25"},
                     {"widget/maxThreshold", "0.75"}});
    QVERIFY(stand.show());
    stand.refresh();
    const QImage image = stand.plot()->toPixmap(400, 300).toImage();
    const QRect area = stand.plot()->axisRect()->rect();
    for (double threshold : {0.25, 0.75}) {
        const int y = qRound(stand.plot()->yAxis->coordToPixel(threshold));
        for (int x : {area.left() + 13, area.center().x() + 7, area.right() - 13}) {
            const QColor above = image.pixelColor(x, y - 1);
            const QColor at = image.pixelColor(x, y);
            const QColor below = image.pixelColor(x, y + 1);
            const int reddest = qMax(at.red() - at.green(), qMax(above.red() - above.green(),
                                                                 below.red() - below.green()));
            QVERIFY2(reddest > 50, qPrintable(QString("%1 at %2").arg(threshold).arg(x)));
        }
    }
}

void tst_GraphOutputWidget::valueAxisStartsWithItsParameters()
{
    TimeGraph stand({{"widget/minValue", "-3"}, {"widget/maxValue", "7.5"}});
    QCOMPARE(boundsOf(stand.plot()->yAxis), Bounds(-3, 7.5));
}

void tst_GraphOutputWidget::noLegendWithoutSenders()
{
    TimeGraph stand;
    QVERIFY(!stand.plot()->legend->visible());
    QCOMPARE(stand.plot()->graphCount(), 0);
    QCOMPARE(stand.plot()->antialiasedElements(), QCP::AntialiasedElements(0xFFFF));
}

void tst_GraphOutputWidget::isReadyWithoutEverBeingShown()
{
    TimeGraph stand;
    const double now = secondsNow();
    stand.input(5, "A", now);
    stand.input(7, "B", now);
    stand.graph().inputFill("A", true);
    stand.refresh();
    auto* const plot = stand.widget->findChild<QCustomPlot*>();
    QVERIFY(plot);
    QCOMPARE(pointCount(plot->graph(0)), 1);
    QCOMPARE(plot->graph(1)->name(), QString("B"));
    QCOMPARE(plot->graph(0)->brush(), QBrush(QColor(250, 140, 0, 128)));
    QVERIFY(plot->legend->visible());
    QCOMPARE(boundsOf(plot->yAxis), Bounds(5, 7));
    QVERIFY(plot->xAxis->range().upper >= now);
    QCOMPARE(plot->toPixmap(200, 100).toImage().pixelColor(1, 1),
             plot->palette().color(QPalette::Base));
}

void tst_GraphOutputWidget::beforeInitialiseNothingHappens()
{
    OutputGraphDevice device;
    GraphOutputWidget widget(&device, nullptr);
    widget.input(1, "A", 2);
    widget.inputFill("A", true);
    widget.inputColor("A", "red");
    widget.inputName("A", "Pump");
    QMetaObject::invokeMethod(&widget, "updateGraph");
    QEvent palette(QEvent::PaletteChange);
    QCoreApplication::sendEvent(&widget, &palette);
    QVERIFY(!widget.isInitialised());
    QVERIFY(widget.findChildren<QWidget*>().isEmpty());
}

void tst_GraphOutputWidget::foreignOrMissingDeviceMakesAnEmptyGraphInSilence()
{
    Label label;
    for (BaseGuiDevice* device : QVector<BaseGuiDevice*>{&label, nullptr}) {
        GraphOutputWidget widget(device, nullptr);
        widget.initialise(); // a connection that Qt refuses would fail the test
        widget.input(1, "A", 2);
        QVERIFY(widget.isInitialised());
        QCOMPARE(widget.findChild<QCustomPlot*>()->graphCount(), 1);
    }
}

void tst_GraphOutputWidget::deviceFeedsItsWidget()
{
    TimeGraph stand;
    GraphSettingsDevice relay;
    relay.setObjectName("pump");
    QObject::connect(&relay, SIGNAL(output(double)), &stand.device, SLOT(input(double)));
    QObject::connect(&relay, SIGNAL(setName(QString)), &stand.device, SLOT(setName(QString)));
    QObject::connect(&relay, SIGNAL(setColor(QString)), &stand.device, SLOT(setColor(QString)));
    QObject::connect(&relay, SIGNAL(setFilled(bool)), &stand.device, SLOT(setFilled(bool)));
    stand.device.input(1.0);
    QCOMPARE(stand.plot()->graphCount(), 0);
    relay.input(2.5);
    QCOMPARE(stand.plot()->graphCount(), 1);
    QCOMPARE(stand.curve(0)->name(), QString("pump"));
    QCOMPARE(pointCount(stand.curve(0)), 1);
    QVERIFY(pointsOf(stand.curve(0)).endsWith(", 2.5)"));
    emit relay.setName("Pump");
    emit relay.setColor("red");
    emit relay.setFilled(true);
    QCOMPARE(stand.curve(0)->name(), QString("Pump"));
    QCOMPARE(stand.curve(0)->pen().color(), QColor("red"));
    QCOMPARE(stand.curve(0)->brush(), QBrush(QColor(255, 0, 0, 128)));
}

void tst_GraphOutputWidget::settingsBeforeTheWidgetReachItAfterwards()
{
    OutputGraphDevice device;
    device.setRunning(device.initialise());
    GraphSettingsDevice relay;
    relay.setObjectName("pump");
    QObject::connect(&relay, SIGNAL(setName(QString)), &device, SLOT(setName(QString)));
    QObject::connect(&relay, SIGNAL(setColor(QString)), &device, SLOT(setColor(QString)));
    QObject::connect(&relay, SIGNAL(setFilled(bool)), &device, SLOT(setFilled(bool)));
    emit relay.setName("Pump");
    emit relay.setColor("blue");
    emit relay.setFilled(true);
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    widget->initialise();
    auto* const plot = widget->findChild<QCustomPlot*>();
    QCOMPARE(plot->graphCount(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(plot->graphCount(), 1);
    QCOMPARE(plot->graph(0)->name(), QString("Pump"));
    QCOMPARE(plot->graph(0)->pen().color(), QColor(Qt::blue));
    QCOMPARE(plot->graph(0)->brush(), QBrush(QColor(0, 0, 255, 128)));
    QCOMPARE(pointCount(plot->graph(0)), 0);
}

void tst_GraphOutputWidget::nameOfARelayChangesItsCurveOnly()
{
    TimeGraph stand;
    GraphSettingsDevice a;
    GraphSettingsDevice b;
    a.setObjectName("A");
    b.setObjectName("B");
    for (GraphSettingsDevice* relay : {&a, &b}) {
        QObject::connect(relay, SIGNAL(output(double)), &stand.device, SLOT(input(double)));
        QObject::connect(relay, SIGNAL(setName(QString)), &stand.device, SLOT(setName(QString)));
    }
    b.input(1);
    a.input(2);
    emit a.setName("Pump");
    QCOMPARE(stand.legend(), QStringList({"B", "Pump"}));
    QVERIFY(pointsOf(stand.curve(1)).endsWith(", 2)"));
}

void tst_GraphOutputWidget::initialisedAgainItGoesByItsNewParameters()
{
    TimeGraph stand({{"widget/timePeriod", "10"}, {"widget/timeout", "1"}});
    const TimeGraph::Params changed{{"name", "other"},           {"widget/timePeriod", "1000"},
                                    {"widget/timeout", "5"},     {"widget/autoscale", "false"},
                                    {"widget/minValue", "-3"},   {"widget/maxValue", "7"},
                                    {"widget/minThreshold", "2"}};
    for (auto param = changed.cbegin(); param != changed.cend(); ++param) {
        stand.device.setParam(param.key(), param.value());
    }
    stand.widget->deinitialise();
    stand.widget->initialise();
    QCOMPARE(stand.caption()->text(), QString("other"));
    QCOMPARE(stand.plot()->xAxis->range().size(), 1000.0);
    QCOMPARE(stand.plot()->yAxis->range().lower, -3.0);
    QCOMPARE(stand.plot()->yAxis->range().upper, 7.0);
    const double now = secondsNow();
    stand.input(1, "A", now - 60);
    stand.input(2, "A", now - 56);
    stand.input(3, "A", now - 50);
    QCOMPARE(stand.plot()->graphCount(), 2); // four seconds are no pause any more, six are
    QCOMPARE(stand.curve(0)->data()->size(), 2);
    auto* const line = qobject_cast<QCPItemStraightLine*>(stand.plot()->item(0));
    QCOMPARE(line->point1->value(), 2.0);
}

NORVO_TEST(tst_GraphOutputWidget)
#include "tst_GraphOutputWidget.moc"
