// SPDX-License-Identifier: GPL-3.0-or-later

#include "Effort.h"
#include "ModbusSubject.h"
#include "TestMain.h"

#include <QtTest>

/// What a modbus device makes of servers that are away, hang, or answer wrongly.
class tst_ModbusFaults : public QObject
{
    Q_OBJECT

private slots:
    void hungServerIsReportedWithinThreeSeconds();
    void serverThatIsNotThereIsReportedOnce();
    void droppedConnectionIsMadeAgain();
    void acceptedConnectionAloneIsNoServer();
    void lateAnswerIsNotThatOfTheNextRequest();
    void wrongAnswerIsNone_data();
    void wrongAnswerIsNone();
    void unansweredReadIsRepeated();
    void garbageEndsTheConnection();
    void answerInPiecesIsOne();
    void unitThatItsGatewayLacksIsAway();
    void nothingLeavesWhileItIsAway();
    void stopAndNewStart();
};

void tst_ModbusFaults::hungServerIsReportedWithinThreeSeconds()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.device.setParam("poll", "500"); // These two are what they are without being set.
    plc.device.setParam("timeout", "500");
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("x number 0") >= 2, kPatience);
    server.hang();
    const norvo::OwnTimer timer;
    QTRY_VERIFY_WITH_TIMEOUT(!plc.isThere(), kPatience);
    const qint64 took = timer.elapsed().ownMs;
    QVERIFY2(took < 3000, qPrintable(QString::number(took)));
    QTRY_COMPARE(
        plc.faults,
        QStringList(QString("tcp://127.0.0.1:%1: no answer within 500 ms").arg(server.port)));
    server.goOn();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
}

void tst_ModbusFaults::serverThatIsNotThereIsReportedOnce()
{
    ModbusSubject plc(freePort());
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults.size(), 1, kPatience);
    QVERIFY2(plc.faults[0].endsWith(": Connection refused"), qPrintable(plc.faults[0]));
    QTest::qWait(2000); // At least one more attempt.
    QCOMPARE(plc.faults.size(), 1);
    QCOMPARE(plc.notes, QStringList("away"));
}

void tst_ModbusFaults::droppedConnectionIsMadeAgain()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    for (int i = 0; i < 2; ++i) {
        QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
        server.stop();
        QTRY_VERIFY_WITH_TIMEOUT(!plc.isThere(), kPatience);
        server.start();
    }
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
}

void tst_ModbusFaults::acceptedConnectionAloneIsNoServer()
{
    MadeUpServer server([](QTcpSocket&, const QByteArray&) {});
    ModbusSubject plc(server.port());
    plc.device.setParam("timeout", "50");
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(server.connections >= 2, kPatience);
    QCOMPARE(plc.notes, QStringList("away"));
}

void tst_ModbusFaults::lateAnswerIsNotThatOfTheNextRequest()
{
    // The second request is answered after the third one has come, and before that.
    QByteArray late;
    int count = 0;
    MadeUpServer server([&](QTcpSocket& socket, const QByteArray& request) {
        ++count;
        if (count == 2) {
            late = MadeUpServer::answerTo(request, 99);
        } else {
            socket.write(std::exchange(late, {}) + MadeUpServer::answerTo(request, count));
        }
    });
    ModbusSubject plc(server.port());
    plc.device.setParam("timeout", "200");
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.contains("x number 4"), kPatience);
    QVERIFY(plc.notes.contains("x number 3"));
    QVERIFY(!plc.notes.contains("x number 99"));
    QCOMPARE(plc.faults, QStringList());
}

void tst_ModbusFaults::wrongAnswerIsNone_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<int>("byte");
    QTest::addColumn<QString>("hint");

    QTest::newRow("unit") << 6 << 9 << "an answer came from unit 9 instead of 7";
    QTest::newRow("transaction") << 0 << 99 << "the answer to another request came";
    QTest::newRow("function") << 7 << 4 << "an answer came that does not fit the request";
    QTest::newRow("count") << 8 << 4 << "an answer came that does not fit the request";
    QTest::newRow("length") << 5 << 4 << "an answer came that does not fit the request";
}

