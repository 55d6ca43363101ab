// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

class tst_NorvoModbusPluginInterface : public QObject
{
    Q_OBJECT

private slots:
    void registersItsType();
};

void tst_NorvoModbusPluginInterface::registersItsType()
{
    QPluginLoader loader(NORVO_BUILD_DIR "/plugins/libnorvomodbus.so");
    QVERIFY2(loader.load(), qPrintable(loader.errorString()));
    QCOMPARE(loader.metaData().value("IID").toString(), "Norvo.DevicePluginInterface");
    auto* const plugin = qobject_cast<DevicePluginInterface*>(loader.instance());
    QVERIFY(plugin);
    DeviceManager manager;
    plugin->registerDeviceType(manager);
    QCOMPARE(manager.cataloguePaths(), QStringList("bus/modbus"));
    QCOMPARE(manager.typeInfos().value("modbus").kind, 0);
    const std::unique_ptr<BaseDevice> device(manager.createDevice("Modbus"));
    QVERIFY(device);
    QCOMPARE(device->metaObject()->className(), "ModbusDevice");
}

NORVO_GUILESS_TEST(tst_NorvoModbusPluginInterface)
#include "tst_NorvoModbusPluginInterface.moc"
