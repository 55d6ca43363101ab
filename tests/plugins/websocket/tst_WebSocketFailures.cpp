// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "TestServer.h"
#include "WebSocketSubject.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QtTest>

class tst_WebSocketFailures : public QObject
{
    Q_OBJECT

private slots:
    void serverThatIsAwayIsReportedOnce();
    void serverThatRefusesIsReported();
    void serverThatDoesNotAnswerIsGivenUp();
    void killedServerIsReportedAndComesBack();
    void serverThatClosesSaysWhy();
    void stoppedServerIsReportedInTime();
    void whatAStoppedServerHasNotTakenNeverArrives();
    void writesWhileAwayAreRefused();
    void slowServerIsNotBuriedInWrites();
    void oversizedMessageEndsTheConnection();
    void largeMessagePasses();
    void garbageEndsTheConnection();
    void valuesBeforeTheEndLeaveBeforeIt();
};

void tst_WebSocketFailures::serverThatIsAwayIsReportedOnce()
{
    TestServer server;
    WebSocketSubject subject(server.url());
    subject.start();
    const QStringList refused{
        QString("cannot connect to ws://127.0.0.1:%1: Connection refused").arg(server.port())};
    QTRY_COMPARE_WITH_TIMEOUT(subject.faults, refused, 30000);
    QTest::qWait(1500); // Two more attempts.
    QCOMPARE(subject.faults, refused);
    QCOMPARE(subject.notes, QStringList{"away"});
    server.start();
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, (QStringList{"away", "connected"}), 30000);
}

void tst_WebSocketFailures::serverThatRefusesIsReported()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url("/refused?token=secret"));
    subject.start();
    QTRY_COMPARE_WITH_TIMEOUT(subject.faults.size(), 1, 30000);
    QVERIFY2(subject.faults.first().contains(": the server does not accept the connection: "),
             qPrintable(subject.faults.first()));
    QVERIFY(!subject.faults.first().contains("secret"));
    QCOMPARE(subject.notes, QStringList{"away"});
}

void tst_WebSocketFailures::serverThatDoesNotAnswerIsGivenUp()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url("/hangs"));
    subject.start();
    QTRY_COMPARE_WITH_TIMEOUT(subject.faults.size(), 1, 30000);
    QVERIFY2(subject.faults.first().endsWith(": no answer within 5 s"),
             qPrintable(subject.faults.first()));
    QTRY_COMPARE_WITH_TIMEOUT(server.news.count("asked /hangs"), 2, 30000);
}

void tst_WebSocketFailures::killedServerIsReportedAndComesBack()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.addOutput("a", {"$.a"});
    subject.startAndConnect();
    server.kill();
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, QStringList{"away"}, 30000);
    QTRY_VERIFY_WITH_TIMEOUT(!subject.faults.isEmpty(), 30000);
    server.start();
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, (QStringList{"away", "connected"}), 60000);
    server.obey(R"(send {"a":"x"})");
    QTRY_COMPARE(subject.notes.last(), "a text x");
}

void tst_WebSocketFailures::serverThatClosesSaysWhy()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.startAndConnect();
    server.obey("close 4001 too many panels");
    QTRY_COMPARE_WITH_TIMEOUT(
        subject.faults,
        QStringList{"the connection has been closed with code 4001: too many panels"}, 30000);
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, (QStringList{"away", "connected"}), 30000);
}

void tst_WebSocketFailures::stoppedServerIsReportedInTime()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.startAndConnect();
    QElapsedTimer clock;
    clock.start();
    server.freeze();
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, QStringList{"away"}, 30000);
    qInfo("a stopped server is reported after %lld ms", clock.elapsed());
    QTRY_COMPARE(subject.faults, QStringList{"no sign of life for 2 s"});
    server.thaw();
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, (QStringList{"away", "connected"}), 60000);
}

