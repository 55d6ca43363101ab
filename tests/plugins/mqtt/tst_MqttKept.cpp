// SPDX-License-Identifier: GPL-3.0-or-later

#include "MqttSubject.h"
#include "Peer.h"
#include "TestBroker.h"
#include "TestMain.h"

#include <QtTest>

namespace {

constexpr int kPatience = 60000; ///< ms

const QStringList kKeeping{"allow_anonymous true", "persistence true",
                           "persistence_location %/"}; ///< A broker that outlives its end.

} // namespace

/// What is kept while the connection is broken, and what never is.
class tst_MqttKept : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { mosquitto_lib_init(); }
    void cleanupTestCase() { mosquitto_lib_cleanup(); }
    void writeBeforeTheConnectionIsNeverSent();
    void writeToASilentBrokerIsNeverSent_data();
    void writeToASilentBrokerIsNeverSent();
    void writesBeyondTheLimitAreRefused();
    void restartLosesNothingThatTheBrokerAccepted();
    void sessionThatTheBrokerLostIsReported();
    void messagesOfAnEarlierRunDoNotCome();
    void stopSendsTheRestAndThenItsFarewell();
};

void tst_MqttKept::writeBeforeTheConnectionIsNeverSent()
{
    TestBroker broker;
    MqttSubject panel(broker.address());
    panel.addInput("set", QString("bench/set qos1"));
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("away"), kPatience);
    panel.send("set", "(double)", 1.0);
    panel.send("set", "(double)", 2.0);
    QTRY_VERIFY_WITH_TIMEOUT(
        panel.alerts.contains("writes refused, the broker is not connected: 2"), kPatience);
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("bench/#");
    QTRY_VERIFY_WITH_TIMEOUT(panel.notes.contains("connected"), kPatience);
    panel.send("set", "(double)", 3.0);
    QTRY_COMPARE_WITH_TIMEOUT(peer.notes(), QStringList("bench/set 3 qos1"), kPatience);
}

void tst_MqttKept::writeToASilentBrokerIsNeverSent_data()
{
    QTest::addColumn<int>("qos");
    QTest::addColumn<bool>("hasSession");

    for (int qos = 0; qos <= 2; ++qos) {
        QTest::addRow("qos %d", qos) << qos << false;
        QTest::addRow("qos %d, with a session", qos) << qos << true;
    }
}

void tst_MqttKept::writeToASilentBrokerIsNeverSent()
{
    QFETCH(int, qos);
    QFETCH(bool, hasSession);

    TestBroker broker(kKeeping);
    broker.start();
    MqttSubject panel(broker.address());
    panel.addInput("set", QString("bench/set qos%1").arg(qos));
    panel.addOutput("t", QString(hasSession ? "bench/t qos1" : "bench/t"));
    panel.device.setParam("keepAlive", "0.5");
    panel.startAndConnect();
    broker.freeze();
    for (int i = 0; i < 100; ++i) { // More than may be on their way at a time.
        panel.send("set", "(double)", double(i));
    }
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("away"), kPatience);
    panel.send("set", "(double)", 1000.0);
    broker.kill();
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("bench/#");
    QTRY_VERIFY_WITH_TIMEOUT(panel.notes.contains("connected"), kPatience);
    panel.send("set", "(double)", 2000.0);
    QTRY_VERIFY_WITH_TIMEOUT(!peer.notes().isEmpty(), kPatience);
    QTest::qWait(300);
    QCOMPARE(peer.notes(), QStringList(QString("bench/set 2000 qos%1").arg(qos)));
    QTRY_VERIFY_WITH_TIMEOUT(
        panel.alerts.contains("writes refused, the broker is not connected: 1"), kPatience);
    QCOMPARE(panel.alerts.contains("writes that may not have arrived, the connection broke: 100"),
             qos > 0); // With QoS 0 a write counts as done when it has been sent.
}

void tst_MqttKept::writesBeyondTheLimitAreRefused()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.addInput("set", QString("bench/set qos1"));
    panel.device.setParam("keepAlive", "2");
    panel.startAndConnect();
    broker.freeze();
    for (int i = 0; i < 3000; ++i) {
        panel.send("set", "(double)", double(i));
    }
    QTRY_VERIFY_WITH_TIMEOUT(
        !panel.alerts
             .filter(QRegularExpression("writes refused, the broker does not take them fast "
                                        "enough: (19[89].|2000)$"))
             .isEmpty(),
        kPatience);
    broker.thaw();
}

