// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/CheckBoxDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>

class tst_CheckBoxDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void startEmitsNothing();
    void stateLeavesAsYesOrNoThenAsNumber();
    void repeatedStateIsPassedOn();
    void numberAboveEpsilonIsYes_data();
    void numberAboveEpsilonIsYes();
};

void tst_CheckBoxDevice::declaresItsParameters()
{
    CheckBoxDevice device;
    QCOMPARE(parameterTable(device), QStringList({"widget/label = ", "widget/size = 16"}));
}

void tst_CheckBoxDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(CheckBoxDevice::staticMetaObject),
             QStringList({"signal output(bool)", "signal output(double)", "slot input(bool)",
                          "slot input(double)"}));
}

void tst_CheckBoxDevice::startEmitsNothing()
{
    CheckBoxDevice device;
    Recorder recorder(&device, QObject::staticMetaObject);
    QVERIFY(device.initialise());
    device.setRunning(true);
    device.postInitialisation();
    QCOMPARE(recorder.take(), QStringList());
}

void tst_CheckBoxDevice::stateLeavesAsYesOrNoThenAsNumber()
{
    CheckBoxDevice device;
    Recorder recorder(&device);
    device.input(true);
    QCOMPARE(recorder.take(), QStringList({"output(true)", "output(1)"}));
    device.input(false);
    QCOMPARE(recorder.take(), QStringList({"output(false)", "output(0)"}));
}

void tst_CheckBoxDevice::repeatedStateIsPassedOn()
{
    CheckBoxDevice device;
    device.input(true);
    Recorder recorder(&device);
    device.input(true);
    QCOMPARE(recorder.take(), QStringList({"output(true)", "output(1)"}));
}

void tst_CheckBoxDevice::numberAboveEpsilonIsYes_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<bool>("yes");
    constexpr double epsilon = 1.1920928955078125e-07;
    QTest::newRow("0.5") << 0.5 << true;
    QTest::newRow("1e-9") << 1e-9 << false;
    QTest::newRow("-3") << -3.0 << false;
    QTest::newRow("0") << 0.0 << false;
    QTest::newRow("epsilon itself") << epsilon << false;
    QTest::newRow("next above epsilon") << std::nextafter(epsilon, 1.0) << true;
    QTest::newRow("NaN") << qQNaN() << false;
    QTest::newRow("infinity") << qInf() << true;
    QTest::newRow("minus infinity") << -qInf() << false;
}

void tst_CheckBoxDevice::numberAboveEpsilonIsYes()
{
    QFETCH(double, number);
    QFETCH(bool, yes);
    CheckBoxDevice device;
    Recorder recorder(&device);
    device.input(number);
    QCOMPARE(recorder.take(), yes ? QStringList({"output(true)", "output(1)"})
                                  : QStringList({"output(false)", "output(0)"}));
}

NORVO_TEST(tst_CheckBoxDevice)
#include "tst_CheckBoxDevice.moc"
