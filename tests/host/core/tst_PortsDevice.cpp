// SPDX-License-Identifier: LGPL-3.0-or-later

#include "PortsEnds.h"
#include "PortsSubject.h"
#include "TestMain.h"

#include <QPointer>
#include <QtTest>

#include <ctime>

#include <malloc.h>

namespace {

using Received = QVector<QPair<int, QVariant>>;

} // namespace

/// How a device gets the outputs and inputs that a panel's author names, and how it ends.
class tst_PortsDevice : public QObject
{
    Q_OBJECT

private slots:
    void portsAreDefinedInTheirOrder();
    void formsAreListedBehindThoseOfTheClass();
    void bareNameGivesTheFirstForm();
    void nameThatIsTakenIsRefused_data();
    void nameThatIsTakenIsRefused();
    void faultOfADefinitionLeavesNoPort();
    void everyIdIsAName_data();
    void everyIdIsAName();
    void portsAfterTheFirstConnectionAreRefused();
    void portsBeyondTheLimitAreRefused();
    void deviceMayBeDeletedWithinASlot();
    void receiverMayDeleteTheDevice();
    void receiverMayEndTheRunning();
    void thousandPortsTakeLittleTime();
    void hundredThousandDevicesLeaveNothing();
};

void tst_PortsDevice::portsAreDefinedInTheirOrder()
{
    PortsSubject device;
    QCOMPARE(device.addOutput("speed", QString("holding 1")), QString());
    QCOMPARE(device.addInput("set", QString("coil 3")), QString());
    QCOMPARE(device.addOutput("heat", {"coil 4", {{"keep", "true"}}}), QString());
    QCOMPARE(device.addInput("start", {}), QString());
    QCOMPARE(device.outputs, QStringList({"0 speed holding 1", "1 heat coil 4"}));
    QCOMPARE(device.inputs, QStringList({"0 set coil 3", "1 start "}));
}

void tst_PortsDevice::formsAreListedBehindThoseOfTheClass()
{
    PortsSubject device;
    const QStringList signalsBefore{"connected(bool)", "fault(QString)", "ready()"};
    QCOMPARE(device.grabMethods({}, QMetaMethod::Signal, false), signalsBefore);
    device.addOutput("x", {});
    device.addInput("set", {});
    device.addOutput("y", {});
    QCOMPARE(device.grabMethods({}, QMetaMethod::Signal, false),
             signalsBefore + QStringList({"x(double)", "x(QString)", "x(bool)", "y(double)",
                                          "y(QString)", "y(bool)"}));
    const QStringList set{"set(double)", "set(int)", "set(bool)", "set(QString)", "set()"};
    QCOMPARE(device.grabMethods({}, QMetaMethod::Slot, false), QStringList("restart()") + set);
    QCOMPARE(device.grabMethods("set", QMetaMethod::Slot, true), set);
    QCOMPARE(device.grabMethods("set", QMetaMethod::Signal, true), QStringList());
    QCOMPARE(device.grabMethods("ready", QMetaMethod::Signal, true), QStringList("ready()"));
}

void tst_PortsDevice::bareNameGivesTheFirstForm()
{
    PortsSubject device;
    device.addOutput("x", {});
    device.addInput("set", {});
    QString signature;
    QObject* const ports = device.getProvider("x", signature);
    QVERIFY(ports && ports != &device);
    QCOMPARE(signature, QString("x(double)"));
    QCOMPARE(device.getProvider("x( const QString & )", signature), ports);
    QCOMPARE(signature, QString("x(QString)"));
    QCOMPARE(device.getProvider(" x (bool)", signature), ports);
    QCOMPARE(signature, QString("x(bool)"));
    QCOMPARE(device.getReceiver("set", signature), ports);
    QCOMPARE(signature, QString("set(double)"));
    QCOMPARE(device.getReceiver("set()", signature), ports);
    QCOMPARE(device.getProvider("ready", signature), &device);
    for (const char* name : {"set", "x(int)", "", "y", "deleteLater()", "x("}) {
        QCOMPARE(device.getProvider(name, signature), nullptr);
        QCOMPARE(signature, QString());
    }
    QCOMPARE(device.getReceiver("x", signature), nullptr);
}

