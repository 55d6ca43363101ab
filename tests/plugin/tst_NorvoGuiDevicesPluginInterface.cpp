// SPDX-License-Identifier: GPL-3.0-or-later

#include "MessageLog.h"

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

/// One registration.
struct Type
{
    const char* key;
    const char* className;
    int kind = 2;
    int flag = 0;
};
Q_DECLARE_METATYPE(Type)

namespace {

const QString kLibrary = NORVO_BUILD_DIR "/plugins/libnorvoguidevices.so";
const QString kDebugLine = "debug: NorvoGui devices plugins was registered";

/// One row for each registration, in their order.
const QVector<Type> kRegistrations{
    {"button", "ButtonDevice"},
    {"input", "InputDevice"},
    {"indicator", "IndicatorDevice"},
    {"label", "Label"},
    {"output_vector", "OutputVector"},
    {"output_vector", "OutputVector"},
    {"output_with_progress", "OutputWithProgress"},
    {"output_digital", "OutputDigitalDevice"},
    {"output_graph", "OutputGraphDevice"},
    {"graph_settings", "GraphSettingsDevice", 0},
    {"output_bar", "OutputBarDevice"},
    {"picture", "PictureDevice"},
    {"multiline", "MultilineDevice"},
    {"output_lumeno", "LumenoBarDevice"},
    {"checkbox", "CheckBoxDevice"},
    {"dropdownlist", "DropDownListDevice"},
    {"qml_widget", "QmlGuiDevice", 2, 1},
    {"slider", "SliderDevice"},
};

QStringList expectedPaths()
{
    QStringList paths;
    for (const Type& type : kRegistrations) {
        paths.append(QString("GUI/") + type.key);
    }
    return paths;
}

QStringList expectedKeys()
{
    QStringList keys;
    for (const Type& type : kRegistrations) {
        keys.append(type.key);
    }
    keys.removeDuplicates();
    keys.sort();
    return keys;
}

QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0) {
        return QString("%1 failed: %2").arg(program, process.errorString());
    }
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

} // namespace

class tst_NorvoGuiDevicesPluginInterface : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void metadataNamesInterfaceAndClassAndNothingElse();
    void castAnswersToClassInterfaceAndIdentifier();
    void oneInstanceForTheLifeOfTheLibrary();
    void deletedInstanceIsReplaced();
    void ownsNoSignalsSlotsOrProperties();
    void needsTheTwoHostLibraries();
    void exportsNothingButTheTwoPluginEntries();

    void factoriesHoldExactlyTheRegisteredKeys();
    void pathsFollowTheOrderOfRegistration();
    void keyIsFoundInAnyCase();
    void typeIsComplete_data();
    void typeIsComplete();
    void debugLineFollowsTheLastRegistration();
    void registeringAgainOnlyAddsThePathsAgain();

private:
    DevicePluginInterface* plugin()
    {
        return qobject_cast<DevicePluginInterface*>(m_loader.instance());
    }
    void enterInto(DeviceManager& manager)
    {
        MessageLog log;
        plugin()->registerDeviceType(manager);
        QCOMPARE(log.take(), QStringList(kDebugLine));
    }

    QPluginLoader m_loader{kLibrary};
};

void tst_NorvoGuiDevicesPluginInterface::initTestCase()
{
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    QVERIFY(plugin());
}

void tst_NorvoGuiDevicesPluginInterface::metadataNamesInterfaceAndClassAndNothingElse()
{
    const QJsonObject metadata = m_loader.metaData();
    QCOMPARE(metadata["IID"].toString(), QString("Norvo.DevicePluginInterface"));
    QCOMPARE(metadata["className"].toString(), QString("NorvoGuiDevicesPluginInterface"));
    QVERIFY(metadata["MetaData"].toObject().isEmpty());
}

void tst_NorvoGuiDevicesPluginInterface::castAnswersToClassInterfaceAndIdentifier()
{
    QObject* const object = m_loader.instance();
    DevicePluginInterface* const interface = plugin();
    QCOMPARE(object->qt_metacast("NorvoGuiDevicesPluginInterface"), static_cast<void*>(object));
    QCOMPARE(object->qt_metacast("DevicePluginInterface"), static_cast<void*>(interface));
    QCOMPARE(object->qt_metacast("Norvo.DevicePluginInterface"), static_cast<void*>(interface));
    QVERIFY(static_cast<void*>(interface) != static_cast<void*>(object));
    QCOMPARE(object->qt_metacast("QObject"), static_cast<void*>(object));
    QCOMPARE(object->qt_metacast("BaseDevice"), nullptr);
}

void tst_NorvoGuiDevicesPluginInterface::oneInstanceForTheLifeOfTheLibrary()
{
    QLibrary library(kLibrary);
    const auto instance = reinterpret_cast<QObject* (*)()>(library.resolve("qt_plugin_instance"));
    QVERIFY(instance);
    QObject* const first = instance();
    QVERIFY(first);
    QVERIFY(!first->parent());
    QCOMPARE(instance(), first);
    QCOMPARE(m_loader.instance(), first);
}

