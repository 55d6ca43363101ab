// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

class tst_NorvoSerialPluginInterface : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metadataNamesTheInterface();
    void registersItsTypes();
    void typesHaveNoWidget();
    void needsTheCoreLibraryAndTheLibraryOfPorts();

private:
    QByteArray classOf(const QString& key) const
    {
        const std::unique_ptr<BaseDevice> device(m_manager.createDevice(key));
        return device ? device->metaObject()->className() : "none";
    }

    QPluginLoader m_loader{NORVO_BUILD_DIR "/plugins/libnorvoserial.so"};
    DeviceManager m_manager;
};

void tst_NorvoSerialPluginInterface::initTestCase()
{
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    auto* plugin = qobject_cast<DevicePluginInterface*>(m_loader.instance());
    QVERIFY(plugin);
    plugin->registerDeviceType(m_manager);
}

void tst_NorvoSerialPluginInterface::metadataNamesTheInterface()
{
    QCOMPARE(m_loader.metaData().value("IID").toString(), "Norvo.DevicePluginInterface");
    QCOMPARE(m_loader.metaData().value("className").toString(), "NorvoSerialPluginInterface");
}

void tst_NorvoSerialPluginInterface::registersItsTypes()
{
    QCOMPARE(m_manager.cataloguePaths(), QStringList("system/serial"));
    QCOMPARE(classOf("Serial"), "SerialDevice");
}

void tst_NorvoSerialPluginInterface::typesHaveNoWidget()
{
    for (const DeviceTypeInfo& info : m_manager.typeInfos()) {
        QVERIFY(!info.title.isEmpty());
        QVERIFY(!info.description.isEmpty());
        QCOMPARE(info.kind, 0);
        QCOMPARE(info.flag, 0);
    }
}

void tst_NorvoSerialPluginInterface::needsTheCoreLibraryAndTheLibraryOfPorts()
{
    QProcess readelf;
    readelf.start("readelf", {"-d", m_loader.fileName()});
    QVERIFY(readelf.waitForFinished());
    const QByteArray needed = readelf.readAllStandardOutput();
    QVERIFY(needed.contains("[libNorvo.so.5]"));
    QVERIFY(needed.contains("[libQt5SerialPort.so.5]"));
    QVERIFY(!needed.contains("[libNorvoGUI.so.11]"));
    QVERIFY(!needed.contains("[libQt5Gui"));
}

NORVO_GUILESS_TEST(tst_NorvoSerialPluginInterface)
#include "tst_NorvoSerialPluginInterface.moc"
