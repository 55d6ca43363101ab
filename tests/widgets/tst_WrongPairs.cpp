// SPDX-License-Identifier: GPL-3.0-or-later

#include "MessageLog.h"
#include "TestMain.h"
#include "hostile/HostileInputs.h"
#include "hostile/HostileLife.h"

#include "norvo/DeviceManager.h"
#include "plugin/NorvoGuiDevicesPluginInterface.h"
#include "widgets/ButtonWidget.h"
#include "widgets/CheckBoxWidget.h"
#include "widgets/DigitalWidget.h"
#include "widgets/DigitalWithProgress.h"
#include "widgets/DropDownListWidget.h"
#include "widgets/GraphOutputWidget.h"
#include "widgets/InputFieldWidget.h"
#include "widgets/LabelWidget.h"
#include "widgets/LampWidget.h"
#include "widgets/OutputBarLumeno.h"
#include "widgets/PictureWidget.h"
#include "widgets/QmlWidget.h"
#include "widgets/SliderWidget.h"
#include "widgets/TextWidget.h"
#include "widgets/ValueBarWidget.h"
#include "widgets/VectorGraphWidget.h"

#include <QtTest>

#include <memory>

using MakeWidget = BaseWidget* (*)(BaseGuiDevice* device);
Q_DECLARE_METATYPE(MakeWidget)

namespace {

template <class Widget>
BaseWidget* make(BaseGuiDevice* device)
{
    return new Widget(device, nullptr);
}

const QMap<QString, MakeWidget> kWidgets{
    {"ButtonWidget", &make<ButtonWidget>},
    {"CheckBoxWidget", &make<CheckBoxWidget>},
    {"DigitalWidget", &make<DigitalWidget>},
    {"DigitalWithProgress",
     [](BaseGuiDevice* device) -> BaseWidget* {
         return new DigitalWithProgress(device, nullptr, true);
     }},
    {"DropDownListWidget", &make<DropDownListWidget>},
    {"GraphOutputWidget", &make<GraphOutputWidget>},
    {"InputFieldWidget", &make<InputFieldWidget>},
    {"LabelWidget", &make<LabelWidget>},
    {"LampWidget", &make<LampWidget>},
    {"OutputBarLumeno", &make<OutputBarLumeno>},
    {"PictureWidget", &make<PictureWidget>},
    {"QmlWidget",
     [](BaseGuiDevice* device) -> BaseWidget* { return new QmlWidget(nullptr, device, nullptr); }},
    {"SliderWidget", &make<SliderWidget>},
    {"TextWidget", &make<TextWidget>},
    {"ValueBarWidget", &make<ValueBarWidget>},
    {"VectorGraphWidget", &make<VectorGraphWidget>}};

const DeviceManager& types()
{
    static const DeviceManager manager = [] {
        DeviceManager filled;
        NorvoGuiDevicesPluginInterface().registerDeviceType(filled);
        return filled;
    }();
    return manager;
}

} // namespace

/// Each widget attached to each device: the device works on, and nothing breaks.
class tst_WrongPairs : public QObject
{
    Q_OBJECT

private slots:
    void everyWidgetOfADeviceIsAmongThem();
    void deviceOutlivesAForeignWidget_data();
    void deviceOutlivesAForeignWidget();
    void widgetOutlivesAForeignDevice_data() { deviceOutlivesAForeignWidget_data(); }
    void widgetOutlivesAForeignDevice();
};

void tst_WrongPairs::everyWidgetOfADeviceIsAmongThem()
{
    const QStringList keys = types().factories().keys();
    QVERIFY(!keys.isEmpty());
    for (const QString& key : keys) {
        HostileLife::lead(types().createDevice(key), [](BaseDevice&, BaseWidget* widget) {
            const QString name = widget ? widget->metaObject()->className() : "";
            QVERIFY2(!widget || kWidgets.contains(name), qPrintable(name));
        });
    }
}

void tst_WrongPairs::deviceOutlivesAForeignWidget_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<MakeWidget>("makeWidget");
    const QStringList keys = types().factories().keys();
    for (const QString& key : keys) {
        for (auto widget = kWidgets.cbegin(); widget != kWidgets.cend(); ++widget) {
            QTest::newRow(qPrintable(key + ", " + widget.key())) << key << widget.value();
        }
    }
}

void tst_WrongPairs::deviceOutlivesAForeignWidget()
{
    QFETCH(QString, type);
    QFETCH(MakeWidget, makeWidget);
    const MessageLog whatDoesNotFit;
    const std::unique_ptr<BaseDevice> device(types().createDevice(type));
    const bool isReady = device->initialise();
    device->setRunning(isReady);
    const std::unique_ptr<BaseWidget> widget(
        makeWidget(qobject_cast<BaseGuiDevice*>(device.get())));
    widget->initialise();
    device->postInitialisation();
    HostileInputs(*device).sendSome();
    QCoreApplication::processEvents();
    HostileLife::paint(widget.get());
    QCOMPARE(device->isRunning(), isReady);
    device->setRunning(false);
    device->preShutdown();
    widget->deinitialise();
    device->deinitialise();
}

void tst_WrongPairs::widgetOutlivesAForeignDevice()
{
    QFETCH(QString, type);
    QFETCH(MakeWidget, makeWidget);
    const MessageLog whatDoesNotFit;
    std::unique_ptr<BaseDevice> device(types().createDevice(type));
    device->setRunning(device->initialise());
    const std::unique_ptr<BaseWidget> widget(
        makeWidget(qobject_cast<BaseGuiDevice*>(device.get())));
    widget->initialise();
    device.reset();
    QCoreApplication::processEvents();
    HostileLife::paint(widget.get());
    widget->deinitialise();
    QVERIFY(widget->getObjectName().isEmpty());
}

NORVO_TEST(tst_WrongPairs)
#include "tst_WrongPairs.moc"
