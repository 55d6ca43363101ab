// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/PluginSet.h"

#include "norvo/BaseDevice.h"
#include "norvo/DevicePluginInterface.h"
#include "TestMain.h"

#include <QtTest>

using norvo::PluginSet;

namespace {

const QString kFixtures = NORVO_BUILD_DIR "/tests/fixtures/";

const QString kBuiltPlugins = NORVO_BUILD_DIR "/plugins";

QString libraryIn(const QString& folder)
{
    const QDir dir(folder);
    return dir.filePath(dir.entryList({"*.so"}, QDir::Files).value(0));
}

} // namespace

class tst_PluginSet : public QObject
{
    Q_OBJECT

private slots:
    void pluginEntersItsTypes();
    void whatIsNoPluginIsToldAndLeftOut_data();
    void whatIsNoPluginIsToldAndLeftOut();
    void wrongFilesDoNotKeepTheRightOnesOut();
    void missingFolderIsTold();
    void otherFilesAreNoConcern();
    void pluginUnderTwoNamesLoadsOnce();
    void linkIsTheFileThatItLeadsTo();
    void filesLoadInTheOrderOfTheirNames();
    void folderGivenTwiceWarnsOnce();
    void typeThatComesAgainIsTold();
    void defaultFoldersAreThoseThatExist();
    void everyPluginButThatOfTheWidgetsListsItsTypes();
    void pluginThatNobodyNeedsStaysUnloaded();
    void unknownTypeNeedsAll();
    void pluginThatDoesNotListItsTypesIsLoaded();
    void twoPluginsThatListATypeAreBothLoaded();
};

void tst_PluginSet::pluginEntersItsTypes()
{
    PluginSet plugins;
    QVERIFY(plugins.isEmpty());
    plugins.load(kFixtures + "relays");
    QCOMPARE(plugins.warnings(), QStringList());
    QVERIFY(!plugins.isEmpty());
    const std::unique_ptr<BaseDevice> device(plugins.manager().createDevice("Relay"));
    QVERIFY(device);
    QCOMPARE(device->metaObject()->className(), "RelayDevice");
}

void tst_PluginSet::whatIsNoPluginIsToldAndLeftOut_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("text");
    QTest::newRow("text named like a library") << "nolibrary"
                                               << "this is not a shared library";
    QTest::newRow("library that is no plug-in") << "noplugin"
                                                << "this library is not a plug-in";
    QTest::newRow("plug-in of another interface")
        << "otherinterface"
        << "this plug-in is of another interface, \"Norvo.AnotherInterface\"; "
           "\"Norvo.DevicePluginInterface\" is needed";
}

void tst_PluginSet::whatIsNoPluginIsToldAndLeftOut()
{
    QFETCH(QString, folder);
    QFETCH(QString, text);
    PluginSet plugins;
    plugins.load(kFixtures + folder);
    QCOMPARE(plugins.warnings(), QStringList(libraryIn(kFixtures + folder) + ": warning: " + text));
    QVERIFY(plugins.isEmpty());
    QFile maps("/proc/self/maps");
    QVERIFY(maps.open(QIODevice::ReadOnly));
    QVERIFY2(!maps.readAll().contains(QFile::encodeName(kFixtures + folder)),
             "nothing of it may be loaded");
}

void tst_PluginSet::wrongFilesDoNotKeepTheRightOnesOut()
{
    const QTemporaryDir folder;
    int number = 0;
    for (const char* fixture : {"nolibrary", "noplugin", "otherinterface", "relays"}) {
        QVERIFY(QFile::link(libraryIn(kFixtures + fixture),
                            folder.filePath(QString("lib%1.so").arg(++number))));
    }
    QVERIFY(QFile::link("nowhere.so", folder.filePath("libdangling.so")));
    PluginSet plugins;
    plugins.load(folder.path());
    QCOMPARE(plugins.warnings().size(), 3);
    QVERIFY(plugins.manager().factories().contains("relay"));
}

void tst_PluginSet::missingFolderIsTold()
{
    PluginSet plugins;
    plugins.load("no/such/folder");
    QCOMPARE(plugins.warnings(),
             QStringList("no/such/folder: warning: there is no such plug-in folder"));
}

void tst_PluginSet::otherFilesAreNoConcern()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("README.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(QDir(folder.path()).mkdir("libfolder.so"));
    PluginSet plugins;
    plugins.load(folder.path());
    QCOMPARE(plugins.warnings(), QStringList());
}

void tst_PluginSet::pluginUnderTwoNamesLoadsOnce()
{
    const QTemporaryDir folder;
    const QString library = libraryIn(kFixtures + "relays");
    QVERIFY(QFile::link(library, folder.filePath("liba.so")));
    QVERIFY(QFile::link(library, folder.filePath("libb.so.1")));
    PluginSet plugins;
    plugins.load(kFixtures + "relays");
    const QStringList paths = plugins.manager().cataloguePaths();
    QVERIFY(!paths.isEmpty());
    plugins.load(folder.path());
    QCOMPARE(plugins.manager().cataloguePaths(), paths);
    QCOMPARE(plugins.warnings(), QStringList());
}

void tst_PluginSet::linkIsTheFileThatItLeadsTo()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::link(libraryIn(kFixtures + "relays"), folder.filePath("liba.so")));
    PluginSet plugins;
    plugins.load(folder.path());
    const QStringList paths = plugins.manager().cataloguePaths();
    plugins.load(kFixtures + "relays");
    QCOMPARE(plugins.manager().cataloguePaths(), paths);
}

