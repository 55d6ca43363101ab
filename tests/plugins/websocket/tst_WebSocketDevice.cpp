// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "TestServer.h"
#include "WebSocketSubject.h"

#include <QTemporaryDir>
#include <QtTest>

#include <limits>

class tst_WebSocketDevice : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_server.start(); }
    void cleanup();
    void valuesOfMessagesLeaveByTheirOutputs();
    void messageInFragmentsIsOne();
    void inputsAreSentAsTheirMessages();
    void numberThatJsonLacksIsRefused();
    void messagesThatAreNotJsonAreCounted();
    void binaryMessagesAreCounted();
    void messagesWithoutUseAreCounted();
    void silentClientStaysConnected();
    void headersComeFromTheFile();
    void receiverMayDeleteTheDevice();
    void receiverMayStopTheDevice();
    void deviceStartsAgain();
    void brokenParameterIsAnError_data();
    void brokenParameterIsAnError();

private:
    TestServer m_server;
};

/// The end of one test is no news in the next one.
void tst_WebSocketDevice::cleanup()
{
    QTRY_COMPARE(m_server.news.count("closed"), m_server.news.filter("open ").size());
    m_server.news.clear();
}

void tst_WebSocketDevice::valuesOfMessagesLeaveByTheirOutputs()
{
    WebSocketSubject subject(m_server.url());
    subject.addOutput("temperature", {"$.value", {{"where", "$.type == temp"}}});
    subject.addOutput("on", {"$.on"});
    subject.startAndConnect();
    m_server.obey(R"(send {"type":"temp","value":21.5})");
    m_server.obey(R"(send {"type":"speed","value":3})");
    m_server.obey(R"(send {"on":true})");
    QTRY_COMPARE(subject.notes, (QStringList{"temperature number 21.5", "temperature text 21.5",
                                             "on number 1", "on text true", "on yes"}));
}

void tst_WebSocketDevice::messageInFragmentsIsOne()
{
    WebSocketSubject subject(m_server.url());
    subject.addOutput("a", {"$.a"});
    subject.startAndConnect();
    m_server.obey(R"(fragments {"a": "b" })");
    QTRY_COMPARE(subject.notes, QStringList{"a text b"});
}

void tst_WebSocketDevice::inputsAreSentAsTheirMessages()
{
    WebSocketSubject subject(m_server.url());
    subject.addInput("set", {R"({"cmd":"set","value":%1})"});
    subject.addInput("speed", {"$.speed"});
    subject.startAndConnect();
    subject.send("set", "(double)", 2.5);
    subject.send("set", "(QString)", QString::fromUtf8("\"ä\""));
    subject.send("speed", "(int)", 3);
    subject.send("speed", "(bool)", true);
    subject.pulse("speed");
    const QStringList expected{R"(got {"cmd":"set","value":2.5})",
                               QString::fromUtf8(R"(got {"cmd":"set","value":"\"ä\""})"),
                               R"(got {"speed":3})", R"(got {"speed":true})",
                               R"(got {"speed":null})"};
    QTRY_COMPARE(m_server.news.filter("got "), expected);
    QCOMPARE(subject.alerts, QStringList());
}

void tst_WebSocketDevice::numberThatJsonLacksIsRefused()
{
    WebSocketSubject subject(m_server.url());
    subject.addInput("speed", {"$.speed"});
    subject.startAndConnect();
    subject.send("speed", "(double)", std::numeric_limits<double>::quiet_NaN());
    subject.send("speed", "(double)", std::numeric_limits<double>::infinity());
    subject.send("speed", "(double)", 1.0);
    QTRY_COMPARE(m_server.news.filter("got "), QStringList{R"(got {"speed":1})"});
    QTRY_COMPARE(subject.alerts, QStringList{"writes refused, JSON has no such number: 2"});
}

void tst_WebSocketDevice::messagesThatAreNotJsonAreCounted()
{
    WebSocketSubject subject(m_server.url());
    subject.addOutput("a", {"$.a"});
    subject.startAndConnect();
    m_server.obey("send hello");
    m_server.obey("send {\"a\":");
    m_server.obey("send ");
    m_server.obey(R"(send {"a":1})");
    QTRY_COMPARE(subject.notes, (QStringList{"a number 1", "a text 1", "a yes"}));
    QTRY_COMPARE(subject.alerts, QStringList{"messages refused, they are not JSON: 3"});
}

void tst_WebSocketDevice::binaryMessagesAreCounted()
{
    WebSocketSubject subject(m_server.url());
    subject.addOutput("a", {"$.a"});
    subject.startAndConnect();
    m_server.obey("binary 1000");
    m_server.obey("binary 0");
    QTRY_COMPARE(subject.alerts, QStringList{"messages ignored, they are binary: 2"});
    QCOMPARE(subject.notes, QStringList());
}

