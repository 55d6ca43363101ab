// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

class tst_NorvoWebSocketPluginInterface : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metadataNamesTheInterface();
    void registersItsType();
    void typeHasNoWidget();
    void needsTheCoreLibraryOnly();

private:
    QByteArray classOf(const QString& key) const
    {
        const std::unique_ptr<BaseDevice> device(m_manager.createDevice(key));
        return device ? device->metaObject()->className() : "none";
    }

    QPluginLoader m_loader{NORVO_BUILD_DIR "/plugins/libnorvowebsocket.so"};
    DeviceManager m_manager;
};

void tst_NorvoWebSocketPluginInterface::initTestCase()
{
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    auto* plugin = qobject_cast<DevicePluginInterface*>(m_loader.instance());
    QVERIFY(plugin);
    plugin->registerDeviceType(m_manager);
}

void tst_NorvoWebSocketPluginInterface::metadataNamesTheInterface()
{
    QCOMPARE(m_loader.metaData().value("IID").toString(), "Norvo.DevicePluginInterface");
    QCOMPARE(m_loader.metaData().value("className").toString(), "NorvoWebSocketPluginInterface");
}

void tst_NorvoWebSocketPluginInterface::registersItsType()
{
    QCOMPARE(m_manager.cataloguePaths(), QStringList{"network/websocket"});
    QCOMPARE(classOf("WebSocket"), "WebSocketDevice");
}

void tst_NorvoWebSocketPluginInterface::typeHasNoWidget()
{
    for (const DeviceTypeInfo& info : m_manager.typeInfos()) {
        QVERIFY(!info.title.isEmpty());
        QVERIFY(!info.description.isEmpty());
        QCOMPARE(info.kind, 0);
        QCOMPARE(info.flag, 0);
    }
}

void tst_NorvoWebSocketPluginInterface::needsTheCoreLibraryOnly()
{
    QProcess readelf;
    readelf.start("readelf", {"-d", m_loader.fileName()});
    QVERIFY(readelf.waitForFinished());
    const QByteArray needed = readelf.readAllStandardOutput();
    QVERIFY(needed.contains("[libNorvo.so.5]"));
    QVERIFY(!needed.contains("[libNorvoGUI.so.11]"));
    QVERIFY(!needed.contains("[libQt5Gui"));
}

NORVO_GUILESS_TEST(tst_NorvoWebSocketPluginInterface)
#include "tst_NorvoWebSocketPluginInterface.moc"
