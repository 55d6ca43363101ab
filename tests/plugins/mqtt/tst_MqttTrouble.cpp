// SPDX-License-Identifier: GPL-3.0-or-later

#include "MqttSubject.h"
#include "Peer.h"
#include "TestBroker.h"
#include "TestMain.h"

#include <QtTest>

namespace {

constexpr int kPatience = 60000; ///< ms

} // namespace

/// A broker that goes, is silent, comes back.
class tst_MqttTrouble : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { mosquitto_lib_init(); }
    void cleanupTestCase() { mosquitto_lib_cleanup(); }
    void brokerThatIsNotThereIsReportedOnce();
    void unknownHostIsReported();
    void brokerThatGoesIsReported();
    void brokerThatComesBackIsFound();
    void silentBrokerIsReported();
    void silenceBeforeTheConnectionIsReported();
    void slowMessageIsNoSilence();
    void refusedSubscriptionIsReported();
    void staleOutputIsReportedAndRecovers();
    void retainedMessageDoesNotMakeFresh();
    void nothingGetsStaleWhileTheBrokerIsAway();
};

void tst_MqttTrouble::brokerThatIsNotThereIsReportedOnce()
{
    const QString address = QString("mqtt://127.0.0.1:%1").arg(TestBroker::freePort());
    MqttSubject panel(address);
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(panel.faults, QStringList(address + ": Connection refused"),
                              kPatience);
    QTest::qWait(1500); // It has tried again meanwhile.
    QCOMPARE(panel.faults.size(), 1);
    QCOMPARE(panel.notes, QStringList("away"));
}

void tst_MqttTrouble::unknownHostIsReported()
{
    MqttSubject panel("mqtt://no-such-host.invalid");
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(
        panel.faults,
        QStringList("mqtt://no-such-host.invalid:1883: the name of the host is not known"),
        kPatience);
    QCOMPARE(panel.notes, QStringList("away"));
}

void tst_MqttTrouble::brokerThatGoesIsReported()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.startAndConnect();
    broker.kill();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("away"), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(!panel.faults.isEmpty(), kPatience);
    QCOMPARE(panel.faults[0], broker.address() + ": the broker has closed the connection");
}

void tst_MqttTrouble::brokerThatComesBackIsFound()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.addOutput("t", QString("bench/t"));
    panel.addInput("set", QString("bench/set qos1"));
    panel.startAndConnect();
    broker.kill();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("away"), kPatience);
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("bench/set");
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes.mid(1), QStringList("connected"), kPatience);
    peer.publish("bench/t", "21", 1, true);
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes.mid(2), QStringList({"t number 21", "t text 21"}),
                              kPatience);
    panel.send("set", "(double)", 3.0);
    QTRY_COMPARE_WITH_TIMEOUT(peer.notes(), QStringList("bench/set 3 qos1"), kPatience);
}

void tst_MqttTrouble::silentBrokerIsReported()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.startAndConnect();
    QTest::qWait(3000); // Nothing comes by itself, but it answers when it is asked.
    QCOMPARE(panel.notes, QStringList());
    broker.freeze();
    QElapsedTimer clock;
    clock.start();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("away"), kPatience);
    qInfo("reported after %lld ms", clock.elapsed());
    QVERIFY(clock.elapsed() < 30000); // 2 s, but the machine may be slow.
    QTRY_VERIFY_WITH_TIMEOUT(!panel.faults.isEmpty(), kPatience);
    QCOMPARE(panel.faults[0], broker.address() + ": the broker has been silent for 2 s");
    broker.thaw();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes.mid(1), QStringList("connected"), kPatience);
}

void tst_MqttTrouble::silenceBeforeTheConnectionIsReported()
{
    TestBroker broker;
    broker.start();
    broker.freeze();
    MqttSubject panel(broker.address());
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(
        panel.faults, QStringList(broker.address() + ": the broker does not answer"), kPatience);
    QCOMPARE(panel.notes, QStringList("away"));
    broker.thaw();
    QTRY_VERIFY_WITH_TIMEOUT(panel.notes.contains("connected"), kPatience);
}