void tst_PortsDevice::nameThatIsTakenIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("error");

    QTest::newRow("an output") << "x"
                               << "there is an output \"x\" already; a device has each name once";
    QTest::newRow("an input") << "set"
                              << "there is an input \"set\" already; a device has each name once";
    QTest::newRow("a parameter")
        << "Command"
        << "\"Command\" is the name of a parameter of the device; choose another";
    const QString own = " is the name of an output or input that the device has by itself; choose "
                        "another";
    for (const char* name : {"ready", "restart", "connected", "errorOccurred", "deleteLater"}) {
        QTest::newRow(name) << name << '"' + QString(name) + '"' + own;
    }
    for (const char* name : {"", "a b", "a.b", "a(double)"}) {
        QTest::newRow(*name ? name : "nothing")
            << name
            << QString("the name \"%1\" holds more than letters, digits, \"_\" and \"-\"")
                   .arg(name);
    }
}

void tst_PortsDevice::nameThatIsTakenIsRefused()
{
    QFETCH(QString, name);

    PortsSubject device;
    device.addOutput("x", {});
    device.addInput("set", {});
    QTEST(device.addOutput(name, {}), "error");
    QTEST(device.addInput(name, {}), "error");
    QCOMPARE(device.outputs.size(), 1);
    QCOMPARE(device.inputs.size(), 1);
}

void tst_PortsDevice::faultOfADefinitionLeavesNoPort()
{
    PortsSubject device;
    QCOMPARE(device.addOutput("x", QString("bad one")), QString("\"bad one\" is bad"));
    QCOMPARE(device.addInput("y", QString("bad two")), QString("\"bad two\" is bad"));
    QCOMPARE(device.addOutput("x", {"good", {{"kep", "1"}}}),
             QString("unknown option \"kep\"; valid names: \"as\", \"keep\""));
    QCOMPARE(device.addOutput("x", {"good", {{"Keep", "1"}}}),
             QString("unknown option \"Keep\"; valid names: \"as\", \"keep\""));
    QCOMPARE(device.grabMethods("x", QMetaMethod::Signal, true), QStringList());
    QCOMPARE(device.addInput("x", QString("good")), QString());
    QCOMPARE(device.addOutput("z", QString("good")), QString()); // with the number of the bad one
    QVERIFY(device.outputs.contains("0 z good"));
    QCOMPARE(device.inputs, QStringList("0 x good"));
}

void tst_PortsDevice::everyIdIsAName_data()
{
    QTest::addColumn<QString>("name");

    for (const char* name : {"set-point", "3", "-", "_x", "Größe", "温度", "const", "unsigned",
                             "double", "QString", "destroyed2"}) {
        QTest::newRow(name) << QString::fromUtf8(name);
    }
}

void tst_PortsDevice::everyIdIsAName()
{
    QFETCH(QString, name);

    PortsSubject device;
    QCOMPARE(device.addOutput(name, {}), QString());
    QCOMPARE(device.addInput(name + "2", {}), QString());
    device.setRunning(true);
    Listener listener;
    listener.listenTo(device, name);
    Sender sender;
    sender.sendTo(device, name + "2");
    device.sendText(0, "1");
    QCOMPARE(listener.notes, QStringList({"number 1", "text 1", "yes"}));
    emit sender.value(QString("a"));
    QCOMPARE(device.received, (Received{{0, "a"}}));
}

void tst_PortsDevice::portsAfterTheFirstConnectionAreRefused()
{
    PortsSubject device;
    device.addOutput("w", {});
    QString signature;
    QVERIFY(!device.getProvider("w(int)", signature)); // No connection comes of it.
    QCOMPARE(device.addOutput("x", {}), QString());
    device.getProvider("x", signature);
    QCOMPARE(device.addOutput("y", {}), QString("the device is connected already"));
    QCOMPARE(device.addInput("y", {}), QString("the device is connected already"));
}

