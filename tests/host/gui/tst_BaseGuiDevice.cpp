// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"
#include "TestMain.h"

#include <QtTest>

#include <cstring>
#include <memory>

namespace {

class Device : public BaseGuiDevice
{
public:
    Device() { addParam("own", "x"); }
    BaseWidget* createWidget() override { return new BaseWidget(this, nullptr); }
};

template <class Function>
int virtualIndex(Function function)
{
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &function, sizeof offset);
    return int(offset / std::ptrdiff_t(sizeof(void*)));
}

} // namespace

class tst_BaseGuiDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresTheFivePlacementParametersFirst()
    {
        Device device;
        QCOMPARE(device.paramNames(), QStringList({"widget/row", "widget/column", "widget/rowspan",
                                                   "widget/colspan", "widget/area", "own"}));
    }

    void placementDefaults_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("row") << "widget/row"
                             << "-1";
        QTest::newRow("column") << "widget/column"
                                << "-1";
        QTest::newRow("rowspan") << "widget/rowspan"
                                 << "1";
        QTest::newRow("colspan") << "widget/colspan"
                                 << "1";
        QTest::newRow("area") << "widget/area"
                              << "";
    }
    void placementDefaults()
    {
        QFETCH(QString, name);
        Device device;
        QTEST(device.getParam(name).defaultValue(), "expected");
        QTEST(device.getParam(name).value(), "expected");
        QVERIFY(device.getParam(name).options().isEmpty());
    }

    void placementThatIsNoNumberIsAnError()
    {
        Device device;
        QVERIFY(device.paramsOk());
        device.setParam("Widget/Row", "top");
        QCOMPARE(device.paramFaults(),
                 QStringList("parameter \"widget/row\": \"top\" is not a number"));
    }

    void typeInfoIsTheGraphicalRecord()
    {
        const DeviceTypeInfo info = BaseGuiDevice::typeInfo();
        QCOMPARE(info.title, QString());
        QCOMPARE(info.description, QString());
        QCOMPARE(info.categories, QStringList("GUI"));
        QCOMPARE(info.kind, 2);
        QCOMPARE(info.flag, 0);
        QCOMPARE(info.widgetGroup, QString("widget"));
        QCOMPARE(sizeof info.kind, size_t(4));
        QCOMPARE(sizeof info.flag, size_t(4));
    }

    void widgetHasNoParentAndIsNewEachTime()
    {
        Device device;
        const std::unique_ptr<BaseWidget> one(device.createWidget());
        const std::unique_ptr<BaseWidget> other(device.createWidget());
        QVERIFY(!one->parent());
        QVERIFY(one != other);
    }

    void createWidgetFollowsTheDevicesVirtualOperations()
    {
        QCOMPARE(virtualIndex(&BaseGuiDevice::createWidget),
                 virtualIndex(&BaseDevice::grabMethods) + 1);
    }

    void offersNoMethodsOfItsOwn()
    {
        const Device device;
        QCOMPARE(device.grabMethods("", QMetaMethod::Signal, true), QStringList());
        QCOMPARE(device.grabMethods("", QMetaMethod::Slot, true), QStringList());
        QCOMPARE(BaseGuiDevice::staticMetaObject.superClass(), &BaseDevice::staticMetaObject);
    }
};

NORVO_TEST(tst_BaseGuiDevice)

#include "tst_BaseGuiDevice.moc"
