// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/LumenoBarDevice.h"
#include "norvo/BaseWidget.h"
#include "TestMain.h"

#include <QtTest>

class tst_LumenoBarDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresTheBarsParametersAndFourMore();
    void hasTheBarsSignalAndSlotAlone();
    void descriptionIsTheNameFollowedByBar_data();
    void descriptionIsTheNameFollowedByBar();
    void badParametersDoNotFail();
    void valuesPassWhileRunning();
};

void tst_LumenoBarDevice::declaresTheBarsParametersAndFourMore()
{
    LumenoBarDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"widget/minThreshold = 0", "widget/maxThreshold = 1",
                          "widget/precision = 0", "widget/minValue = 0", "widget/maxValue = 1",
                          "widget/digitsStep = 0.5", "widget/dashesStep = 0.1",
                          "widget/scaleHeight = 0.55", "widget/arrowHeight = 0.45",
                          "widget/name = ", "widget/units = ", "widget/fontSize = 15",
                          "widget/barWidth = 8"}));
}

void tst_LumenoBarDevice::hasTheBarsSignalAndSlotAlone()
{
    QCOMPARE(methodTable(LumenoBarDevice::staticMetaObject), QStringList());
    QCOMPARE(LumenoBarDevice::staticMetaObject.superClass(), &OutputBarDevice::staticMetaObject);
}

void tst_LumenoBarDevice::descriptionIsTheNameFollowedByBar_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("description");
    QTest::newRow("name") << "Oil"
                          << "Oil bar";
    QTest::newRow("line break stays as typed") << "Oil\\npump"
                                               << "Oil\\npump bar";
    QTest::newRow("empty") << ""
                           << " bar";
}

void tst_LumenoBarDevice::descriptionIsTheNameFollowedByBar()
{
    QFETCH(QString, name);
    QFETCH(QString, description);
    LumenoBarDevice device;
    device.setObjectName("oil");
    device.setParam("widget/name", name);
    Recorder recorder(&device, QObject::staticMetaObject);
    QVERIFY(device.initialise());
    QCOMPARE(recorder.take(), QStringList("descriptionChanged(\"" + description + "\")"));
    QCOMPARE(device.getParam("widget/name").value(), name);
}

void tst_LumenoBarDevice::badParametersDoNotFail()
{
    LumenoBarDevice device;
    device.setParam("widget/fontSize", "large");
    device.setParam("widget/maxValue", "plenty");
    QVERIFY(!device.paramsOk());
    QVERIFY(device.initialise());
}

void tst_LumenoBarDevice::valuesPassWhileRunning()
{
    LumenoBarDevice device;
    QVERIFY(device.initialise());
    Recorder recorder(&device);
    device.input(1.0);
    device.setRunning(true);
    device.input(0.25);
    QCOMPARE(recorder.take(), QStringList("output(0.25)"));
}

NORVO_TEST(tst_LumenoBarDevice)
#include "tst_LumenoBarDevice.moc"
