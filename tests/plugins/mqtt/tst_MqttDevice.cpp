// SPDX-License-Identifier: GPL-3.0-or-later

#include "MqttSubject.h"
#include "Peer.h"
#include "TestBroker.h"
#include "TestMain.h"

#include <QtTest>

/// What goes in and out while the broker is well.
class tst_MqttDevice : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { mosquitto_lib_init(); }
    void cleanupTestCase() { mosquitto_lib_cleanup(); }
    void messagesOfEachQualityArrive_data();
    void messagesOfEachQualityArrive();
    void writesOfEachQualityArrive_data();
    void writesOfEachQualityArrive();
    void retainedMessagesComeAtTheStart();
    void wildcardsTakeWhatFits_data();
    void wildcardsTakeWhatFits();
    void jsonPathFindsTheValue();
    void jsonPathPlacesTheValue();
    void whatNobodyHearsIsNotSubscribedTo();
    void topicOfTwoOutputsIsSubscribedToOnce();
    void binaryPayloadIsRefusedAndCounted();
    void hugePayloadIsRefusedAndCounted();
    void hugeWriteIsRefusedAndCounted();
    void stopIsQuick();
    void receiverMayDeleteTheDevice();
};

namespace {

void addQualities()
{
    QTest::addColumn<int>("qos");
    QTest::addColumn<QString>("version");
    for (const char* version : {"v5", "v3.1.1"}) {
        for (int qos = 0; qos <= 2; ++qos) {
            QTest::addRow("qos %d, %s", qos, version) << qos << QString(version);
        }
    }
}

/// Until the broker has the subscription: it has answered what was asked after it.
void waitForSubscription(MqttSubject& panel, Peer& peer)
{
    int count = 0;
    while (!panel.notes.contains("ready text yes") && ++count < 1000) {
        peer.publish("is/it/ready", "yes");
        QTest::qWait(20);
    }
    QVERIFY(count < 1000);
    peer.publish("is/it/ready", "done"); // What was sent before comes before it.
    QTRY_VERIFY_WITH_TIMEOUT(panel.notes.contains("ready text done"), 60000);
    panel.notes.clear();
}

} // namespace

void tst_MqttDevice::messagesOfEachQualityArrive_data()
{
    addQualities();
}

void tst_MqttDevice::messagesOfEachQualityArrive()
{
    QFETCH(int, qos);
    QFETCH(QString, version);

    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.device.setParam("version", version);
    panel.addOutput("t", QString("bench/1/t qos%1").arg(qos));
    panel.addOutput("ready", QString("is/it/ready"));
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();
    waitForSubscription(panel, peer);
    peer.publish("bench/1/t", "21.5", qos);
    peer.publish("bench/1/t", "on", qos);
    peer.publish("bench/1/t", "grün", qos);
    peer.publish("bench/1/t", "", qos);
    QTRY_COMPARE(panel.notes, QStringList({"t number 21.5", "t text 21.5", "t text on", "t yes",
                                           "t text grün", "t text "}));
    QCOMPARE(panel.alerts, QStringList());
}

void tst_MqttDevice::writesOfEachQualityArrive_data()
{
    addQualities();
}

void tst_MqttDevice::writesOfEachQualityArrive()
{
    QFETCH(int, qos);
    QFETCH(QString, version);

    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("bench/#");
    MqttSubject panel(broker.address());
    panel.device.setParam("version", version);
    panel.addInput("set", QString("bench/set qos%1").arg(qos));
    panel.addInput("kept", {"bench/kept", {{"qos", QString::number(qos)}, {"retain", "true"}}});
    panel.addInput("go", QString("\"bench/go now\" qos%1").arg(qos));
    panel.startAndConnect();
    panel.send("set", "(double)", 21.5);
    panel.send("set", "(int)", -3);
    panel.send("set", "(bool)", true);
    panel.send("set", "(QString)", QString("grün"));
    panel.send("kept", "(double)", 1e6);
    panel.pulse("go");
    const QString quality = QString(" qos%1").arg(qos);
    QTRY_COMPARE(peer.notes(),
                 QStringList({"bench/set 21.5" + quality, "bench/set -3" + quality,
                              "bench/set true" + quality, "bench/set grün" + quality,
                              "bench/kept 1000000" + quality, "bench/go now " + quality}));
    Peer late(broker.port());
    late.subscribe("bench/#");
    QTRY_COMPARE(late.notes(), QStringList("bench/kept 1000000" + quality + " retained"));
    QCOMPARE(panel.alerts, QStringList());
}