/// The kernel of the panel's machine holds a part of it, the socket's own buffer the rest.
void tst_WebSocketFailures::whatAStoppedServerHasNotTakenNeverArrives()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.addInput("move", {"$.move"});
    subject.startAndConnect();
    server.freeze();
    const QString ballast(100000, 'x');
    for (int i = 0; i < 200; ++i) {
        subject.send("move", "(QString)", ballast);
    }
    subject.send("move", "(double)", 1.0);
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, QStringList{"away"}, 30000);
    subject.send("move", "(double)", 2.0);
    server.kill();
    server.start();
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, (QStringList{"away", "connected"}), 60000);
    subject.send("move", "(double)", 3.0);
    QTRY_COMPARE(server.news.filter("got "), QStringList{R"(got {"move":3})"});
    QTest::qWait(200);
    QCOMPARE(server.news.filter("got ").size(), 1);
}

void tst_WebSocketFailures::writesWhileAwayAreRefused()
{
    TestServer server;
    WebSocketSubject subject(server.url());
    subject.addInput("move", {"$.move"});
    subject.start();
    subject.send("move", "(double)", 1.0);
    QTRY_VERIFY_WITH_TIMEOUT(subject.notes.contains("away"), 30000);
    subject.send("move", "(double)", 2.0);
    QTRY_VERIFY(subject.alerts.contains("writes refused, the server is not connected: 2"));
    server.start();
    QTRY_VERIFY_WITH_TIMEOUT(subject.notes.contains("connected"), 60000);
    subject.send("move", "(double)", 3.0);
    QTRY_COMPARE(server.news.filter("got "), QStringList{R"(got {"move":3})"});
}

void tst_WebSocketFailures::slowServerIsNotBuriedInWrites()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.device.setParam("keepAlive", "60");
    subject.addInput("move", {"$.move"});
    subject.startAndConnect();
    server.freeze();
    const QString ballast(1000000, 'x');
    for (int i = 0; i < 100; ++i) {
        subject.send("move", "(QString)", ballast);
        QCoreApplication::processEvents();
    }
    subject.send("move", "(QString)", ballast + ballast);
    QTRY_VERIFY(
        !subject.alerts.filter("writes refused, the server does not take them fast enough: ")
             .isEmpty());
    server.thaw();
    QTRY_VERIFY_WITH_TIMEOUT(!server.news.filter("got ").isEmpty(), 30000);
    QCOMPARE(subject.notes, QStringList());
    subject.send("move", "(QString)", ballast + ballast);
}

void tst_WebSocketFailures::oversizedMessageEndsTheConnection()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.device.setParam("keepAlive", "60"); // It says nothing while it makes the message.
    subject.addOutput("a", {"$"});
    subject.startAndConnect();
    server.obey("huge 50000000");
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, (QStringList{"away", "connected"}), 30000);
    QVERIFY2(subject.faults.first().contains("code 1009"), qPrintable(subject.faults.first()));
}

void tst_WebSocketFailures::largeMessagePasses()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.addOutput("a", {"$"});
    subject.startAndConnect();
    server.obey("huge 1048574");
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes.size(), 1, 30000);
    QCOMPARE(subject.notes.first().size(), int(strlen("a text ")) + 1048574);
}

void tst_WebSocketFailures::garbageEndsTheConnection()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.startAndConnect();
    server.obey("garbage");
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, (QStringList{"away", "connected"}), 30000);
    QVERIFY2(subject.faults.first().contains("code 1002"), qPrintable(subject.faults.first()));
}

void tst_WebSocketFailures::valuesBeforeTheEndLeaveBeforeIt()
{
    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.addOutput("a", {"$"});
    subject.startAndConnect();
    server.obey("send \"x\"");
    server.obey("close 1000");
    QTRY_VERIFY_WITH_TIMEOUT(subject.notes.size() >= 2, 30000);
    QCOMPARE(subject.notes.mid(0, 2), (QStringList{"a text x", "away"}));
}

NORVO_GUILESS_TEST(tst_WebSocketFailures)
#include "tst_WebSocketFailures.moc"
