// SPDX-License-Identifier: GPL-3.0-or-later

#include "CaseWatch.h"
#include "HostileInputs.h"
#include "HostileLife.h"
#include "HostileValues.h"
#include "OfflineProcess.h"
#include "QuietMessages.h"
#include "TestMain.h"
#include "host/BuiltTypes.h"
#include "host/catalogue/Catalogue.h"
#include "host/catalogue/TypeExample.h"

#include "norvo/PortsDevice.h"

#include <QtTest>

/// The types whose outputs and inputs an author names, with those of their example: many do not
/// start on their defaults, and without a port they would do nothing.
class tst_HostilePorts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyExampleStarts_data() { typesOfPorts(); }
    void everyExampleStarts();
    void everyParameterOfTheExample_data() { typesOfPorts(); }
    void everyParameterOfTheExample();
    void everyDefinitionOfTheExample_data() { typesOfPorts(); }
    void everyDefinitionOfTheExample();
    void everyOptionOfTheExample_data() { typesOfPorts(); }
    void everyOptionOfTheExample();
    void everyNameOfAPort_data() { typesOfPorts(); }
    void everyNameOfAPort();
    void everyValueIntoTheExample_data() { typesOfPorts(); }
    void everyValueIntoTheExample();
    void cleanupTestCase() { qInfo().noquote() << m_watch->summary(); }

private:
    void typesOfPorts();
    norvo::DeviceSetting example(const QString& type) const;
    static std::unique_ptr<PortsDevice> made(const norvo::DeviceSetting& setting);
    static PortsDevice* madeOf(const QString& type);
    void live(const QString& name, const norvo::DeviceSetting& setting);

    HostileTexts m_texts;
    std::unique_ptr<norvo::Catalogue> m_catalogue;
    std::unique_ptr<CaseWatch> m_watch;
};

void tst_HostilePorts::initTestCase()
{
    QVERIFY(goOffline());
    quietMessages();
    m_catalogue = std::make_unique<norvo::Catalogue>(builtTypes());
    m_watch = std::make_unique<CaseWatch>();
}

void tst_HostilePorts::typesOfPorts()
{
    QTest::addColumn<QString>("type");
    int count = 0;
    const QStringList types = builtTypes().factories().keys();
    for (const QString& type : types) {
        const std::unique_ptr<PortsDevice> device(madeOf(type));
        if (device) {
            QTest::newRow(qPrintable(type)) << type;
            ++count;
        }
    }
    QVERIFY2(count >= 6, "calc, modbus, mqtt, process, serial and websocket at the least");
}

norvo::DeviceSetting tst_HostilePorts::example(const QString& type) const
{
    const norvo::TypeWords* const words = m_catalogue->words(type);
    const auto device = words ? norvo::TypeExample::device(*words) : std::nullopt;
    if (!device) {
        qFatal("%s has no example", qPrintable(type));
    }
    norvo::DeviceSetting setting = *device;
    if (setting.ports.isEmpty()) { // Lines, of a program for one, with the name before the value.
        setting.ports.resize(2);
        setting.ports[0].isOutput = true;
        setting.ports[0].name.text = "reading";
        setting.ports[0].definition.text = "^reading (.+)";
        setting.ports[1].name.text = "goal";
        setting.ports[1].definition.text = "goal %1";
    }
    return setting;
}

/// Null for another kind of device.
PortsDevice* tst_HostilePorts::madeOf(const QString& type)
{
    BaseDevice* const device = builtTypes().createDevice(type);
    auto* const ports = dynamic_cast<PortsDevice*>(device);
    if (!ports) {
        delete device;
    }
    return ports;
}

/// As the host makes it: parameters, then inputs, then outputs. Null where a port is refused: such
/// a panel does not run.
std::unique_ptr<PortsDevice> tst_HostilePorts::made(const norvo::DeviceSetting& setting)
{
    std::unique_ptr<PortsDevice> device(madeOf(setting.type.text));
    for (const norvo::ParamSetting& param : setting.params) {
        device->setParam(param.name.text, param.value.text);
    }
    for (const bool isOutput : {false, true}) {
        for (const norvo::PortSetting& port : setting.ports) {
            const PortDefinition definition(port.definition.text, port.options);
            if (port.isOutput != isOutput) {
                continue;
            }
            const QString refusal = isOutput ? device->addOutput(port.name.text, definition)
                                             : device->addInput(port.name.text, definition);
            if (!refusal.isEmpty()) {
                return nullptr;
            }
        }
    }
    return device;
}

void tst_HostilePorts::live(const QString& name, const norvo::DeviceSetting& setting)
{
    m_watch->run(name, [&] {
        if (auto device = made(setting)) {
            HostileLife::lead(device.release(), [](BaseDevice& running, BaseWidget*) {
                HostileInputs(running).sendSome();
            });
        }
    });
}

