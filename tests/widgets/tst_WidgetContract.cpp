// SPDX-License-Identifier: GPL-3.0-or-later

#include "MessageLog.h"
#include "Recorder.h"

#include "devices/ButtonDevice.h"
#include "devices/CheckBoxDevice.h"
#include "devices/DropDownListDevice.h"
#include "devices/IndicatorDevice.h"
#include "devices/InputDevice.h"
#include "devices/Label.h"
#include "devices/LumenoBarDevice.h"
#include "devices/MultilineDevice.h"
#include "devices/OutputBarDevice.h"
#include "devices/OutputDigitalDevice.h"
#include "devices/OutputGraphDevice.h"
#include "devices/OutputVector.h"
#include "devices/OutputWithProgress.h"
#include "devices/SliderDevice.h"
#include "widgets/ButtonWidget.h"
#include "widgets/CheckBoxWidget.h"
#include "widgets/DigitalWidget.h"
#include "widgets/DigitalWithProgress.h"
#include "widgets/DropDownListWidget.h"
#include "widgets/InputFieldWidget.h"
#include "widgets/LabelWidget.h"
#include "widgets/LampWidget.h"
#include "widgets/OutputBarLumeno.h"
#include "widgets/TextWidget.h"
#include "widgets/ValueBarWidget.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

namespace {

using DeviceFactory = std::function<std::unique_ptr<BaseGuiDevice>()>;
using WidgetFactory = std::function<std::unique_ptr<BaseWidget>(BaseGuiDevice* device)>;

template <class Device>
std::unique_ptr<BaseGuiDevice> make()
{
    return std::make_unique<Device>();
}

template <class Widget>
std::unique_ptr<BaseWidget> attach(BaseGuiDevice* device)
{
    return std::make_unique<Widget>(device, nullptr);
}

/// Calls each slot that the widget's class declares, with 0, an empty text and so on.
void invokeSlots(QObject& widget)
{
    const QMetaObject* const meta = widget.metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() != QMetaMethod::Slot) {
            continue;
        }
        QVector<QVariant> values;
        QGenericArgument arguments[3];
        for (int p = 0; p < method.parameterCount(); ++p) {
            values.append(QVariant(method.parameterType(p), nullptr));
        }
        for (int p = 0; p < values.size(); ++p) {
            arguments[p] = QGenericArgument(values.at(p).typeName(), values.at(p).constData());
        }
        QVERIFY2(method.invoke(&widget, arguments[0], arguments[1], arguments[2]),
                 method.methodSignature());
    }
}

} // namespace

Q_DECLARE_METATYPE(DeviceFactory)
Q_DECLARE_METATYPE(WidgetFactory)

/// What the widgets have in common. The picture and the QML face need a file; see their own tests.
class tst_WidgetContract : public QObject
{
    Q_OBJECT

private slots:
    void deviceMakesItsWidget_data();
    void deviceMakesItsWidget();
    void initialisedFlagLastsUntilDeinitialise_data() { deviceMakesItsWidget_data(); }
    void initialisedFlagLastsUntilDeinitialise();

    void foreignDeviceIsReportedOnce_data();
    void foreignDeviceIsReportedOnce();
    void noDeviceIsReportedToo_data() { foreignDeviceIsReportedOnce_data(); }
    void noDeviceIsReportedToo();
};

void tst_WidgetContract::deviceMakesItsWidget_data()
{
    QTest::addColumn<DeviceFactory>("makeDevice");
    QTest::addColumn<bool>("staysInitialised"); ///< Its deinitialise() leaves the flag as it is.
    QTest::newRow("ButtonWidget") << DeviceFactory(make<ButtonDevice>) << false;
    QTest::newRow("CheckBoxWidget") << DeviceFactory(make<CheckBoxDevice>) << false;
    QTest::newRow("DigitalWidget") << DeviceFactory(make<OutputDigitalDevice>) << true;
    QTest::newRow("DigitalWithProgress") << DeviceFactory(make<OutputWithProgress>) << true;
    QTest::newRow("DropDownListWidget") << DeviceFactory(make<DropDownListDevice>) << false;
    QTest::newRow("GraphOutputWidget") << DeviceFactory(make<OutputGraphDevice>) << true;
    QTest::newRow("InputFieldWidget") << DeviceFactory(make<InputDevice>) << false;
    QTest::newRow("LabelWidget") << DeviceFactory(make<Label>) << false;
    QTest::newRow("LampWidget") << DeviceFactory(make<IndicatorDevice>) << false;
    QTest::newRow("OutputBarLumeno") << DeviceFactory(make<LumenoBarDevice>) << true;
    QTest::newRow("SliderWidget") << DeviceFactory(make<SliderDevice>) << false;
    QTest::newRow("TextWidget") << DeviceFactory(make<MultilineDevice>) << false;
    QTest::newRow("ValueBarWidget") << DeviceFactory(make<OutputBarDevice>) << false;
    QTest::newRow("VectorGraphWidget") << DeviceFactory(make<OutputVector>) << false;
}

