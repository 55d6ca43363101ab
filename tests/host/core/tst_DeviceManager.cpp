// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseDevice.h"
#include "norvo/Categories.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

namespace {

class First : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {"One", "The first", {"IO", "maths"}, 2, 1, "w"}; }
};

class Second : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {"", "", {norvo::kCategoryGui}, 0, 0, "widget"}; }
};

template <class T>
bool makes(const DeviceManager& manager, const QString& key)
{
    const std::unique_ptr<BaseDevice> device(manager.createDevice(key));
    return device && device->metaObject() == &T::staticMetaObject;
}

} // namespace

class tst_DeviceManager : public QObject
{
    Q_OBJECT

private slots:
    void typedDeviceIsNewAndTheCallersEachTime()
    {
        const std::unique_ptr<BaseDevice> one(DeviceManager::createTypedDevice<First>());
        const std::unique_ptr<BaseDevice> other(DeviceManager::createTypedDevice<First>());
        QVERIFY(qobject_cast<First*>(one.get()));
        QVERIFY(one != other);
        QVERIFY(!one->parent());
    }

    void registeredTypeHasFactoryRecordAndPaths()
    {
        DeviceManager manager;
        manager.registerDeviceType<First>("one");

        QCOMPARE(manager.cataloguePaths(), QStringList({"IO/one", "maths/one"}));
        QCOMPARE(manager.factories().keys(), QStringList("one"));
        QVERIFY(manager.factories().value("one") == &DeviceManager::createTypedDevice<First>);
        QCOMPARE(manager.typeInfos().keys(), QStringList("one"));
        const DeviceTypeInfo info = manager.typeInfos().value("one");
        QCOMPARE(info.title, QString("One"));
        QCOMPARE(info.description, QString("The first"));
        QCOMPARE(info.categories, QStringList({"IO", "maths"}));
        QCOMPARE(info.kind, 2);
        QCOMPARE(info.flag, 1);
        QCOMPARE(info.widgetGroup, QString("w"));
    }

    void pathsStandInTheOrderOfRegistrationTwiceWhenRegisteredTwice()
    {
        DeviceManager manager;
        manager.registerDeviceType<Second>("zeta");
        manager.registerDeviceType<Second>("two");
        manager.registerDeviceType<Second>("two");
        manager.registerDeviceType<First>("alpha");
        QCOMPARE(manager.cataloguePaths(),
                 QStringList({"GUI/zeta", "GUI/two", "GUI/two", "IO/alpha", "maths/alpha"}));
        QCOMPARE(manager.factories().keys(), QStringList({"alpha", "two", "zeta"}));
        QCOMPARE(manager.typeInfos().keys(), QStringList({"alpha", "two", "zeta"}));
    }

    void registeringAgainReplacesFactoryAndRecord()
    {
        DeviceManager manager;
        manager.registerDeviceType<First>("one");
        manager.registerDeviceType<Second>("one");
        QVERIFY(makes<Second>(manager, "one"));
        QCOMPARE(manager.typeInfos().value("one").kind, 0);
        QCOMPARE(manager.cataloguePaths(), QStringList({"IO/one", "maths/one", "GUI/one"}));
    }

    void keyIsFoundInAnyCase()
    {
        DeviceManager manager;
        manager.registerDeviceType<First>("Output_One");
        for (const char* key : {"Output_One", "output_one", "OUTPUT_ONE"}) {
            QVERIFY2(makes<First>(manager, key), key);
            QVERIFY2(manager.typeInfos().contains(key), key);
        }
    }

    void keyOfAnotherCaseIsASecondTypeAndTheNewestIsMade()
    {
        DeviceManager manager;
        manager.registerDeviceType<First>("One");
        manager.registerDeviceType<Second>("one");
        QCOMPARE(manager.factories().keys(), QStringList({"One", "one"}));
        QVERIFY(makes<Second>(manager, "One"));
    }

    void unknownKeyMakesNothing()
    {
        DeviceManager manager;
        QVERIFY(!manager.createDevice("one"));
        manager.registerDeviceType<First>("one");
        QVERIFY(!manager.createDevice("ones"));
        QVERIFY(!manager.createDevice(""));
    }

    void categoryNamesAreTheAgreedOnes()
    {
        using namespace norvo;
        const QStringList names{
            kCategoryGeneral, kCategorySystem,   kCategoryConverters, kCategoryDataProcessing,
            kCategoryIO,      kCategorySensors,  kCategoryBus,        kCategoryFilesystem,
            kCategoryFilters, kCategoryMaths,    kCategoryAlgorithms, kCategoryDebug,
            kCategoryLogic,   kCategoryString,   kCategoryNetwork,    kCategoryArray,
            kCategoryAudio,   kCategoryConstant, kCategoryRos,        kCategoryDefault,
            kCategoryGui};
        QCOMPARE(names.join(' '),
                 QString("General system converters dataProcessing IO sensors bus filesystem "
                         "filters maths algorithms debug logic string network array audio "
                         "constant ros General GUI"));
        QCOMPARE(kWidgetGroup, QString("widget"));
    }
};

NORVO_GUILESS_TEST(tst_DeviceManager)

#include "tst_DeviceManager.moc"
