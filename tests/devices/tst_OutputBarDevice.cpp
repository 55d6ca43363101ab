// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/OutputBarDevice.h"
#include "norvo/BaseWidget.h"
#include "TestMain.h"

#include <QtTest>

#include <limits>

class tst_OutputBarDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void descriptionIsBar();
    void badParameterFailsAfterTheDescriptionIsSet_data();
    void badParameterFailsAfterTheDescriptionIsSet();
    void valuesPassUnchangedWhileRunning();
    void valuesWhileNotRunningAreDropped();
};

void tst_OutputBarDevice::declaresItsParameters()
{
    OutputBarDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"widget/minThreshold = 0", "widget/maxThreshold = 1",
                          "widget/precision = 0", "widget/minValue = 0", "widget/maxValue = 1",
                          "widget/digitsStep = 0.5", "widget/dashesStep = 0.1",
                          "widget/scaleHeight = 0.55", "widget/arrowHeight = 0.45"}));
}

void tst_OutputBarDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(OutputBarDevice::staticMetaObject),
             QStringList({"signal output(double)", "slot input(double)"}));
}

void tst_OutputBarDevice::descriptionIsBar()
{
    OutputBarDevice device;
    device.setObjectName("pressure");
    Recorder recorder(&device, QObject::staticMetaObject);
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), QString("BAR"));
    QCOMPARE(recorder.take(), QStringList("descriptionChanged(\"BAR\")"));
}

void tst_OutputBarDevice::badParameterFailsAfterTheDescriptionIsSet_data()
{
    QTest::addColumn<QString>("name");
    OutputBarDevice device;
    const QStringList table = parameterTable(device);
    for (const QString& line : table) {
        const QString name = line.section(" = ", 0, 0);
        QTest::newRow(qPrintable(name)) << name;
    }
}

void tst_OutputBarDevice::badParameterFailsAfterTheDescriptionIsSet()
{
    QFETCH(QString, name);
    OutputBarDevice device;
    device.setParam(name, "plenty");
    QVERIFY(!device.initialise());
    QCOMPARE(device.description(), QString("BAR"));
}

void tst_OutputBarDevice::valuesPassUnchangedWhileRunning()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    OutputBarDevice device;
    device.setRunning(device.initialise());
    Recorder recorder(&device);
    for (const double value : {0.25, 0.25, -7.0, 1e300, infinity}) {
        device.input(value);
    }
    QCOMPARE(recorder.take(), QStringList({"output(0.25)", "output(0.25)", "output(-7)",
                                           "output(1e+300)", "output(inf)"}));
}

void tst_OutputBarDevice::valuesWhileNotRunningAreDropped()
{
    OutputBarDevice device;
    Recorder recorder(&device);
    device.input(0.25);
    QVERIFY(device.initialise());
    device.input(0.25);
    device.setRunning(true);
    device.setRunning(false);
    device.input(0.25);
    QCOMPARE(recorder.take(), QStringList());
}

NORVO_TEST(tst_OutputBarDevice)
#include "tst_OutputBarDevice.moc"