void tst_WebSocketDevice::messagesWithoutUseAreCounted()
{
    WebSocketSubject subject(m_server.url());
    subject.addOutput("a", {"$.a"});
    WebSocketSubject writer(m_server.url());
    writer.addInput("a", {"$.a"});
    subject.startAndConnect();
    writer.startAndConnect();
    m_server.obey(R"(send {"b":1})");
    QTRY_COMPARE(subject.alerts, QStringList{"messages that no output has a use for: 1"});
    QCOMPARE(writer.alerts, QStringList());
}

void tst_WebSocketDevice::silentClientStaysConnected()
{
    WebSocketSubject subject(m_server.url());
    subject.device.setParam("keepAlive", "0.5");
    subject.startAndConnect();
    QTest::qWait(2000);
    QCOMPARE(subject.notes, QStringList());
}

void tst_WebSocketDevice::headersComeFromTheFile()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("headers"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("X-Key: secret 7\r\n\nAuthorization: Bearer abc\n");
    file.close();
    WebSocketSubject subject(m_server.url());
    subject.device.setParam("headerFile", file.fileName());
    subject.startAndConnect();
    QTRY_VERIFY(m_server.news.contains("open secret 7"));
}

void tst_WebSocketDevice::receiverMayDeleteTheDevice()
{
    auto device = std::make_unique<WebSocketDevice>();
    device->setParam("url", m_server.url());
    QCOMPARE(device->addOutput("a", {"$.a"}), QString());
    QCOMPARE(device->addOutput("b", {"$.a"}), QString());
    Listener listener;
    listener.onNote = [&device] { device.reset(); };
    listener.listenTo(*device, "a");
    bool isConnected = false;
    connect(device.get(), &WebSocketDevice::connected, this, [&](bool on) { isConnected = on; });
    QVERIFY(device->initialise());
    device->setRunning(true);
    device->postInitialisation();
    QTRY_VERIFY_WITH_TIMEOUT(isConnected, 30000);
    m_server.obey(R"(send {"a":1})");
    QTRY_VERIFY(!device);
    QCOMPARE(listener.notes, QStringList{"number 1"});
    QTRY_VERIFY(m_server.news.contains("closed"));
}

void tst_WebSocketDevice::receiverMayStopTheDevice()
{
    WebSocketSubject subject(m_server.url());
    subject.addOutput("a", {"$.a"});
    subject.addOutput("b", {"$.a"});
    subject.startAndConnect();
    subject.listeners.front()->onNote = [&subject] { subject.stop(); };
    m_server.obey(R"(send {"a":1})");
    QTRY_VERIFY(m_server.news.contains("closed"));
    QCOMPARE(subject.listeners.front()->notes, QStringList{"number 1"});
    QCOMPARE(subject.notes, QStringList());
}

void tst_WebSocketDevice::deviceStartsAgain()
{
    WebSocketSubject subject(m_server.url());
    subject.addOutput("a", {"$.a"});
    subject.startAndConnect();
    subject.stop();
    QTRY_COMPARE(m_server.news.count("closed"), 1);
    subject.start();
    QTRY_COMPARE(m_server.news.filter("open").size(), 2);
    QTest::qWait(50);
    m_server.obey(R"(send {"a":1})");
    QTRY_VERIFY(subject.notes.contains("a number 1"));
}

void tst_WebSocketDevice::brokenParameterIsAnError_data()
{
    QTest::addColumn<QString>("param");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("error");

    QTest::newRow("no address") << "url"
                                << ""
                                << "it is empty; write ws://host";
    QTest::newRow("another protocol") << "url"
                                      << "http://host"
                                      << "\"http://host\" is not the address of a server";
    QTest::newRow("no host") << "url"
                             << "ws://"
                             << "is not the address of a server";
    QTest::newRow("port") << "url"
                          << "ws://host:99999"
                          << "is not the address of a server";
    QTest::newRow("secret in the address") << "url"
                                           << "ws://me:secret@host"
                                           << "an address holds no user and no password";
    QTest::newRow("authorities without encryption") << "caFile"
                                                    << "/etc/passwd"
                                                    << "ws:// is not encrypted";
    QTest::newRow("no header file") << "headerFile"
                                    << "/nowhere"
                                    << "cannot read \"/nowhere\"";
    QTest::newRow("no headers") << "headerFile" << NORVO_SOURCE_DIR "/README.md"
                                << "is not a header";
    QTest::newRow("keep-alive") << "keepAlive"
                                << "0.1"
                                << "0.1 is not from 0.5 to 3600";
}

void tst_WebSocketDevice::brokenParameterIsAnError()
{
    QFETCH(QString, param);
    QFETCH(QString, value);
    QFETCH(QString, error);

    WebSocketDevice device;
    device.setParam("url", "ws://127.0.0.1:1");
    device.setParam(param, value);
    QString actual;
    connect(&device, &BaseDevice::errorOccurred, this, [&](const QString& text) { actual = text; });
    QVERIFY(!device.initialise());
    QVERIFY2(actual.contains(QString("parameter \"%1\": ").arg(param)), qPrintable(actual));
    QVERIFY2(actual.contains(error), qPrintable(actual));
    QVERIFY(!actual.contains("secret"));
}

NORVO_GUILESS_TEST(tst_WebSocketDevice)
#include "tst_WebSocketDevice.moc"
