// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "TestServer.h"
#include "WebSocketSubject.h"

#include <QtTest>

class tst_Rosbridge : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void heardTopicsAreSubscribedToOnce();
    void shortestThrottleOfATopicHolds();
    void fieldsOfTopicsLeave();
    void inputsOfATopicFillOneMessage();
    void connectionBeginsWithoutOldValues();
    void topicsAreSubscribedToInEachConnection();
    void stopTakesLeave_data();
    void stopTakesLeave();
    void errorOfTheBridgeIsAFault();
    void brokenDefinitionIsRefused_data();
    void brokenDefinitionIsRefused();

private:
    TestServer m_server{"rosbridge.py"};
};

/// What the panel of one test says at its end is no news in the next one.
void tst_Rosbridge::init()
{
    if (!QTest::currentDataTag()) {
        m_server.start();
    }
}

void tst_Rosbridge::heardTopicsAreSubscribedToOnce()
{
    WebSocketSubject subject(m_server.url());
    subject.device.setParam("preset", "rosbridge");
    subject.addOutput("x", {"/odom nav_msgs/msg/Odometry $.x"});
    subject.addOutput("y", {"/odom $.y"});
    subject.addOutput("silent", {"/temp"}, false);
    subject.startAndConnect();
    const QStringList expected{
        R"({"id":"norvo:/odom","op":"subscribe","topic":"/odom","type":"nav_msgs/msg/Odometry"})"};
    QTRY_COMPARE(m_server.news, expected);
    subject.listenTo("silent");
    QTRY_COMPARE(m_server.news.size(), 2);
    QCOMPARE(m_server.news.last(), R"({"id":"norvo:/temp","op":"subscribe","topic":"/temp"})");
}

void tst_Rosbridge::shortestThrottleOfATopicHolds()
{
    WebSocketSubject subject(m_server.url());
    subject.device.setParam("preset", "rosbridge");
    subject.addOutput("slow", {"/a $.x", {{"throttle", "1 s"}}});
    subject.addOutput("fast", {"/a $.x", {{"throttle", "100 ms"}}});
    subject.startAndConnect();
    QTRY_COMPARE(m_server.news.size(), 1);
    QVERIFY(m_server.news.first().contains(R"("queue_length":1)"));
    QVERIFY(m_server.news.first().contains(R"("throttle_rate":100)"));
}

void tst_Rosbridge::fieldsOfTopicsLeave()
{
    WebSocketSubject subject(m_server.url());
    subject.device.setParam("preset", "rosbridge");
    subject.addOutput("t", {"/temp std_msgs/String $.data"});
    subject.addOutput("all", {"/all"});
    subject.startAndConnect();
    QTRY_COMPARE(m_server.news.size(), 2);
    m_server.obey(R"(topic /temp {"data":"warm"})");
    m_server.obey(R"(topic /all {"a":"b"})");
    const QStringList expected{"t text warm", R"(all text {"a":"b"})"};
    QTRY_COMPARE(subject.notes, expected);
}

void tst_Rosbridge::inputsOfATopicFillOneMessage()
{
    WebSocketSubject subject(m_server.url());
    subject.device.setParam("preset", "rosbridge");
    subject.addInput("speed", {"/cmd_vel geometry_msgs/Twist $.linear.x"});
    subject.addInput("turn", {"/cmd_vel geometry_msgs/Twist $.angular.z"});
    subject.startAndConnect();
    subject.send("speed", "(double)", 0.5);
    subject.send("turn", "(double)", -1.0);
    const QString publish = R"({"id":"norvo:/cmd_vel","msg":%1,"op":"publish","topic":"/cmd_vel"})";
    const QStringList expected{
        R"({"id":"norvo:/cmd_vel","op":"advertise","topic":"/cmd_vel","type":"geometry_msgs/Twist"})",
        publish.arg(R"({"linear":{"x":0.5}})"),
        publish.arg(R"({"angular":{"z":-1},"linear":{"x":0.5}})")};
    QTRY_COMPARE(m_server.news, expected);
    QCOMPARE(subject.faults, QStringList());
}

void tst_Rosbridge::connectionBeginsWithoutOldValues()
{
    TestServer server("rosbridge.py");
    server.start();
    WebSocketSubject subject(server.url());
    subject.device.setParam("preset", "rosbridge");
    subject.addInput("speed", {"/cmd_vel geometry_msgs/Twist $.linear.x"});
    subject.addInput("turn", {"/cmd_vel geometry_msgs/Twist $.angular.z"});
    subject.startAndConnect();
    subject.send("speed", "(double)", 0.5);
    server.kill();
    QTRY_VERIFY_WITH_TIMEOUT(subject.notes.contains("away"), 30000);
    subject.send("speed", "(double)", 0.7);
    server.start();
    QTRY_VERIFY_WITH_TIMEOUT(subject.notes.contains("connected"), 60000);
    subject.send("turn", "(double)", 1.0);
    QTRY_COMPARE(server.news.filter("publish").size(), 1);
    QVERIFY(server.news.filter("publish").first().contains(R"("msg":{"angular":{"z":1}})"));
}

