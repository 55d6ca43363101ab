// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/SliderDevice.h"
#include "TestMain.h"

#include <QtTest>

class tst_SliderDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void startEmitsNothing();
    void inputGoesToTheWidgetAndNowhereElse();
    void widgetsValueIsTheOutput();
    void widgetsMethodsAreListedOnlyWhenAskedFor_data();
    void widgetsMethodsAreListedOnlyWhenAskedFor();
};

void tst_SliderDevice::declaresItsParameters()
{
    SliderDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"widget/minValue = 0", "widget/maxValue = 100", "widget/step = 1",
                          "widget/orientation = vertical [horizontal, vertical]"}));
}

void tst_SliderDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(SliderDevice::staticMetaObject),
             QStringList({"signal wgOutput(double)", "signal output(double)",
                          "slot wgInput(double)", "slot input(double)"}));
}

void tst_SliderDevice::startEmitsNothing()
{
    SliderDevice device;
    Recorder recorder(&device, QObject::staticMetaObject);
    QVERIFY(device.initialise());
    device.setRunning(true);
    device.postInitialisation();
    QCOMPARE(recorder.take(), QStringList());
}

void tst_SliderDevice::inputGoesToTheWidgetAndNowhereElse()
{
    SliderDevice device;
    Recorder recorder(&device);
    device.input(42.9);
    QCOMPARE(recorder.take(), QStringList("wgOutput(42.9)"));
}

void tst_SliderDevice::widgetsValueIsTheOutput()
{
    SliderDevice device;
    Recorder recorder(&device);
    device.wgInput(7);
    device.wgInput(7);
    QCOMPARE(recorder.take(), QStringList({"output(7)", "output(7)"}));
}

void tst_SliderDevice::widgetsMethodsAreListedOnlyWhenAskedFor_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("flag");
    QTest::addColumn<QStringList>("methods");
    const int signal = QMetaMethod::Signal;
    const int slot = QMetaMethod::Slot;
    QTest::newRow("signals") << "" << signal << false << QStringList{"output(double)"};
    QTest::newRow("slots") << "" << slot << false << QStringList{"input(double)"};
    QTest::newRow("all signals") << "" << signal << true
                                 << QStringList{"wgOutput(double)", "output(double)"};
    QTest::newRow("all slots") << "" << slot << true
                               << QStringList{"wgInput(double)", "input(double)"};
    QTest::newRow("by name") << "output" << signal << false << QStringList{"output(double)"};
    QTest::newRow("hidden name") << "wgOutput" << signal << false << QStringList{};
    QTest::newRow("hidden name, all")
        << "wgOutput" << signal << true << QStringList{"wgOutput(double)"};
}

void tst_SliderDevice::widgetsMethodsAreListedOnlyWhenAskedFor()
{
    QFETCH(QString, name);
    QFETCH(int, type);
    QFETCH(bool, flag);
    QFETCH(QStringList, methods);
    SliderDevice device;
    QCOMPARE(device.grabMethods(name, QMetaMethod::MethodType(type), flag), methods);
}

NORVO_TEST(tst_SliderDevice)
#include "tst_SliderDevice.moc"