void tst_MqttKept::restartLosesNothingThatTheBrokerAccepted()
{
    constexpr int count = 3000;

    TestBroker broker(kKeeping);
    broker.start();
    MqttSubject panel(broker.address());
    panel.addOutput("n", QString("bench/n qos1"));
    panel.addOutput("ready", QString("is/it/ready qos1"));
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();
    while (!panel.notes.contains("ready text yes")) {
        peer.publish("is/it/ready", "yes", 1);
        QTest::qWait(20);
    }
    for (int i = 0; i < count; ++i) { // The peer keeps what is not accepted yet.
        peer.publish("bench/n", QByteArray::number(i), 1);
        if (i % 1000 == 500) {
            broker.stop();
        } else if (i % 1000 == 600) {
            broker.start();
            QTRY_COMPARE_WITH_TIMEOUT(panel.notes.count("connected"), 1 + i / 1000, kPatience);
        } else if (i % 20 == 0) {
            QTest::qWait(1);
        }
    }
    const auto missing = [&panel] {
        QSet<QString> notes;
        for (const QString& note : panel.notes) {
            notes.insert(note);
        }
        QStringList numbers;
        for (int i = 0; i < count; ++i) {
            if (!notes.contains(QString("n text %1").arg(i))) {
                numbers.append(QString::number(i));
            }
        }
        return numbers;
    };
    QTRY_VERIFY_WITH_TIMEOUT(peer.accepted() >= count, kPatience);
    QTRY_COMPARE_WITH_TIMEOUT(missing(), QStringList(), kPatience);
    QCOMPARE(panel.notes.count("away"), 3);
    QCOMPARE(panel.alerts.filter("kept"), QStringList());
}

void tst_MqttKept::sessionThatTheBrokerLostIsReported()
{
    TestBroker broker;
    broker.start();
    MqttSubject panel(broker.address());
    panel.addOutput("t", QString("bench/t qos1"));
    panel.startAndConnect();
    broker.kill();
    broker.start();
    QTRY_VERIFY_WITH_TIMEOUT(panel.notes.contains("connected"), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(
        panel.faults.contains("the broker has not kept what came while the connection was broken"),
        kPatience);
}

void tst_MqttKept::messagesOfAnEarlierRunDoNotCome()
{
    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.waitUntilUp();
    {
        MqttSubject panel(broker.address());
        panel.device.setParam("clientId", "panel");
        panel.addOutput("t", QString("bench/t qos1"));
        panel.startAndConnect();
        QTRY_VERIFY_WITH_TIMEOUT(broker.log().contains("panel 1 bench/t"), kPatience);
    }
    peer.publish("bench/t", "old", 1);
    QTRY_COMPARE(peer.accepted(), 1);
    MqttSubject panel(broker.address());
    panel.device.setParam("clientId", "panel");
    panel.addOutput("t", QString("bench/t qos1"));
    panel.startAndConnect();
    QTRY_COMPARE_WITH_TIMEOUT(broker.log().count("panel 1 bench/t"), 2, kPatience);
    peer.publish("bench/t", "new", 1);
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("t text new"), kPatience);
}

void tst_MqttKept::stopSendsTheRestAndThenItsFarewell()
{
    constexpr int count = 25; // More than may be on their way at a time.

    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("bench/#");
    MqttSubject panel(broker.address());
    panel.device.setParam("status", "bench/status");
    panel.addInput("set", QString("bench/set qos1"));
    panel.startAndConnect();
    QStringList expected{"bench/status online qos1"};
    for (int i = 0; i < count; ++i) {
        panel.send("set", "(double)", double(i));
        expected << QString("bench/set %1 qos1").arg(i);
    }
    panel.stop();
    expected << "bench/status offline qos1";
    QTRY_COMPARE_WITH_TIMEOUT(peer.notes(), expected, kPatience);
}

NORVO_GUILESS_TEST(tst_MqttKept)
#include "tst_MqttKept.moc"
