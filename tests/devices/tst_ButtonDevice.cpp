// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/ButtonDevice.h"
#include "TestMain.h"

#include <QtTest>

class tst_ButtonDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void latchedStateAloneIsKeptAcrossStarts();

    void initialStateIsEmittedOnceInToggleMode_data();
    void initialStateIsEmittedOnceInToggleMode();
    void clickModeHasNoInitialEmission();
    void modeIsComparedWithCase();
    void badParametersDoNotFailInitialise();

    void changeIsWrittenThenEmittedThenStored();
    void setToggledToTheCurrentStateDoesNothing();
    void setToggledWithoutArgumentLatchesOn();
    void toggleFlipsInToggleMode();
    void toggleInClickModeOnlyClicks();
    void setToggledInClickModeStillWritesAndEmits();
    void clickEmitsInEitherMode();

private:
    static void start(ButtonDevice& device, const QString& mode, const QString& toggled = "false")
    {
        device.setParam("mode", mode);
        device.setParam("toggled", toggled);
        QVERIFY(device.initialise());
    }
};

void tst_ButtonDevice::declaresItsParameters()
{
    ButtonDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"text = ", "toggled = false", "mode = toggle [toggle, click]",
                          "widget/fontSize = 10"}));
}

void tst_ButtonDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(ButtonDevice::staticMetaObject),
             QStringList({"signal toggled(bool)", "signal clicked()", "slot setToggled(bool)",
                          "slot setToggled()", "slot toggle()", "slot click()"}));
}

void tst_ButtonDevice::latchedStateAloneIsKeptAcrossStarts()
{
    ButtonDevice device;
    QStringList kept;
    const QStringList names = device.paramNames();
    for (const QString& name : names) {
        if (device.getParam(name).isPersistent()) {
            kept.append(name);
        }
    }
    QCOMPARE(kept, QStringList("toggled"));
}

void tst_ButtonDevice::initialStateIsEmittedOnceInToggleMode_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("emitted");
    QTest::newRow("on") << "true"
                        << "toggled(true)";
    QTest::newRow("off") << "false"
                         << "toggled(false)";
}

void tst_ButtonDevice::initialStateIsEmittedOnceInToggleMode()
{
    QFETCH(QString, stored);
    QFETCH(QString, emitted);
    ButtonDevice device;
    Recorder recorder(&device);
    start(device, "toggle", stored);
    QCOMPARE(recorder.take(), QStringList());
    device.postInitialisation();
    QCOMPARE(recorder.take(), QStringList(emitted));
    QCOMPARE(device.isToggled(), stored == "true");
}

void tst_ButtonDevice::clickModeHasNoInitialEmission()
{
    ButtonDevice device;
    Recorder recorder(&device);
    start(device, "click", "true");
    device.postInitialisation();
    QCOMPARE(recorder.take(), QStringList());
    QVERIFY(device.isToggled());
}

void tst_ButtonDevice::modeIsComparedWithCase()
{
    ButtonDevice device;
    Recorder recorder(&device);
    start(device, "Toggle");
    device.postInitialisation();
    device.toggle();
    QCOMPARE(recorder.take(), QStringList("clicked()"));
    QVERIFY(!device.isToggled());
}

void tst_ButtonDevice::badParametersDoNotFailInitialise()
{
    ButtonDevice device;
    device.setParam("widget/fontSize", "big");
    QVERIFY(!device.paramsOk());
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), QString());
}

void tst_ButtonDevice::changeIsWrittenThenEmittedThenStored()
{
    ButtonDevice device;
    start(device, "toggle");
    Recorder recorder(&device, QObject::staticMetaObject);
    QVector<bool> statesMeanwhile;
    connect(&device, &BaseDevice::paramChanged, this,
            [&] { statesMeanwhile.append(device.isToggled()); });
    connect(&device, &ButtonDevice::toggled, this,
            [&] { statesMeanwhile.append(device.isToggled()); });

    device.setToggled(true);
    QCOMPARE(recorder.take(),
             QStringList({"paramChanged(\"toggled\", \"true\")", "toggled(true)"}));
    QCOMPARE(statesMeanwhile, QVector<bool>({false, false}));
    QVERIFY(device.isToggled());
    QCOMPARE(device.getParam("toggled").value(), QString("true"));

    statesMeanwhile.clear();
    device.setToggled(false);
    QCOMPARE(recorder.take(),
             QStringList({"paramChanged(\"toggled\", \"false\")", "toggled(false)"}));
    QCOMPARE(statesMeanwhile, QVector<bool>({true, true}));
    QVERIFY(!device.isToggled());
    QCOMPARE(device.getParam("toggled").value(), QString("false"));
}

void tst_ButtonDevice::setToggledToTheCurrentStateDoesNothing()
{
    ButtonDevice device;
    start(device, "toggle", "yes"); // reads as true; a write would turn the text into "true"
    Recorder recorder(&device, QObject::staticMetaObject);
    device.setToggled(true);
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(device.getParam("toggled").value(), QString("yes"));
}

void tst_ButtonDevice::setToggledWithoutArgumentLatchesOn()
{
    ButtonDevice device;
    start(device, "toggle");
    Recorder recorder(&device);
    QVERIFY(QMetaObject::invokeMethod(&device, "setToggled"));
    QCOMPARE(recorder.take(), QStringList("toggled(true)"));
    QVERIFY(device.isToggled());
    QVERIFY(QMetaObject::invokeMethod(&device, "setToggled"));
    QCOMPARE(recorder.take(), QStringList());
    QVERIFY(device.isToggled());
}

void tst_ButtonDevice::toggleFlipsInToggleMode()
{
    ButtonDevice device;
    start(device, "toggle");
    Recorder recorder(&device);
    device.toggle();
    device.toggle();
    QCOMPARE(recorder.take(), QStringList({"toggled(true)", "toggled(false)"}));
}

void tst_ButtonDevice::toggleInClickModeOnlyClicks()
{
    ButtonDevice device;
    start(device, "click");
    Recorder recorder(&device, QObject::staticMetaObject);
    device.toggle();
    QCOMPARE(recorder.take(), QStringList("clicked()"));
    QVERIFY(!device.isToggled());
}

void tst_ButtonDevice::setToggledInClickModeStillWritesAndEmits()
{
    ButtonDevice device;
    start(device, "click");
    Recorder recorder(&device);
    device.setToggled(true);
    QCOMPARE(recorder.take(), QStringList("toggled(true)"));
    QCOMPARE(device.getParam("toggled").value(), QString("true"));
    QVERIFY(device.isToggled());
}

void tst_ButtonDevice::clickEmitsInEitherMode()
{
    for (const char* mode : {"toggle", "click"}) {
        ButtonDevice device;
        start(device, mode);
        Recorder recorder(&device);
        device.click();
        QCOMPARE(recorder.take(), QStringList("clicked()"));
        QVERIFY(!device.isToggled());
    }
}

NORVO_GUILESS_TEST(tst_ButtonDevice)
#include "tst_ButtonDevice.moc"
