// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"
#include "norvo/DoubleVec.h"
#include "TestMain.h"
#include "widgets/CurvePoints.h"

#include <QLabel>
#include <QLibrary>
#include <QPluginLoader>
#include <QtTest>

#include <memory>

/// The graphs of the plug-in as it is built, driven as any host drives them and never shown. The
/// plot library is in the process before the plug-in and has had its own way with arrays.
class tst_GraphsOfThePlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void arrayTypeIsKnownByItsName();
    void queuedWireCarriesArraysBetweenDevices();
    void arrayReachesThePlot();
    void valuesAndSettingsReachThePlot();
    void settingsBeforeTheWidgetReachIt();
    void relayTellsItsSettings();

private:
    std::unique_ptr<BaseDevice> create(const QString& key, const QString& objectName)
    {
        std::unique_ptr<BaseDevice> device(m_manager.createDevice(key));
        device->setObjectName(objectName);
        return device;
    }
    static std::unique_ptr<BaseWidget> widgetOf(BaseDevice& device)
    {
        std::unique_ptr<BaseWidget> widget(dynamic_cast<BaseGuiDevice&>(device).createWidget());
        widget->initialise();
        QCoreApplication::processEvents();
        return widget;
    }
    static bool wire(BaseDevice& from, BaseDevice& to)
    {
        return connect(&from, SIGNAL(output(double)), &to, SLOT(input(double))) &&
               connect(&from, SIGNAL(setName(QString)), &to, SLOT(setName(QString))) &&
               connect(&from, SIGNAL(setColor(QString)), &to, SLOT(setColor(QString))) &&
               connect(&from, SIGNAL(setFilled(bool)), &to, SLOT(setFilled(bool)));
    }
    static void feed(BaseDevice& device, double value)
    {
        QVERIFY(QMetaObject::invokeMethod(&device, "input", Q_ARG(double, value)));
    }

    DeviceManager m_manager;
};

void tst_GraphsOfThePlugin::initTestCase()
{
    QLibrary plot("libQCustomPlot.so.2.1");
    plot.setLoadHints(QLibrary::ExportExternalSymbolsHint);
    QVERIFY2(plot.load(), qPrintable(plot.errorString()));
    const auto plotsTypeId = reinterpret_cast<int (*)()>(
        plot.resolve("_ZN11QMetaTypeIdI7QVectorIdEE14qt_metatype_idEv"));
    QVERIFY2(plotsTypeId, "the plot library no longer exports its array type");
    QCOMPARE(QMetaType::typeName(plotsTypeId()), "QVector<double>");
    QCOMPARE(QMetaType::type("DoubleVec"), 0);

    QPluginLoader loader(NORVO_BUILD_DIR "/plugins/libnorvoguidevices.so");
    auto* const plugin = qobject_cast<DevicePluginInterface*>(loader.instance());
    QVERIFY2(plugin, qPrintable(loader.errorString()));
    plugin->registerDeviceType(m_manager);
}

void tst_GraphsOfThePlugin::arrayTypeIsKnownByItsName()
{
    const auto device = create("output_vector", "vector");
    device->setRunning(device->initialise());
    const auto widget = widgetOf(*device);
    const int type = QMetaType::type("DoubleVec");
    QVERIFY(type != 0);
    QCOMPARE(QMetaType::sizeOf(type), 8);
    QCOMPARE(int(QMetaType::typeFlags(type)), 0x103);
    const int signal = device->metaObject()->indexOfSignal("output(DoubleVec)");
    QVERIFY(signal >= 0);
    QCOMPARE(device->metaObject()->method(signal).parameterType(0), type);
}

void tst_GraphsOfThePlugin::queuedWireCarriesArraysBetweenDevices()
{
    const auto from = create("output_vector", "from");
    const auto to = create("output_vector", "to");
    from->setRunning(from->initialise());
    to->setRunning(to->initialise());
    QVERIFY(connect(from.get(), SIGNAL(output(DoubleVec)), to.get(), SLOT(input(DoubleVec)),
                    Qt::QueuedConnection));
    const auto widget = widgetOf(*to);
    QVERIFY(QMetaObject::invokeMethod(from.get(), "input", Q_ARG(DoubleVec, DoubleVec({5, 6}))));
    auto* const plot = widget->findChild<QCustomPlot*>();
    QCOMPARE(pointCount(plot->graph(0)), 0);
    QTRY_COMPARE(pointCount(plot->graph(0)), 2);
}

