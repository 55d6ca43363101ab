// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

class tst_NorvoLogicPluginInterface : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metadataNamesTheInterface();
    void registersItsTypes();
    void typesHaveNoWidget();
    void linksNoScriptEngine();

private:
    QByteArray classOf(const QString& key) const
    {
        const std::unique_ptr<BaseDevice> device(m_manager.createDevice(key));
        return device ? device->metaObject()->className() : "none";
    }

    QPluginLoader m_loader{NORVO_BUILD_DIR "/plugins/libnorvologic.so"};
    DeviceManager m_manager;
};

void tst_NorvoLogicPluginInterface::initTestCase()
{
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    auto* plugin = qobject_cast<DevicePluginInterface*>(m_loader.instance());
    QVERIFY(plugin);
    plugin->registerDeviceType(m_manager);
}

void tst_NorvoLogicPluginInterface::metadataNamesTheInterface()
{
    QCOMPARE(m_loader.metaData().value("IID").toString(), "Norvo.DevicePluginInterface");
    QCOMPARE(m_loader.metaData().value("className").toString(), "NorvoLogicPluginInterface");
}

void tst_NorvoLogicPluginInterface::registersItsTypes()
{
    QCOMPARE(m_manager.cataloguePaths(),
             (QStringList{"logic/calc", "logic/settle", "logic/timer"}));
    QCOMPARE(classOf("Calc"), "CalcDevice");
    QCOMPARE(classOf("settle"), "SettleDevice");
    QCOMPARE(classOf("TIMER"), "TimerDevice");
}

void tst_NorvoLogicPluginInterface::typesHaveNoWidget()
{
    for (const DeviceTypeInfo& info : m_manager.typeInfos()) {
        QVERIFY(!info.title.isEmpty());
        QVERIFY(!info.description.isEmpty());
        QCOMPARE(info.kind, 0);
        QCOMPARE(info.flag, 0);
    }
}

void tst_NorvoLogicPluginInterface::linksNoScriptEngine()
{
    QProcess readelf;
    readelf.start("readelf", {"-d", m_loader.fileName()});
    QVERIFY(readelf.waitForFinished());
    const QByteArray needed = readelf.readAllStandardOutput();
    QVERIFY(needed.contains("[libNorvo.so.5]"));
    QVERIFY(!needed.contains("[libQt5Qml"));
    QVERIFY(!needed.contains("[libQt5Gui"));
}

NORVO_GUILESS_TEST(tst_NorvoLogicPluginInterface)
#include "tst_NorvoLogicPluginInterface.moc"