void tst_MqttDevice::retainedMessagesComeAtTheStart()
{
    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.waitUntilUp();
    peer.publish("bench/t", "20", 1, true);
    peer.publish("bench/t", "21", 1, true);
    QTRY_COMPARE(peer.accepted(), 2);
    MqttSubject panel(broker.address());
    panel.addOutput("t", QString("bench/t qos1"));
    panel.start();
    QTRY_COMPARE(panel.notes, QStringList({"connected", "t number 21", "t text 21"}));
}

void tst_MqttDevice::wildcardsTakeWhatFits_data()
{
    QTest::addColumn<QString>("version");
    QTest::newRow("v5") << "v5";
    QTest::newRow("v3.1.1") << "v3.1.1";
}

void tst_MqttDevice::wildcardsTakeWhatFits()
{
    QFETCH(QString, version);

    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.device.setParam("version", version);
    panel.addOutput("any", QString("plant/+/speed"));
    panel.addOutput("all", QString("hall/#"));
    panel.addOutput("ready", QString("is/it/ready"));
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();
    waitForSubscription(panel, peer);
    peer.publish("plant/1/speed", "one");
    peer.publish("plant/1/2/speed", "no");
    peer.publish("plant/2/speed", "two");
    peer.publish("hall", "three");
    peer.publish("hall/a/b", "four");
    QTRY_COMPARE(panel.notes,
                 QStringList({"any text one", "any text two", "all text three", "all text four"}));
}

void tst_MqttDevice::jsonPathFindsTheValue()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.addOutput("t", QString("bench $.values[1]"));
    panel.addOutput("on", QString("bench $['is on']"));
    panel.addOutput("name", QString("bench $.name"));
    panel.addOutput("ready", QString("is/it/ready"));
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();
    waitForSubscription(panel, peer);
    peer.publish("bench", "{\"values\": [1, 2.5], \"is on\": true, \"name\": \"A 1\"}");
    QTRY_COMPARE(panel.notes, QStringList({"t number 2.5", "t text 2.5", "on number 1",
                                           "on text true", "on yes", "name text A 1"}));
    peer.publish("bench", "{\"values\": [1], \"name\": \"B\"}");
    peer.publish("bench", "no JSON");
    QTRY_COMPARE_WITH_TIMEOUT(
        panel.alerts,
        QStringList("messages refused, they are not JSON or have no value of the path: 5"), 30000);
    QCOMPARE(panel.notes.mid(6), QStringList("name text B"));
}

void tst_MqttDevice::jsonPathPlacesTheValue()
{
    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("bench/#");
    MqttSubject panel(broker.address());
    panel.addInput("set", QString("bench/set $.goal.value qos1"));
    panel.addInput("bare", QString("bench/bare qos1 $"));
    panel.startAndConnect();
    panel.send("set", "(double)", 2.5);
    panel.send("set", "(bool)", true);
    panel.send("bare", "(QString)", QString("a \"b\""));
    panel.pulse("bare");
    QTRY_COMPARE(peer.notes(),
                 QStringList({"bench/set {\"goal\":{\"value\":2.5}} qos1",
                              "bench/set {\"goal\":{\"value\":true}} qos1",
                              "bench/bare \"a \\\"b\\\"\" qos1", "bench/bare null qos1"}));
}

void tst_MqttDevice::whatNobodyHearsIsNotSubscribedTo()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.device.setParam("clientId", "panel");
    panel.addOutput("heard", QString("bench/heard"));
    QCOMPARE(panel.device.addOutput("other", QString("bench/other")), QString());
    panel.startAndConnect();
    QTRY_VERIFY(broker.log().contains("panel 0 bench/heard"));
    QVERIFY(!broker.log().contains("bench/other"));

    panel.listenTo("other"); // As a connection of a panel that is changed while it runs.
    QTRY_VERIFY_WITH_TIMEOUT(broker.log().contains("panel 0 bench/other"), 30000);
    panel.listeners.clear();
    QTRY_VERIFY_WITH_TIMEOUT(broker.log().contains("Received UNSUBSCRIBE from panel"), 30000);
}

