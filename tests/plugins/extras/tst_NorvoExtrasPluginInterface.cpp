// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"
#include "TestMain.h"

#include <memory>

class tst_NorvoExtrasPluginInterface : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metadataNamesTheInterface();
    void registersItsTypes();
    void eachTypeMakesItsWidget_data();
    void eachTypeMakesItsWidget();
    void bringsItsWords();

private:
    QPluginLoader m_loader{NORVO_BUILD_DIR "/plugins/libnorvoextras.so"};
    DeviceManager m_manager;
};

void tst_NorvoExtrasPluginInterface::initTestCase()
{
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    auto* const plugin = qobject_cast<DevicePluginInterface*>(m_loader.instance());
    QVERIFY(plugin);
    plugin->registerDeviceType(m_manager);
}

void tst_NorvoExtrasPluginInterface::metadataNamesTheInterface()
{
    QCOMPARE(m_loader.metaData().value("IID").toString(), "Norvo.DevicePluginInterface");
    QCOMPARE(m_loader.metaData().value("className").toString(), "NorvoExtrasPluginInterface");
}

void tst_NorvoExtrasPluginInterface::registersItsTypes()
{
    QCOMPARE(m_manager.cataloguePaths(), QStringList({"GUI/hold", "GUI/stop", "GUI/image"}));
}

void tst_NorvoExtrasPluginInterface::eachTypeMakesItsWidget_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QByteArray>("widget");
    QTest::newRow("hold") << QByteArray("HoldDevice") << QByteArray("HoldWidget");
    QTest::newRow("stop") << QByteArray("StopDevice") << QByteArray("StopWidget");
    QTest::newRow("image") << QByteArray("ImageDevice") << QByteArray("ImageWidget");
}

void tst_NorvoExtrasPluginInterface::eachTypeMakesItsWidget()
{
    const std::unique_ptr<BaseDevice> device(m_manager.createDevice(QTest::currentDataTag()));
    auto* const withWidget = qobject_cast<BaseGuiDevice*>(device.get());
    QVERIFY(withWidget);
    QTEST(QByteArray(device->metaObject()->className()), "device");
    const std::unique_ptr<BaseWidget> widget(withWidget->createWidget());
    QTEST(QByteArray(widget->metaObject()->className()), "widget");
    QVERIFY(!widget->parent());
}

void tst_NorvoExtrasPluginInterface::bringsItsWords()
{
    QVERIFY(QFile::exists(":/norvo/words/norvoextras.yaml"));
}

NORVO_TEST(tst_NorvoExtrasPluginInterface)
#include "tst_NorvoExtrasPluginInterface.moc"
