// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/IndicatorDevice.h"
#include "TestMain.h"

#include <QtTest>

class tst_IndicatorDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void captionIsTheDescription();
    void emptyCaptionIsTheObjectNameAndWrittenBack();
    void badFontSizeFailsAfterTheCaptionIsSet();
    void inputIsPassedOnWhileRunning();
    void inputWhileNotRunningIsDropped();
};

void tst_IndicatorDevice::declaresItsParameters()
{
    IndicatorDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"widget/caption = ", "widget/color = green [green, red, yellow]",
                          "widget/fontSize = 15"}));
    QCOMPARE(device.getParam("widget/caption").value(), QString());
}

void tst_IndicatorDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(IndicatorDevice::staticMetaObject),
             QStringList({"signal output(bool)", "slot input(bool)"}));
}

void tst_IndicatorDevice::captionIsTheDescription()
{
    IndicatorDevice device;
    device.setObjectName("lamp");
    device.setParam("widget/caption", "Pump\\non");
    Recorder recorder(&device, QObject::staticMetaObject);
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), QString("Pump\\non"));
    QCOMPARE(recorder.take(), QStringList("descriptionChanged(\"Pump\\non\")"));
}

void tst_IndicatorDevice::emptyCaptionIsTheObjectNameAndWrittenBack()
{
    IndicatorDevice device;
    device.setObjectName("lamp");
    Recorder recorder(&device, QObject::staticMetaObject);
    QVERIFY(device.initialise());
    QCOMPARE(device.getParam("widget/caption").value(), QString("lamp"));
    QCOMPARE(device.description(), QString("lamp"));
    QCOMPARE(recorder.take(), QStringList({"paramChanged(\"widget/caption\", \"lamp\")",
                                           "descriptionChanged(\"lamp\")"}));
}

void tst_IndicatorDevice::badFontSizeFailsAfterTheCaptionIsSet()
{
    IndicatorDevice device;
    device.setObjectName("lamp");
    device.setParam("widget/fontSize", "large");
    QVERIFY(!device.initialise());
    QCOMPARE(device.description(), QString("lamp"));
}

void tst_IndicatorDevice::inputIsPassedOnWhileRunning()
{
    IndicatorDevice device;
    QVERIFY(device.initialise());
    device.setRunning(true);
    Recorder recorder(&device);
    device.input(true);
    device.input(true);
    device.input(false);
    QCOMPARE(recorder.take(), QStringList({"output(true)", "output(true)", "output(false)"}));
}

void tst_IndicatorDevice::inputWhileNotRunningIsDropped()
{
    IndicatorDevice device;
    Recorder recorder(&device);
    device.input(true);
    QVERIFY(device.initialise());
    device.input(true);
    device.setRunning(true);
    device.setRunning(false);
    device.input(true);
    device.input(false);
    QCOMPARE(recorder.take(), QStringList());
}

NORVO_TEST(tst_IndicatorDevice)
#include "tst_IndicatorDevice.moc"