void tst_Rosbridge::topicsAreSubscribedToInEachConnection()
{
    TestServer server("rosbridge.py");
    server.start();
    WebSocketSubject subject(server.url());
    subject.device.setParam("preset", "rosbridge");
    subject.addOutput("t", {"/temp $.data"});
    subject.startAndConnect();
    const QStringList expected{R"({"id":"norvo:/temp","op":"subscribe","topic":"/temp"})"};
    QTRY_COMPARE_WITH_TIMEOUT(server.news, expected, 30000);
    server.kill();
    QTRY_VERIFY_WITH_TIMEOUT(subject.notes.contains("away"), 30000);
    server.start();
    QTRY_COMPARE_WITH_TIMEOUT(server.news, expected, 60000);
    server.obey(R"(topic /temp {"data":"warm"})");
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, QStringList({"away", "connected", "t text warm"}),
                              30000);
}

void tst_Rosbridge::stopTakesLeave_data()
{
    QTest::addColumn<bool>("isAnnounced");

    QTest::newRow("with the panel") << true;
    QTest::newRow("by itself") << false;
}

/// A device that is taken down without a shut-down before it takes its leave, too.
void tst_Rosbridge::stopTakesLeave()
{
    QFETCH(bool, isAnnounced);

    m_server.start();
    WebSocketSubject subject(m_server.url());
    subject.device.setParam("preset", "rosbridge");
    subject.addOutput("t", {"/temp"});
    subject.addInput("speed", {"/cmd_vel geometry_msgs/Twist $.linear.x"});
    subject.startAndConnect();
    QTRY_COMPARE(m_server.news.size(), 2);
    subject.device.setRunning(false);
    if (isAnnounced) {
        subject.device.preShutdown();
    }
    subject.device.deinitialise();
    QTRY_VERIFY_WITH_TIMEOUT(m_server.news.contains("closed"), 30000);
    QCOMPARE(m_server.news.filter("unsubscribe").size(), 1);
    QCOMPARE(m_server.news.filter("unadvertise").size(), 1);
}

void tst_Rosbridge::errorOfTheBridgeIsAFault()
{
    WebSocketSubject subject(m_server.url());
    subject.device.setParam("preset", "rosbridge");
    subject.addOutput("t", {"/temp"});
    subject.startAndConnect();
    m_server.obey(R"({"op":"status","level":"warning","msg":"slow"})");
    m_server.obey(R"({"op":"status","level":"error","msg":"no such type"})");
    m_server.obey(R"({"op":"status","level":"error","msg":"no such type"})");
    QTRY_COMPARE(subject.faults, QStringList{"rosbridge: no such type"});
    QTRY_VERIFY(subject.alerts.contains("error messages of the server not shown: 1"));
    QCOMPARE(subject.faults.size(), 1);
}

void tst_Rosbridge::brokenDefinitionIsRefused_data()
{
    QTest::addColumn<bool>("isInput");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("throttle");
    QTest::addColumn<QString>("error");

    QTest::newRow("empty") << false << ""
                           << ""
                           << "is not a topic";
    QTest::newRow("word without a package") << false << "/a Twist"
                                            << ""
                                            << "is not a topic";
    QTest::newRow("broken path") << false << "/a p/T $."
                                 << ""
                                 << "broken JSON path";
    QTest::newRow("throttle") << false << "/a"
                              << "fast"
                              << "\"fast\" is not a time";
    QTest::newRow("input without a type") << true << "/a $.x"
                                          << ""
                                          << "is not a topic";
    QTest::newRow("input without a path") << true << "/a p/T"
                                          << ""
                                          << "is not a topic";
    QTest::newRow("input that is all") << true << "/a p/T $"
                                       << ""
                                       << "is not a topic";
    QTest::newRow("another type") << true << "/known p/U $.x"
                                  << ""
                                  << "has the type p/T already";
}

void tst_Rosbridge::brokenDefinitionIsRefused()
{
    QFETCH(bool, isInput);
    QFETCH(QString, text);
    QFETCH(QString, throttle);
    QFETCH(QString, error);

    WebSocketDevice device;
    device.setParam("preset", "rosbridge");
    QCOMPARE(device.addOutput("known", {"/known p/T"}), QString());
    PortDefinition definition(text);
    if (!throttle.isEmpty()) {
        definition.options.insert("throttle", throttle);
    }
    const QString actual =
        isInput ? device.addInput("a", definition) : device.addOutput("a", definition);
    QVERIFY2(actual.contains(error), qPrintable(actual));
}

NORVO_GUILESS_TEST(tst_Rosbridge)
#include "tst_Rosbridge.moc"