void tst_WidgetContract::deviceMakesItsWidget()
{
    QFETCH(DeviceFactory, makeDevice);
    const std::unique_ptr<BaseGuiDevice> device = makeDevice();
    const std::unique_ptr<BaseWidget> widget(device->createWidget());
    QCOMPARE(widget->metaObject()->className(), QTest::currentDataTag());
    QCOMPARE(widget->metaObject()->superClass()->className(), "BaseWidget");
    QVERIFY(!widget->parent());
}

void tst_WidgetContract::initialisedFlagLastsUntilDeinitialise()
{
    QFETCH(DeviceFactory, makeDevice);
    QFETCH(bool, staysInitialised);
    const std::unique_ptr<BaseGuiDevice> device = makeDevice();
    device->setRunning(device->initialise());
    const std::unique_ptr<BaseWidget> widget(device->createWidget());
    QVERIFY(!widget->isInitialised());
    MessageLog log;
    widget->initialise();
    QVERIFY(widget->isInitialised());
    QCOMPARE(log.take(), QStringList());
    widget->deinitialise();
    QCOMPARE(widget->isInitialised(), staysInitialised);
}

void tst_WidgetContract::foreignDeviceIsReportedOnce_data()
{
    QTest::addColumn<WidgetFactory>("attachWidget");
    QTest::newRow("ButtonWidget") << WidgetFactory(attach<ButtonWidget>);
    QTest::newRow("CheckBoxWidget") << WidgetFactory(attach<CheckBoxWidget>);
    QTest::newRow("DigitalWidget") << WidgetFactory(attach<DigitalWidget>);
    QTest::newRow("DigitalWithProgress") << WidgetFactory([](BaseGuiDevice* device) {
        return std::make_unique<DigitalWithProgress>(device, nullptr, true);
    });
    QTest::newRow("DropDownListWidget") << WidgetFactory(attach<DropDownListWidget>);
    QTest::newRow("InputFieldWidget") << WidgetFactory(attach<InputFieldWidget>);
    QTest::newRow("LabelWidget") << WidgetFactory(attach<LabelWidget>);
    QTest::newRow("LampWidget") << WidgetFactory(attach<LampWidget>);
    QTest::newRow("OutputBarLumeno") << WidgetFactory(attach<OutputBarLumeno>);
    QTest::newRow("TextWidget") << WidgetFactory(attach<TextWidget>);
    QTest::newRow("ValueBarWidget") << WidgetFactory(attach<ValueBarWidget>);
}

void tst_WidgetContract::foreignDeviceIsReportedOnce()
{
    QFETCH(WidgetFactory, attachWidget);
    SliderDevice foreign; // the one device whose widget has no such message
    const std::unique_ptr<BaseWidget> widget = attachWidget(&foreign);
    MessageLog log;
    widget->initialise();
    QCOMPARE(log.take(), QStringList(QString("debug: %1: Error! Attached to incompatible device")
                                         .arg(QTest::currentDataTag())));
    QVERIFY(!widget->isInitialised());
    invokeSlots(*widget);
    QVERIFY(widget->findChildren<QWidget*>().isEmpty());
    QCOMPARE(log.take(), QStringList());

    Recorder recorder(&foreign);
    foreign.input(1.0);
    QCOMPARE(recorder.take(), QStringList("wgOutput(1)"));
}

void tst_WidgetContract::noDeviceIsReportedToo()
{
    QFETCH(WidgetFactory, attachWidget);
    const std::unique_ptr<BaseWidget> widget = attachWidget(nullptr);
    MessageLog log;
    widget->initialise();
    QCOMPARE(log.take(), QStringList(QString("debug: %1: Error! Attached to incompatible device")
                                         .arg(QTest::currentDataTag())));
    QVERIFY(!widget->isInitialised());
    QVERIFY(widget->findChildren<QWidget*>().isEmpty());
}

NORVO_TEST(tst_WidgetContract)
#include "tst_WidgetContract.moc"
