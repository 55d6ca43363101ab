// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/GraphSettingsDevice.h"
#include "devices/OutputGraphDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <cstring>

class tst_GraphSettingsDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void isNoGuiDeviceAndSaysSo();

    void describesItself_data();
    void describesItself();
    void everyTextIsUsable();
    void settingsGoOutOnceInTheirOrder_data();
    void settingsGoOutOnceInTheirOrder();
    void parametersAreReadByInitialiseOnly();
    void valuesPassInOrderAndUnchangedFromTheFirst();
    void settingsReachTheCurveThatTheRelayFeeds();

private:
    static void set(GraphSettingsDevice& relay, const QStringList& nameColorFill)
    {
        relay.setParam("name", nameColorFill[0]);
        relay.setParam("color", nameColorFill[1]);
        relay.setParam("fill", nameColorFill[2]);
    }
};

void tst_GraphSettingsDevice::declaresItsParameters()
{
    GraphSettingsDevice relay;
    QCOMPARE(parameterTable(relay), QStringList({"color = orange", "fill = false", "name = "}));
    QCOMPARE(relay.paramNames(), QStringList({"color", "fill", "name"}));
}

void tst_GraphSettingsDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(
        methodTable(GraphSettingsDevice::staticMetaObject),
        QStringList({"signal setName(QString)", "signal setColor(QString)",
                     "signal setFilled(bool)", "signal output(double)", "slot input(double)"}));
}

void tst_GraphSettingsDevice::isNoGuiDeviceAndSaysSo()
{
    GraphSettingsDevice relay;
    QVERIFY(!relay.inherits("BaseGuiDevice"));
    const DeviceTypeInfo info = GraphSettingsDevice::typeInfo();
    QCOMPARE(info.title, QString());
    QCOMPARE(info.description, QString());
    QCOMPARE(info.categories, QStringList("GUI"));
    QCOMPARE(info.kind, 0);
    QCOMPARE(info.flag, 0);
    QCOMPARE(info.widgetGroup, QString("widget"));
}

void tst_GraphSettingsDevice::describesItself_data()
{
    QTest::addColumn<QStringList>("nameColorFill");
    QTest::addColumn<QString>("description");
    QTest::newRow("name and one space") << QStringList{"Pump", "red", "false"} << "Pump ";
    QTest::newRow("no name: the colour") << QStringList{"", "orange", "false"} << "orange";
    QTest::newRow("neither") << QStringList{"", "", "true"} << "";
}

void tst_GraphSettingsDevice::describesItself()
{
    QFETCH(QStringList, nameColorFill);
    QFETCH(QString, description);
    GraphSettingsDevice relay;
    relay.setObjectName("relay");
    set(relay, nameColorFill);
    QVERIFY(relay.initialise());
    QCOMPARE(relay.description(), description);
    QCOMPARE(relay.getParam("name").value(), nameColorFill[0]);
}

void tst_GraphSettingsDevice::everyTextIsUsable()
{
    GraphSettingsDevice relay;
    set(relay, {"", "no colour", "perhaps"});
    QVERIFY(!relay.paramsOk());
    QVERIFY(relay.initialise());
    Recorder recorder(&relay);
    relay.postInitialisation();
    QCOMPARE(recorder.take(), QStringList({"setColor(\"no colour\")", "setFilled(false)"}));
}

void tst_GraphSettingsDevice::settingsGoOutOnceInTheirOrder_data()
{
    QTest::addColumn<QStringList>("nameColorFill");
    QTest::addColumn<QStringList>("emitted");
    QTest::newRow("all three") << QStringList{"Pump", "red", "true"}
                               << QStringList{"setName(\"Pump\")", "setColor(\"red\")",
                                              "setFilled(true)"};
    QTest::newRow("fill false is sent")
        << QStringList{"Pump", "red", "false"}
        << QStringList{"setName(\"Pump\")", "setColor(\"red\")", "setFilled(false)"};
    QTest::newRow("no name is not sent") << QStringList{"", "orange", "false"}
                                         << QStringList{"setColor(\"orange\")", "setFilled(false)"};
    QTest::newRow("no colour is not sent")
        << QStringList{"Pump", "", "false"} << QStringList{"setName(\"Pump\")", "setFilled(false)"};
    QTest::newRow("fill alone") << QStringList{"", "", "true"} << QStringList{"setFilled(true)"};
}

void tst_GraphSettingsDevice::settingsGoOutOnceInTheirOrder()
{
    QFETCH(QStringList, nameColorFill);
    QFETCH(QStringList, emitted);
    GraphSettingsDevice relay;
    set(relay, nameColorFill);
    Recorder recorder(&relay);
    relay.initialise();
    QCOMPARE(recorder.take(), QStringList());
    relay.postInitialisation();
    QCOMPARE(recorder.take(), emitted);
}

void tst_GraphSettingsDevice::parametersAreReadByInitialiseOnly()
{
    GraphSettingsDevice relay;
    set(relay, {"Pump", "red", "false"});
    relay.initialise();
    set(relay, {"Valve", "blue", "true"});
    Recorder recorder(&relay);
    relay.postInitialisation();
    QCOMPARE(recorder.take(),
             QStringList({"setName(\"Pump\")", "setColor(\"red\")", "setFilled(false)"}));
    relay.initialise();
    relay.postInitialisation();
    QCOMPARE(recorder.take(),
             QStringList({"setName(\"Valve\")", "setColor(\"blue\")", "setFilled(true)"}));
}

void tst_GraphSettingsDevice::valuesPassInOrderAndUnchangedFromTheFirst()
{
    GraphSettingsDevice relay;
    QVector<double> passed;
    connect(&relay, &GraphSettingsDevice::output, this, [&](double v) { passed.append(v); });
    const QVector<double> values{0.1 + 0.2, -0.0, 1e308, -qInf()};
    relay.input(values[0]);
    relay.initialise();
    relay.input(values[1]);
    relay.postInitialisation();
    relay.input(values[2]);
    relay.setRunning(true);
    relay.input(values[3]);
    QCOMPARE(passed.size(), values.size());
    for (int i = 0; i < values.size(); ++i) {
        QVERIFY2(std::memcmp(&passed[i], &values[i], sizeof(double)) == 0,
                 qPrintable(QString::number(passed[i], 'g', 17)));
    }
    relay.input(qQNaN());
    QVERIFY(qIsNaN(passed.last()));
}

void tst_GraphSettingsDevice::settingsReachTheCurveThatTheRelayFeeds()
{
    GraphSettingsDevice relay;
    relay.setObjectName("A");
    set(relay, {"Pump", "red", "true"});
    OutputGraphDevice graph;
    graph.setRunning(graph.initialise());
    connect(&relay, SIGNAL(setName(QString)), &graph, SLOT(setName(QString)));
    connect(&relay, SIGNAL(setColor(QString)), &graph, SLOT(setColor(QString)));
    connect(&relay, SIGNAL(setFilled(bool)), &graph, SLOT(setFilled(bool)));
    Recorder recorder(&graph);
    relay.initialise();
    relay.postInitialisation();
    QCOMPARE(recorder.take(),
             QStringList({"outputName(\"A\", \"Pump\")", "outputColor(\"A\", \"red\")",
                          "outputFill(\"A\", true)"}));
}

NORVO_GUILESS_TEST(tst_GraphSettingsDevice)
#include "tst_GraphSettingsDevice.moc"