void tst_PortsDevice::portsBeyondTheLimitAreRefused()
{
    PortsSubject device;
    for (int i = 0; i < PortsDevice::kMaxPorts; ++i) {
        QCOMPARE(device.addInput(QString("i%1").arg(i), {}), QString());
    }
    QCOMPARE(device.addOutput("x", {}),
             QString("a device has 5000 named outputs and inputs at most"));
    device.setRunning(true);
    Sender sender;
    sender.sendTo(device, QString("i%1").arg(PortsDevice::kMaxPorts - 1));
    emit sender.value(7);
    QCOMPARE(device.received, (Received{{PortsDevice::kMaxPorts - 1, 7}}));
}

void tst_PortsDevice::deviceMayBeDeletedWithinASlot()
{
    QPointer<PortsSubject> device = new PortsSubject;
    device->addInput("set", {});
    device->setRunning(true);
    device->deletesItself = true;
    Sender sender;
    sender.sendTo(*device, "set");
    emit sender.value(QString("end"));
    QVERIFY(!device);
}

void tst_PortsDevice::receiverMayDeleteTheDevice()
{
    QPointer<PortsSubject> device = new PortsSubject;
    device->addOutput("x", {});
    device->setRunning(true);
    Listener listener;
    listener.listenTo(*device, "x");
    listener.onNote = [&device] { delete device; };
    device->sendText(0, "1");
    QVERIFY(!device);
    QCOMPARE(listener.notes, QStringList("number 1"));
}

void tst_PortsDevice::receiverMayEndTheRunning()
{
    PortsSubject device;
    device.addOutput("x", {});
    device.setRunning(true);
    Listener listener;
    listener.listenTo(device, "x");
    listener.onNote = [&device] { device.setRunning(false); };
    device.sendNumber(0, 1);
    QCOMPARE(listener.notes, QStringList("number 1"));
}

void tst_PortsDevice::thousandPortsTakeLittleTime()
{
    const std::clock_t before = std::clock();
    PortsSubject device;
    Listener listener;
    Sender sender;
    for (int i = 0; i < 500; ++i) {
        device.addInput(QString("in%1").arg(i), {});
        device.addOutput(QString("out%1").arg(i), {});
    }
    device.setRunning(true);
    for (int i = 0; i < 500; ++i) {
        listener.listenTo(device, QString("out%1").arg(i));
        sender.sendTo(device, QString("in%1").arg(i));
    }
    const double milliseconds = 1e3 * double(std::clock() - before) / CLOCKS_PER_SEC;
    emit sender.value(1);
    QCOMPARE(device.received.size(), 500);
    qInfo("%.1f ms for 4,000 connections", milliseconds);
    QVERIFY2(milliseconds < 3000, qPrintable(QString::number(milliseconds)));
}

void tst_PortsDevice::hundredThousandDevicesLeaveNothing()
{
    const auto makeAndUse = [](int count) {
        for (int i = 0; i < count; ++i) {
            PortsSubject device;
            device.addOutput("x", QString("definition of an output"));
            device.addInput("set", QString("definition of an input"));
            device.setRunning(true);
            QString signature;
            QObject* const provider = device.getProvider("x(QString)", signature);
            QObject* const receiver = device.getReceiver("set(QString)", signature);
            QVERIFY(QObject::connect(provider, SIGNAL(x(QString)), receiver, SLOT(set(QString))));
            device.sendText(0, "through");
            QCOMPARE(device.received.size(), 1);
        }
    };
    makeAndUse(1000);
    const auto before = mallinfo2().uordblks;
    makeAndUse(100000);
    const auto after = mallinfo2().uordblks;
    QVERIFY2(after < before + 64 * 1024, qPrintable(QString::number(after - before)));
}

NORVO_TEST(tst_PortsDevice)
#include "tst_PortsDevice.moc"