void tst_PluginSet::filesLoadInTheOrderOfTheirNames()
{
    const QTemporaryDir folder;
    for (const char* name : {"libb.so", "liba.so", "libc.so"}) {
        QVERIFY(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
    }
    PluginSet plugins;
    plugins.load(folder.path());
    QStringList expected;
    for (const char* name : {"liba.so", "libb.so", "libc.so"}) {
        expected += folder.filePath(name) + ": warning: this is not a shared library";
    }
    QCOMPARE(plugins.warnings(), expected);
}

void tst_PluginSet::folderGivenTwiceWarnsOnce()
{
    PluginSet plugins;
    plugins.load(kFixtures + "noplugin");
    plugins.load(kFixtures + "noplugin");
    QCOMPARE(plugins.warnings().size(), 1);
}

void tst_PluginSet::typeThatComesAgainIsTold()
{
    const QTemporaryDir folder;
    const QString copy = folder.filePath("libcopy.so");
    QVERIFY(QFile::copy(libraryIn(kFixtures + "relays"), copy));
    PluginSet plugins;
    plugins.load(kFixtures + "relays");
    plugins.load(folder.path());
    QVERIFY(plugins.warnings().contains(
        copy + ": warning: its device type \"relay\" replaces that of another plug-in"));
}

void tst_PluginSet::defaultFoldersAreThoseThatExist()
{
    const QTemporaryDir prefix;
    const QString programFolder = prefix.filePath("bin");
    QVERIFY(QDir().mkpath(programFolder));
    QCOMPARE(PluginSet::defaultFolders(programFolder), QStringList());
    QVERIFY(QDir().mkpath(prefix.filePath("plugins")));
    const QString installed = QDir::cleanPath(programFolder + "/" NORVO_INSTALLED_PLUGINS);
    QVERIFY2(QDir(installed).path().startsWith(prefix.path() + "/lib"), qPrintable(installed));
    QVERIFY(QDir().mkpath(installed));
    QCOMPARE(PluginSet::defaultFolders(programFolder),
             (QStringList{prefix.filePath("plugins"), installed}));
}

void tst_PluginSet::everyPluginButThatOfTheWidgetsListsItsTypes()
{
    const QDir dir(kBuiltPlugins);
    const QStringList names = dir.entryList({"*.so"}, QDir::Files);
    QVERIFY(names.size() >= 8);
    for (const QString& name : names) {
        QPluginLoader loader(dir.filePath(name));
        const QJsonObject metaData = loader.metaData().value("MetaData").toObject();
        const QStringList listed = metaData.value("types").toVariant().toStringList();
        DeviceManager manager;
        auto* const plugin = qobject_cast<DevicePluginInterface*>(loader.instance());
        QVERIFY2(plugin, qPrintable(name));
        plugin->registerDeviceType(manager);
        if (name == "libnorvoguidevices.so") { // Every panel has some of them.
            QCOMPARE(listed, QStringList());
        } else {
            QCOMPARE(listed, QStringList(manager.factories().keys()));
        }
    }
}

void tst_PluginSet::pluginThatNobodyNeedsStaysUnloaded()
{
    PluginSet plugins;
    plugins.find(kBuiltPlugins);
    QVERIFY(!plugins.isEmpty());
    QCOMPARE(plugins.manager().factories().size(), 0);
    plugins.need({"Calc"});
    QCOMPARE(plugins.manager().factories().size(), 17 + 3);
    QVERIFY(plugins.manager().factories().contains("calc"));
    plugins.need({"calc", "mqtt"});
    QCOMPARE(plugins.manager().factories().size(), 17 + 4);
    plugins.needAll();
    QVERIFY(plugins.manager().factories().contains("modbus"));
    QCOMPARE(plugins.warnings(), QStringList());
}

void tst_PluginSet::unknownTypeNeedsAll()
{
    PluginSet plugins;
    plugins.find(kBuiltPlugins);
    plugins.need({"calc", "labell"});
    QVERIFY(plugins.manager().factories().contains("label"));
    QVERIFY(plugins.manager().factories().contains("mqtt"));
}

void tst_PluginSet::pluginThatDoesNotListItsTypesIsLoaded()
{
    PluginSet plugins;
    plugins.find(kBuiltPlugins);
    plugins.find(kFixtures + "relays");
    plugins.need({"calc"});
    QVERIFY(plugins.manager().factories().contains("Relay"));
    QVERIFY(!plugins.manager().factories().contains("mqtt"));
}

void tst_PluginSet::twoPluginsThatListATypeAreBothLoaded()
{
    QTemporaryDir folder;
    QVERIFY(QFile::copy(kBuiltPlugins + "/libnorvologic.so", folder.filePath("libnorvologic.so")));
    PluginSet plugins;
    plugins.find(kBuiltPlugins);
    plugins.find(folder.path());
    plugins.need({"mqtt"});
    QVERIFY(plugins.manager().factories().contains("calc"));
    QCOMPARE(plugins.warnings().size(), 3); // calc, settle and timer come again.
    plugins.need({"modbus"});
    QCOMPARE(plugins.warnings().size(), 3);
}

NORVO_GUILESS_TEST(tst_PluginSet)
#include "tst_PluginSet.moc"