void tst_GraphsOfThePlugin::arrayReachesThePlot()
{
    const auto device = create("output_vector", "vector");
    device->setParam("widget/maxValue", "20");
    device->setRunning(device->initialise());
    const auto widget = widgetOf(*device);
    auto* const plot = widget->findChild<QCustomPlot*>();
    QVERIFY(plot);
    QCOMPARE(boundsOf(plot->xAxis), Bounds(0, 10));
    QCOMPARE(boundsOf(plot->yAxis), Bounds(0, 20));
    QVERIFY(
        QMetaObject::invokeMethod(device.get(), "input", Q_ARG(DoubleVec, DoubleVec({5, 6, 7}))));
    QCOMPARE(boundsOf(plot->xAxis), Bounds(1, 3));
    QCOMPARE(pointCount(plot->graph(0)), 3);
    QCOMPARE(pointsOf(plot->graph(0)), QString("(1, 5) (2, 6) (3, 7)"));
    QCOMPARE(plot->graph(0)->pen().color(), plot->palette().color(QPalette::Highlight));
    QCOMPARE(widget->findChild<QLabel*>()->text(), QString("vector"));
}

void tst_GraphsOfThePlugin::valuesAndSettingsReachThePlot()
{
    const auto graph = create("output_graph", "graph");
    const auto a = create("graph_settings", "A");
    const auto b = create("graph_settings", "B");
    QVERIFY(wire(*a, *graph) && wire(*b, *graph));
    a->setParam("name", "Pump");
    a->setParam("fill", "true");
    graph->setParam("widget/timePeriod", "60");
    for (BaseDevice* device : {graph.get(), a.get(), b.get()}) {
        device->setRunning(device->initialise());
    }
    const auto widget = widgetOf(*graph);
    a->postInitialisation();
    feed(*a, 3);
    feed(*b, 4);
    auto* const plot = widget->findChild<QCustomPlot*>();
    QCOMPARE(plot->graphCount(), 2);
    QCOMPARE(plot->graph(0)->name(), QString("Pump"));
    QCOMPARE(plot->graph(0)->pen().color(), QColor("orange"));
    QCOMPARE(plot->graph(0)->brush().color(), QColor(255, 165, 0, 128));
    QCOMPARE(plot->graph(1)->name(), QString("B"));
    QCOMPARE(plot->graph(1)->pen().color(), QColor(Qt::green));
    QVERIFY(pointsOf(plot->graph(1)).endsWith(", 4)"));
    QVERIFY(plot->legend->visible());
    QTRY_COMPARE(boundsOf(plot->yAxis), Bounds(3, 4));
    QVERIFY(qAbs(plot->xAxis->range().size() - 60) < 1e-6);
}

void tst_GraphsOfThePlugin::settingsBeforeTheWidgetReachIt()
{
    const auto graph = create("output_graph", "graph");
    const auto relay = create("graph_settings", "A");
    QVERIFY(wire(*relay, *graph));
    relay->setParam("name", "Pump");
    relay->setParam("color", "blue");
    graph->setRunning(graph->initialise());
    relay->setRunning(relay->initialise());
    relay->postInitialisation();
    const auto widget = widgetOf(*graph);
    auto* const plot = widget->findChild<QCustomPlot*>();
    QCOMPARE(plot->graphCount(), 1);
    QCOMPARE(plot->graph(0)->name(), QString("Pump"));
    QCOMPARE(plot->graph(0)->pen().color(), QColor(Qt::blue));
    QCOMPARE(plot->graph(0)->brush(), QBrush(Qt::NoBrush));
}

void tst_GraphsOfThePlugin::relayTellsItsSettings()
{
    const auto relay = create("graph_settings", "A");
    QVERIFY(!dynamic_cast<BaseGuiDevice*>(relay.get()));
    QSignalSpy colours(relay.get(), SIGNAL(setColor(QString)));
    QSignalSpy names(relay.get(), SIGNAL(setName(QString)));
    QVERIFY(relay->initialise());
    relay->postInitialisation();
    QCOMPARE(colours, QList<QVariantList>({{"orange"}}));
    QCOMPARE(names.size(), 0);
    QCOMPARE(relay->description(), QString("orange"));
}

NORVO_TEST(tst_GraphsOfThePlugin)
#include "tst_GraphsOfThePlugin.moc"
