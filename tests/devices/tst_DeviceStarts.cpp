// SPDX-License-Identifier: GPL-3.0-or-later

#include "Recorder.h"

#include "devices/ButtonDevice.h"
#include "devices/GraphSettingsDevice.h"
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
#include "devices/QmlGuiDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <functional>
#include <memory>

using Params = QMap<QString, QString>;
using DeviceFactory = std::function<std::unique_ptr<BaseDevice>()>;
Q_DECLARE_METATYPE(DeviceFactory)

namespace {

template <class Device>
DeviceFactory makes()
{
    return [] { return std::make_unique<Device>(); };
}

Params all(const QString& value, const QStringList& names)
{
    Params params;
    for (const QString& name : names) {
        params.insert(name, value);
    }
    return params;
}

/// What a device says of itself besides its signals.
QStringList answers(const BaseDevice& device)
{
    QStringList texts{device.description()};
    if (const auto* const input = qobject_cast<const InputDevice*>(&device)) {
        texts << input->getType() << input->getName() << input->getUnits() << input->getLayout();
        for (const double number :
             {input->getMinValue(), input->getMaxValue(), input->getValueStep(),
              double(input->getDecimals()), double(input->getUseScreenNumpad()),
              double(input->getUseScreenKeyboard())}) {
            texts << QString::number(number);
        }
    }
    if (const auto* const readout = qobject_cast<const OutputWithProgress*>(&device)) {
        texts << readout->getName() << readout->getType() << readout->getAlarmFile();
        for (const double number :
             {readout->getMinThreshold(), readout->getMaxThreshold(), readout->getMinValue(),
              readout->getMaxValue(), double(readout->getTimeout()),
              double(readout->getPrecision()), double(readout->getAlarmEnabled()),
              readout->getDigitsStep(), readout->getDashesStep()}) {
            texts << QString::number(number);
        }
    }
    return texts;
}

/// Calls each slot of the class with a few values.
void feed(BaseDevice& device)
{
    const QMap<int, QVariantList> values{
        {QMetaType::Bool, {true, false}},
        {QMetaType::Int, {1, 200}},
        {QMetaType::UChar, {QVariant::fromValue<unsigned char>(200)}},
        {QMetaType::Double, {0.75, -1.5, 2500.125}},
        {QMetaType::QString, {"%1 bar", "-2.5", "value2"}},
        {QMetaType::QByteArray, {QByteArray("\x0a")}},
    };
    const QMetaObject* const meta = device.metaObject();
    for (int i = BaseDevice::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() != QMetaMethod::Slot) {
            continue;
        }
        if (method.parameterCount() == 0) {
            QVERIFY(method.invoke(&device));
        }
        for (const QVariant& value : values.value(method.parameterType(0))) {
            QVERIFY(method.invoke(&device, QGenericArgument(value.typeName(), value.constData())));
        }
    }
}

void start(BaseDevice& device, const Params& params)
{
    device.setObjectName("device");
    for (auto param = params.cbegin(); param != params.cend(); ++param) {
        device.setParam(param.key(), param.value());
    }
    device.setRunning(device.initialise());
    device.postInitialisation();
}

void stop(BaseDevice& device)
{
    device.preShutdown();
    device.setRunning(false);
    device.deinitialise();
}

} // namespace

/// A device that was stopped and is started again goes by its parameters and nothing from before;
/// what it keeps of the values that passed stands in its own tests.
class tst_DeviceStarts : public QObject
{
    Q_OBJECT

private slots:
    void goesByTheParametersOfItsLatestStart_data();
    void goesByTheParametersOfItsLatestStart();
    void nothingIsEmittedByInitialise_data() { goesByTheParametersOfItsLatestStart_data(); }
    void nothingIsEmittedByInitialise();
};