/// Sends a message a piece at a time, as a slow line would.
void tst_MqttTrouble::slowMessageIsNoSilence()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    MqttSubject panel(QString("mqtt://127.0.0.1:%1").arg(server.serverPort()));
    panel.device.setParam("version", "v3.1.1");
    panel.device.setParam("keepAlive", "0.5");
    panel.addOutput("t", QString("t"));
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(server.hasPendingConnections(), kPatience);
    const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
    socket->write(QByteArray("\x20\x02\x00\x00", 4)); // It accepts,
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("connected"), kPatience);
    socket->write(QByteArray("\x30\x17\x00\x01t", 5)); // and has 20 bytes for the topic "t".
    for (int i = 0; i < 20; ++i) {
        QTest::qWait(100);
        socket->write("x");
    }
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes.mid(1, 1), QStringList("t text " + QString(20, 'x')),
                              kPatience);
}

/// Plays the broker: one that grants no subscription at all.
void tst_MqttTrouble::refusedSubscriptionIsReported()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    MqttSubject panel(QString("mqtt://127.0.0.1:%1").arg(server.serverPort()));
    panel.device.setParam("version", "v3.1.1");
    panel.addOutput("t", QString("plant/secret"));
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(server.hasPendingConnections(), kPatience);
    const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
    socket->write(QByteArray("\x20\x02\x00\x00", 4)); // It accepts the connection.
    QByteArray received;
    const auto subscription = [&] { return received.indexOf("plant/secret"); };
    QTRY_VERIFY_WITH_TIMEOUT((received += socket->readAll(), subscription() >= 0), kPatience);
    const QByteArray id = received.mid(subscription() - 4, 2); // Its length lies between.
    socket->write(QByteArray("\x90\x03", 2) + id + '\x80');
    QTRY_COMPARE_WITH_TIMEOUT(
        panel.faults.value(0),
        QString("the broker refuses to send \"plant/secret\": no reason given"), kPatience);
}

void tst_MqttTrouble::staleOutputIsReportedAndRecovers()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.addOutput("t", {"bench/t", {{"stale", "500 ms"}}});
    panel.addOutput("u", QString("bench/u"));
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("stale"), kPatience);
    QTRY_COMPARE_WITH_TIMEOUT(panel.faults, QStringList("\"t\" is stale: no message for 0.5 s"),
                              kPatience);
    peer.publish("bench/t", "a");
    QTRY_COMPARE_WITH_TIMEOUT(
        panel.notes,
        QStringList({"stale", "t text a", "fresh", "\"t\" has got a message", "stale"}), kPatience);
    QTRY_COMPARE_WITH_TIMEOUT(panel.faults.size(), 2, kPatience);
}

void tst_MqttTrouble::retainedMessageDoesNotMakeFresh()
{
    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.waitUntilUp();
    peer.publish("bench/t", "a", 1, true);
    QTRY_COMPARE(peer.accepted(), 1);
    MqttSubject panel(broker.address());
    QCOMPARE(panel.device.addOutput("t", {"bench/t", {{"stale", "200 ms"}}}), QString());
    panel.startAndConnect();
    QTest::qWait(500); // Nobody hears it, so that it is not subscribed to.
    QCOMPARE(panel.notes, QStringList());
    panel.listenTo("t");
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes.size(), 2, kPatience);
    panel.notes.sort();
    QCOMPARE(panel.notes, QStringList({"stale", "t text a"}));
}

void tst_MqttTrouble::nothingGetsStaleWhileTheBrokerIsAway()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.addOutput("t", {"bench/t", {{"stale", "1 s"}}});
    panel.startAndConnect();
    broker.kill();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("away"), kPatience);
    QTest::qWait(2000);
    QCOMPARE(panel.notes, QStringList("away"));
}

NORVO_GUILESS_TEST(tst_MqttTrouble)
#include "tst_MqttTrouble.moc"
