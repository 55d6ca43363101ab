// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"

#include "devices/InputDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <limits>

class tst_InputDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void startsWithoutAValue();
    void valueOutlivesANewStart();
    void initialiseReadsTheParameters();
    void initialiseAnswersWhetherTheParametersAreOk();
    void decimalsAreCutTowardZero_data();
    void decimalsAreCutTowardZero();
};

void tst_InputDevice::declaresItsParameters()
{
    InputDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"type = spin [string, int, double, spin]",
                          "layout = vertical [vertical, horizontal]", "name = ", "units = ",
                          "min = 0", "max = 1", "value step = 0.1", "decimals = 2",
                          "use screen numpad = false when type is int or double or spin",
                          "use screen keyboard = false when type is string"}));
}

void tst_InputDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(
        methodTable(InputDevice::staticMetaObject),
        QStringList({"signal output(double)", "signal output(QString)", "signal wgOutput(QString)",
                     "signal wgOutput(double)", "slot wgInput(double)", "slot wgInput(QString)",
                     "slot input(double)", "slot input(QString)"}));
}

void tst_InputDevice::startsWithoutAValue()
{
    InputDevice device;
    QCOMPARE(device.getCurrentString(), QString());
    QCOMPARE(device.getCurrentNumber(), 0.0);
}

void tst_InputDevice::valueOutlivesANewStart()
{
    InputDevice device;
    QVERIFY(device.initialise());
    device.input(2.5);
    device.deinitialise();
    QVERIFY(device.initialise());
    QCOMPARE(device.getCurrentString(), QString("2.5"));
    QCOMPARE(device.getCurrentNumber(), 2.5);
}

void tst_InputDevice::initialiseReadsTheParameters()
{
    InputDevice device;
    QVERIFY(device.initialise());
    QCOMPARE(device.getType(), QString("spin"));
    QCOMPARE(device.getLayout(), QString("vertical"));
    QCOMPARE(device.getName(), QString());
    QCOMPARE(device.getUnits(), QString());
    QCOMPARE(device.getMinValue(), 0.0);
    QCOMPARE(device.getMaxValue(), 1.0);
    QCOMPARE(device.getValueStep(), 0.1);
    QCOMPARE(device.getDecimals(), 2);
    QCOMPARE(device.getUseScreenNumpad(), false);
    QCOMPARE(device.getUseScreenKeyboard(), false);

    const QMap<QString, QString> params{{"type", "double"},
                                        {"layout", "horizontal"},
                                        {"name", "Heater"},
                                        {"units", "K"},
                                        {"min", "-2.5"},
                                        {"max", "300"},
                                        {"decimals", "4"},
                                        {"value step", "0.25"},
                                        {"use screen numpad", "true"},
                                        {"use screen keyboard", "true"}};
    for (auto param = params.cbegin(); param != params.cend(); ++param) {
        device.setParam(param.key(), param.value());
    }
    QCOMPARE(device.getType(), QString("spin"));
    QVERIFY(device.initialise());
    QCOMPARE(device.getType(), QString("double"));
    QCOMPARE(device.getLayout(), QString("horizontal"));
    QCOMPARE(device.getName(), QString("Heater"));
    QCOMPARE(device.getUnits(), QString("K"));
    QCOMPARE(device.getMinValue(), -2.5);
    QCOMPARE(device.getMaxValue(), 300.0);
    QCOMPARE(device.getValueStep(), 0.25);
    QCOMPARE(device.getDecimals(), 4);
    QCOMPARE(device.getUseScreenNumpad(), true);
    QCOMPARE(device.getUseScreenKeyboard(), true);
}

void tst_InputDevice::initialiseAnswersWhetherTheParametersAreOk()
{
    InputDevice device;
    device.setParam("max", "much");
    QVERIFY(!device.initialise());
    QCOMPARE(device.getMaxValue(), 0.0);
    device.setParam("max", "5");
    QVERIFY(device.initialise());
}

void tst_InputDevice::decimalsAreCutTowardZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("decimals");
    QTest::newRow("fraction") << "2.9" << 2;
    QTest::newRow("negative fraction") << "-1.9" << -1;
    QTest::newRow("beyond int") << "1e30" << std::numeric_limits<int>::max();
    QTest::newRow("below int") << "-1e30" << std::numeric_limits<int>::min();
    QTest::newRow("infinite") << "inf" << std::numeric_limits<int>::max();
    QTest::newRow("no number") << "nan" << 0;
}

void tst_InputDevice::decimalsAreCutTowardZero()
{
    QFETCH(QString, text);
    InputDevice device;
    device.setParam("decimals", text);
    device.initialise();
    QTEST(device.getDecimals(), "decimals");
}

NORVO_GUILESS_TEST(tst_InputDevice)
#include "tst_InputDevice.moc"