void tst_NorvoGuiDevicesPluginInterface::deletedInstanceIsReplaced()
{
    const QPointer<QObject> first = m_loader.instance();
    delete first.data();
    QVERIFY(!first);
    QObject* const second = m_loader.instance();
    QVERIFY(second);
    QCOMPARE(second->metaObject()->className(), "NorvoGuiDevicesPluginInterface");
    QCOMPARE(m_loader.instance(), second);
}

void tst_NorvoGuiDevicesPluginInterface::ownsNoSignalsSlotsOrProperties()
{
    const QMetaObject* meta = m_loader.instance()->metaObject();
    QCOMPARE(meta->methodCount(), QObject::staticMetaObject.methodCount());
    QCOMPARE(meta->propertyCount(), QObject::staticMetaObject.propertyCount());
}

void tst_NorvoGuiDevicesPluginInterface::needsTheTwoHostLibraries()
{
    const QString dynamicSection = outputOf("readelf", {"-d", kLibrary});
    QVERIFY2(dynamicSection.contains("Shared library: [libNorvo.so.5]"),
             qPrintable(dynamicSection));
    QVERIFY2(dynamicSection.contains("Shared library: [libNorvoGUI.so.11]"),
             qPrintable(dynamicSection));
}

void tst_NorvoGuiDevicesPluginInterface::exportsNothingButTheTwoPluginEntries()
{
    const QString symbols =
        outputOf("nm", {"-D", "--defined-only", "--format=just-symbols", kLibrary});
    QStringList names = symbols.split('\n', Qt::SkipEmptyParts);
    names.sort();
    QCOMPARE(names, QStringList({"qt_plugin_instance", "qt_plugin_query_metadata"}));
}

void tst_NorvoGuiDevicesPluginInterface::factoriesHoldExactlyTheRegisteredKeys()
{
    DeviceManager manager;
    enterInto(manager);
    QCOMPARE(QStringList(manager.factories().keys()), expectedKeys());
    QCOMPARE(QStringList(manager.typeInfos().keys()), expectedKeys());
}

void tst_NorvoGuiDevicesPluginInterface::pathsFollowTheOrderOfRegistration()
{
    DeviceManager manager;
    enterInto(manager);
    QCOMPARE(manager.cataloguePaths(), expectedPaths());
}

void tst_NorvoGuiDevicesPluginInterface::keyIsFoundInAnyCase()
{
    DeviceManager manager;
    enterInto(manager);
    QVERIFY(manager.factories().value("button"));
    QVERIFY(manager.factories().value("Button") == manager.factories().value("button"));
    QVERIFY(manager.factories().value("BUTTON") == manager.factories().value("button"));
    QVERIFY(manager.typeInfos().contains("LaBeL"));
}

void tst_NorvoGuiDevicesPluginInterface::typeIsComplete_data()
{
    QTest::addColumn<Type>("type");
    for (int i = 0; i < kRegistrations.size(); ++i) {
        QTest::addRow("%d %s", i + 1, kRegistrations[i].key) << kRegistrations[i];
    }
}

void tst_NorvoGuiDevicesPluginInterface::typeIsComplete()
{
    QFETCH(Type, type);
    DeviceManager manager;
    enterInto(manager);

    const DeviceTypeInfo info = manager.typeInfos().value(type.key);
    QCOMPARE(info.title, QString());
    QCOMPARE(info.description, QString());
    QCOMPARE(info.categories, QStringList("GUI"));
    QCOMPARE(info.kind, type.kind);
    QCOMPARE(info.flag, type.flag);
    QCOMPARE(info.widgetGroup, QString("widget"));

    const DeviceManager::Factory factory = manager.factories().value(type.key);
    const std::unique_ptr<BaseDevice> first(factory());
    const std::unique_ptr<BaseDevice> second(factory());
    QVERIFY(first && second);
    QVERIFY(first != second);
    QCOMPARE(first->metaObject()->className(), type.className);
    QCOMPARE(second->metaObject()->className(), type.className);
    QVERIFY(!first->isRunning());
}

void tst_NorvoGuiDevicesPluginInterface::debugLineFollowsTheLastRegistration()
{
    DeviceManager manager;
    int typesAtTheLine = 0;
    MessageLog log([&] { typesAtTheLine = manager.cataloguePaths().size(); });
    plugin()->registerDeviceType(manager);
    QCOMPARE(log.take(), QStringList(kDebugLine));
    QCOMPARE(typesAtTheLine, kRegistrations.size());
}

void tst_NorvoGuiDevicesPluginInterface::registeringAgainOnlyAddsThePathsAgain()
{
    DeviceManager manager;
    enterInto(manager);
    const auto factory = manager.factories().value("label");
    enterInto(manager);
    QCOMPARE(manager.cataloguePaths(), expectedPaths() + expectedPaths());
    QCOMPARE(QStringList(manager.factories().keys()), expectedKeys());
    QCOMPARE(QStringList(manager.typeInfos().keys()), expectedKeys());
    QVERIFY(manager.factories().value("label") == factory);
}

NORVO_GUILESS_TEST(tst_NorvoGuiDevicesPluginInterface)
#include "tst_NorvoGuiDevicesPluginInterface.moc"