void tst_MqttDevice::topicOfTwoOutputsIsSubscribedToOnce()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.device.setParam("clientId", "panel");
    panel.addOutput("a", QString("bench/t"));
    panel.addOutput("b", QString("bench/t $.x qos2"));
    panel.addOutput("wide", QString("bench/#"));
    panel.addOutput("ready", QString("is/it/ready"));
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();
    waitForSubscription(panel, peer);
    QCOMPARE(broker.log().count("panel 2 bench/t"), 1);
    peer.publish("bench/t", "{\"x\":1}");
    QTRY_COMPARE(panel.notes.size(), 5);
    panel.notes.sort(); // The broker sends it for each filter, in an order of its own.
    QCOMPARE(panel.notes, QStringList({"a text {\"x\":1}", "b number 1", "b text 1", "b yes",
                                       "wide text {\"x\":1}"}));
    QTest::qWait(100);
    QCOMPARE(panel.notes.size(), 5);
}

void tst_MqttDevice::binaryPayloadIsRefusedAndCounted()
{
    QByteArray garbage(10000, '\0');
    for (int i = 0; i < garbage.size(); ++i) {
        garbage[i] = char(i * 37 + i / 256);
    }
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.addOutput("t", QString("bench"));
    panel.addOutput("x", QString("bench $.x"));
    panel.addOutput("ready", QString("is/it/ready"));
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();
    waitForSubscription(panel, peer);
    peer.publish("bench", garbage);
    peer.publish("bench", "\xff");
    peer.publish("bench", "{\"x\":\"\xff\"}");
    peer.publish("bench", "\xef\xbf\xbd"); // The character itself is one as others are.
    QTRY_VERIFY(!panel.notes.isEmpty());
    QCOMPARE(panel.notes, QStringList(QString::fromUtf8("t text \xef\xbf\xbd")));
    QTRY_COMPARE_WITH_TIMEOUT(panel.alerts.size(), 2, 30000);
    QCOMPARE(panel.alerts,
             QStringList({"messages refused, they are not text in UTF-8: 3",
                          "messages refused, they are not JSON or have no value of the path: 4"}));
}

void tst_MqttDevice::hugePayloadIsRefusedAndCounted()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.addOutput("t", QString("bench"));
    panel.addOutput("ready", QString("is/it/ready"));
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();
    waitForSubscription(panel, peer);
    peer.publish("bench", QByteArray(10 * 1000 * 1000, 'x'), 1);
    peer.publish("bench", QByteArray(20 * 1000 * 1000, 'x'), 1); // The broker may not send it.
    peer.publish("bench", QByteArray(1024 * 1024, 'x'), 1);
    peer.publish("bench", "after it", 1);
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes.size(), 2, 60000);
    QCOMPARE(panel.notes[0].size(), 7 + 1024 * 1024);
    QCOMPARE(panel.notes[1], QString("t text after it"));
    QTRY_COMPARE_WITH_TIMEOUT(
        panel.alerts, QStringList("messages refused, they are longer than 1 MiB: 1"), 30000);
}

void tst_MqttDevice::hugeWriteIsRefusedAndCounted()
{
    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("bench/#");
    MqttSubject panel(broker.address());
    panel.addInput("set", QString("bench/set qos1"));
    panel.startAndConnect();
    panel.send("set", "(QString)", QString(1024 * 1024 + 1, 'x'));
    panel.send("set", "(QString)", QString("after it"));
    QTRY_COMPARE(peer.notes(), QStringList("bench/set after it qos1"));
    QTRY_COMPARE_WITH_TIMEOUT(panel.alerts,
                              QStringList("writes refused, they are longer than 1 MiB: 1"), 30000);
}

void tst_MqttDevice::stopIsQuick()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.addInput("set", QString("bench/set qos1"));
    panel.device.setParam("status", "panels/one");
    panel.startAndConnect();
    broker.freeze();
    panel.send("set", "(double)", 1.0);
    QElapsedTimer clock;
    clock.start();
    panel.stop();
    QVERIFY(clock.elapsed() < 10000); // Half a second for the farewell.
    broker.thaw();
}

void tst_MqttDevice::receiverMayDeleteTheDevice()
{
    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.waitUntilUp();
    peer.publish("bench/t", "21", 1, true);
    QTRY_COMPARE(peer.accepted(), 1);
    auto device = std::make_unique<MqttDevice>();
    device->setParam("broker", broker.address());
    QCOMPARE(device->addOutput("t", QString("bench/t")), QString());
    Listener listener;
    listener.onNote = [&device] { device.reset(); };
    listener.listenTo(*device, "t");
    QVERIFY(device->initialise());
    device->setRunning(true);
    device->postInitialisation();
    QTRY_VERIFY_WITH_TIMEOUT(!device, 30000);
    QCOMPARE(listener.notes, QStringList("number 21"));
}

NORVO_GUILESS_TEST(tst_MqttDevice)
#include "tst_MqttDevice.moc"