void tst_ModbusFaults::wrongAnswerIsNone()
{
    QFETCH(int, at);
    QFETCH(int, byte);
    QFETCH(QString, hint);

    MadeUpServer server([=](QTcpSocket& socket, const QByteArray& request) {
        QByteArray answer = MadeUpServer::answerTo(request, 5);
        answer[at] = char(byte);
        socket.write(answer.left(6 + answer[5]));
    });
    ModbusSubject plc(server.port());
    plc.device.setParam("timeout", "50");
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults.size(), 1, kPatience);
    QVERIFY2(plc.faults[0].endsWith("no answer within 50 ms; " + hint), qPrintable(plc.faults[0]));
    QCOMPARE(plc.notes, QStringList("away"));
}

void tst_ModbusFaults::unansweredReadIsRepeated()
{
    MadeUpServer server([](QTcpSocket&, const QByteArray&) {});
    ModbusSubject plc(server.port());
    plc.device.setParam("timeout", "20");
    plc.device.setParam("retries", "4");
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.contains("away"), kPatience);
    QCOMPARE(server.requests.size(), 5);
}

void tst_ModbusFaults::garbageEndsTheConnection()
{
    MadeUpServer server([](QTcpSocket& socket, const QByteArray&) {
        socket.write("HTTP/1.1 400 Bad Request\r\n\r\n");
    });
    ModbusSubject plc(server.port());
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults.size(), 1, kPatience);
    QVERIFY2(plc.faults[0].endsWith(": what the server sends is not Modbus TCP"),
             qPrintable(plc.faults[0]));
    QTRY_VERIFY_WITH_TIMEOUT(server.connections >= 2, kPatience);
    QCOMPARE(plc.notes, QStringList("away"));
}

void tst_ModbusFaults::answerInPiecesIsOne()
{
    MadeUpServer server([](QTcpSocket& socket, const QByteArray& request) {
        for (const char byte : MadeUpServer::answerTo(request, 5)) {
            socket.write(&byte, 1);
            socket.flush();
            QTest::qWait(1);
        }
    });
    ModbusSubject plc(server.port());
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("x number 5") >= 3, kPatience);
    QCOMPARE(plc.faults, QStringList());
}

void tst_ModbusFaults::unitThatItsGatewayLacksIsAway()
{
    MadeUpServer server([](QTcpSocket& socket, const QByteArray& request) {
        socket.write(request.left(5) + "\3\7\x83\xb"); // As a gateway that asked in vain.
    });
    ModbusSubject plc(server.port());
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults.size(), 1, kPatience);
    QVERIFY2(plc.faults[0].endsWith(": gateway target device failed to respond (exception 11)"),
             qPrintable(plc.faults[0]));
    QCOMPARE(plc.notes, QStringList("away"));
}

void tst_ModbusFaults::nothingLeavesWhileItIsAway()
{
    int answers = 3;
    MadeUpServer server([&answers](QTcpSocket& socket, const QByteArray& request) {
        if (answers-- > 0) {
            socket.write(MadeUpServer::answerTo(request, 5));
        }
    });
    ModbusSubject plc(server.port());
    plc.device.setParam("timeout", "50");
    plc.addOutput("x", {"holding 1", {{"send", "changes"}}});
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.contains("away"), kPatience);
    QCOMPARE(plc.notes, QStringList({"connected", "x number 5", "x text 5", "away"}));
    plc.notes.clear();
    answers = 1000;
    // A value is news again when the server has come back.
    QTRY_COMPARE_WITH_TIMEOUT(plc.notes, QStringList({"connected", "x number 5", "x text 5"}),
                              kPatience);
}

void tst_ModbusFaults::stopAndNewStart()
{
    MadeUpServer server([](QTcpSocket& socket, const QByteArray& request) {
        socket.write(MadeUpServer::answerTo(request, 5));
    });
    ModbusSubject plc(server.port());
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("x number 5") > 1, kPatience);
    plc.stop();
    const int before = plc.notes.size();
    QTest::qWait(100);
    QCOMPARE(plc.notes.size(), before);
    QVERIFY(plc.device.initialise());
    plc.device.setRunning(true);
    plc.device.postInitialisation();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.size() > before + 3, kPatience);
    QCOMPARE(plc.faults, QStringList());
}

NORVO_GUILESS_TEST(tst_ModbusFaults)
#include "tst_ModbusFaults.moc"