void tst_HostilePorts::everyExampleStarts()
{
    QFETCH(QString, type);
    bool hasStarted = false;
    const norvo::DeviceSetting setting = example(type);
    auto device = made(setting);
    QVERIFY(device);
    HostileLife::lead(device.release(), [&](BaseDevice& running, BaseWidget*) {
        hasStarted = true;
        for (const norvo::PortSetting& port : setting.ports) {
            QString signature;
            QObject* const end = port.isOutput ? running.getProvider(port.name.text, signature)
                                               : running.getReceiver(port.name.text, signature);
            QVERIFY2(end, qPrintable(port.name.text));
        }
    });
    QVERIFY(hasStarted);
}

void tst_HostilePorts::everyParameterOfTheExample()
{
    QFETCH(QString, type);
    const std::unique_ptr<PortsDevice> device(madeOf(type));
    const QStringList names = device->paramNames();
    for (const QString& name : names) {
        for (const HostileTexts::Named& text : m_texts.all()) {
            norvo::DeviceSetting setting = example(type);
            norvo::ParamSetting hostile;
            hostile.name.text = name;
            hostile.value.text = text.second;
            setting.params.append(hostile); // The later one counts.
            live(type + ", " + name + " = " + text.first, setting);
        }
    }
    QCOMPARE(m_watch->excesses(), QString());
}

void tst_HostilePorts::everyDefinitionOfTheExample()
{
    QFETCH(QString, type);
    const norvo::DeviceSetting usual = example(type);
    for (int i = 0; i < usual.ports.size(); ++i) {
        for (const HostileTexts::Named& text : m_texts.all()) {
            norvo::DeviceSetting setting = usual;
            norvo::PortSetting& port = setting.ports[i];
            port.definition.text = text.second;
            live(type + ", " + port.name.text + ": " + text.first, setting);
            port.definition.text = usual.ports.at(i).definition.text + ' ' + text.second;
            live(type + ", " + port.name.text + ": and " + text.first, setting);
        }
    }
    QCOMPARE(m_watch->excesses(), QString());
}

void tst_HostilePorts::everyOptionOfTheExample()
{
    QFETCH(QString, type);
    const norvo::DeviceSetting usual = example(type);
    const QStringList options{"bit",   "decimal", "offset", "order",    "qos",  "resend", "retain",
                              "scale", "send",    "stale",  "throttle", "type", "where",  "write"};
    for (int i = 0; i < usual.ports.size(); ++i) {
        for (const QString& option : options) {
            for (const HostileTexts::Named& text : m_texts.all()) {
                norvo::DeviceSetting setting = usual;
                norvo::PortSetting& port = setting.ports[i];
                port.options.insert(option, text.second);
                live(type + ", " + port.name.text + ", " + option + ": " + text.first, setting);
            }
        }
    }
    QCOMPARE(m_watch->excesses(), QString());
}

/// A name that is taken is one that a connection finds.
void tst_HostilePorts::everyNameOfAPort()
{
    QFETCH(QString, type);
    const norvo::DeviceSetting usual = example(type);
    for (const norvo::PortSetting& port : usual.ports) {
        for (const HostileTexts::Named& text : m_texts.all()) {
            const std::unique_ptr<PortsDevice> device(madeOf(type));
            const PortDefinition definition(port.definition.text, port.options);
            const QString wrong = port.isOutput ? device->addOutput(text.second, definition)
                                                : device->addInput(text.second, definition);
            QString signature;
            const QObject* const end = port.isOutput ? device->getProvider(text.second, signature)
                                                     : device->getReceiver(text.second, signature);
            QVERIFY2(wrong.isEmpty() == (end != nullptr), qPrintable(text.first));
        }
    }
}

void tst_HostilePorts::everyValueIntoTheExample()
{
    QFETCH(QString, type);
    const QVector<QPair<QString, QVariant>> values = hostileValues(m_texts);
    const norvo::DeviceSetting setting = example(type);
    QStringList unsent;
    auto device = made(setting);
    QVERIFY(device);
    HostileLife::lead(device.release(), [&](BaseDevice& running, BaseWidget*) {
        const HostileInputs inputs(running);
        for (const QString& input : inputs.signatures()) {
            for (const auto& value : values) {
                m_watch->run(type + '.' + input + " <- " + value.first, [&] {
                    if (!inputs.send(input, value.second)) {
                        unsent.append(input);
                    }
                    QCoreApplication::processEvents();
                });
            }
        }
    });
    QCOMPARE(unsent, QStringList());
    QCOMPARE(m_watch->excesses(), QString());
}

NORVO_TEST(tst_HostilePorts)

#include "tst_HostilePorts.moc"