void tst_DeviceStarts::goesByTheParametersOfItsLatestStart_data()
{
    QTest::addColumn<DeviceFactory>("make");
    QTest::addColumn<Params>("one");
    QTest::addColumn<Params>("other");
    const QStringList bar{"widget/minThreshold", "widget/maxThreshold", "widget/precision"};
    QTest::newRow("button") << makes<ButtonDevice>()
                            << Params{{"toggled", "true"}, {"mode", "toggle"}}
                            << Params{{"toggled", "false"}, {"mode", "click"}};
    QTest::newRow("graph_settings") << makes<GraphSettingsDevice>()
                                    << Params{{"name", "Pump"}, {"color", "red"}, {"fill", "true"}}
                                    << Params{{"name", ""}, {"color", ""}, {"fill", "false"}};
    QTest::newRow("indicator") << makes<IndicatorDevice>()
                               << Params{{"widget/caption", "one"}, {"widget/fontSize", "9"}}
                               << Params{{"widget/caption", ""}, {"widget/fontSize", "large"}};
    QTest::newRow("input") << makes<InputDevice>()
                           << Params{{"type", "int"},
                                     {"layout", "horizontal"},
                                     {"name", "P"},
                                     {"units", "bar"},
                                     {"min", "-1"},
                                     {"max", "9"},
                                     {"value step", "2"},
                                     {"decimals", "4"},
                                     {"use screen numpad", "true"},
                                     {"use screen keyboard", "true"}}
                           << Params{{"type", "spin"},
                                     {"layout", "vertical"},
                                     {"name", ""},
                                     {"units", ""},
                                     {"min", "0"},
                                     {"max", "0"},
                                     {"value step", "0"},
                                     {"decimals", "0"},
                                     {"use screen numpad", "false"},
                                     {"use screen keyboard", "false"}};
    QTest::newRow("label") << makes<Label>()
                           << Params{{"Value", "%0 bar"}, {"widget/precision", "3"}}
                           << Params{{"Value", ""}, {"widget/precision", "0"}};
    QTest::newRow("output_lumeno") << makes<LumenoBarDevice>() << Params{{"widget/name", "one"}}
                                   << Params{{"widget/name", ""}};
    QTest::newRow("multiline") << makes<MultilineDevice>() << Params{{"widget/fontSize", "5"}}
                               << Params{{"widget/fontSize", "large"}};
    QTest::newRow("output_bar") << makes<OutputBarDevice>() << all("1", bar) << all("?", bar);
    QTest::newRow("output_digital")
        << makes<OutputDigitalDevice>() << Params{{"name", "one"}, {"timeout", "100000"}}
        << Params{{"name", ""}, {"timeout", "?"}};
    QTest::newRow("output_graph") << makes<OutputGraphDevice>()
                                  << Params{{"name", "one"}, {"widget/timePeriod", "5"}}
                                  << Params{{"name", ""}, {"widget/timePeriod", "?"}};
    QTest::newRow("output_vector")
        << makes<OutputVector>() << Params{{"name", "one"}, {"widget/minValue", "5"}}
        << Params{{"name", ""}, {"widget/minValue", "?"}};
    QTest::newRow("output_with_progress")
        << makes<OutputWithProgress>()
        << Params{{"name", "one"},     {"minThreshold", "1"}, {"maxThreshold", "2000"},
                  {"minValue", "no"},  {"maxValue", "no"},    {"timeout", "100000"},
                  {"precision", "3"},  {"alarm", "true"},     {"alarmFile", "a.wav"},
                  {"digitsStep", "3"}, {"dashesStep", "4"},   {"type", "bar"}}
        << Params{{"name", ""},        {"minThreshold", "-10"}, {"maxThreshold", "0"},
                  {"minValue", "-5"},  {"maxValue", "5"},       {"timeout", "0"},
                  {"precision", "0"},  {"alarm", "false"},      {"alarmFile", ""},
                  {"digitsStep", "0"}, {"dashesStep", "0"},     {"type", ""}};
    QTest::newRow("qml_widget")
        << makes<QmlGuiDevice>()
        << Params{{"sourceType", "parameter"},
                  {"sourceData", "unused.qml"},
                  {"sourceCode", "import QtQuick 2.0\nItem { signal one() }\n"}}
        << Params{{"sourceType", "parameter"},
                  {"sourceData", ""},
                  {"sourceCode", "import QtQuick 2.0\nItem { function other() {} }\n"}};
}

void tst_DeviceStarts::goesByTheParametersOfItsLatestStart()
{
    QFETCH(DeviceFactory, make);
    QFETCH(Params, one);
    QFETCH(Params, other);
    for (const auto& [before, now] : {qMakePair(one, other), qMakePair(other, one)}) {
        const std::unique_ptr<BaseDevice> used = make();
        start(*used, before);
        stop(*used);
        const std::unique_ptr<BaseDevice> fresh = make();
        Recorder ofUsed(used.get());
        Recorder ofFresh(fresh.get());
        start(*used, now);
        start(*fresh, now);
        QCOMPARE(used->isRunning(), fresh->isRunning());
        QCOMPARE(answers(*used), answers(*fresh));
        feed(*used);
        feed(*fresh);
        QCOMPARE(ofUsed.take(), ofFresh.take());
        QCOMPARE(used->grabMethods({}, QMetaMethod::Signal, true),
                 fresh->grabMethods({}, QMetaMethod::Signal, true));
    }
}

void tst_DeviceStarts::nothingIsEmittedByInitialise()
{
    QFETCH(DeviceFactory, make);
    QFETCH(Params, one);
    const std::unique_ptr<BaseDevice> device = make();
    for (auto param = one.cbegin(); param != one.cend(); ++param) {
        device->setParam(param.key(), param.value());
    }
    Recorder recorder(device.get());
    device->initialise();
    QCOMPARE(recorder.take(), QStringList());
}

NORVO_TEST(tst_DeviceStarts)
#include "tst_DeviceStarts.moc"
