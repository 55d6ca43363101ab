// SPDX-License-Identifier: GPL-3.0-or-later

#include "ModbusSubject.h"
#include "TestMain.h"

#include <QtTest>

/// The inputs of a modbus device.
class tst_ModbusWriting : public QObject
{
    Q_OBJECT

private slots:
    void valuesArriveAsTheyAreDefined();
    void bitIsChangedByTheServerItself();
    void optionWritesByTheFunctionForSeveral();
    void valueThatDoesNotFitIsRefused_data();
    void valueThatDoesNotFitIsRefused();
    void refusalOfTheServerIsNamed();
    void newestOfTheWritesThatWaitIsSent();
    void writeGoesBeforeThePoll();
    void answerThatRepeatsAnotherValueConfirmsNothing();
    void writeBeforeTheServerIsThereIsRefused();
    void writeOfTheGapNeverArrives();
    void writeThatWaitedForAHungServerNeverArrives();
    void writeIsNotRepeated();
};

void tst_ModbusWriting::valuesArriveAsTheyAreDefined()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addInput("scaled", QString("holding 110 uint16 x0.1"));
    plc.addInput("signed", QString("holding 111 int16"));
    plc.addInput("float", QString("holding 112 float32 cdab"));
    plc.addInput("double", QString("holding 114 float64"));
    plc.addInput("coil", QString("coil 3"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    plc.send("scaled", 21.46);
    plc.send("signed", -2);
    plc.send("float", QString(" -1.5 "));
    plc.send("double", 1.1);
    plc.send("coil", true);
    QTRY_COMPARE_WITH_TIMEOUT(
        server.writes(),
        QStringList({"write 6 110 215", "write 6 111 65534", "write 16 112 0 49088",
                     "write 16 114 16369 39321 39321 39322", "write 5 3 1"}),
        kPatience);
    int expected = 5;
    for (const char* text : {"off", "1", "no", "YES", "0", "true", "false"}) {
        plc.send("coil", QString(text));
        ++expected;
        QTRY_COMPARE_WITH_TIMEOUT(server.writes().size(), expected, kPatience);
    }
    plc.send("coil", 1.0);
    ++expected;
    QTRY_COMPARE_WITH_TIMEOUT(server.writes().size(), expected, kPatience);
    plc.send("coil", 0);
    ++expected;
    QTRY_COMPARE_WITH_TIMEOUT(server.writes().size(), expected, kPatience);
    plc.pulse("coil");
    ++expected;
    QTRY_COMPARE_WITH_TIMEOUT(server.writes().size(), expected, kPatience);
    QStringList coils = server.writes().mid(5);
    coils.replaceInStrings("write 5 3 ", "");
    QCOMPARE(coils.join(' '), QString("0 1 0 1 0 1 0 1 0 1"));
    QCOMPARE(plc.faults, QStringList());
    QCOMPARE(plc.alerts, QStringList());
}

void tst_ModbusWriting::bitIsChangedByTheServerItself()
{
    PymodbusServer server;
    server.start();
    server.set("h 100 215");
    ModbusSubject plc(server.port);
    plc.addInput("bit", QString("holding 100 bit 3"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    plc.send("bit", true);
    QTRY_COMPARE_WITH_TIMEOUT(server.writes(), QStringList("write 22 100 223"), kPatience);
    plc.send("bit", false);
    QTRY_COMPARE_WITH_TIMEOUT(server.writes().last(), QString("write 22 100 215"), kPatience);
    QCOMPARE(plc.faults, QStringList());
}

void tst_ModbusWriting::optionWritesByTheFunctionForSeveral()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addInput("register", {"holding 100", {{"write", "multiple"}}});
    plc.addInput("coil", {"coil 3", {{"write", "multiple"}}});
    QCOMPARE(plc.device.addInput("other", {"coil 3", {{"write", "both"}}}),
             QString("option \"write\": \"both\" is neither single nor multiple"));
    QCOMPARE(plc.device.addInput("other", {"coil 3", {{"send", "changes"}}}),
             QString("unknown option \"send\"; valid names: \"as\", \"type\", \"order\", \"bit\", "
                     "\"scale\", \"offset\", \"write\""));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    plc.send("register", 7.0);
    plc.send("coil", true);
    QTRY_COMPARE_WITH_TIMEOUT(server.writes(), QStringList({"write 16 100 7", "write 15 3 1"}),
                              kPatience);
    QCOMPARE(plc.faults, QStringList());
}

void tst_ModbusWriting::valueThatDoesNotFitIsRefused_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("reason");

    const QString range = "a number outside of 0 to 6553.5 was refused";
    const QString yesNo = "a value that is neither yes nor no, 1 nor 0, was refused";
    QTest::newRow("above") << "holding 1 x0.1" << QVariant(6553.6) << range;
    QTest::newRow("below") << "holding 1 x0.1" << QVariant(-1) << range;
    QTest::newRow("NaN") << "holding 1 x0.1" << QVariant(qQNaN()) << range;
    QTest::newRow("NaN as text") << "holding 1 x0.1" << QVariant("nan") << range;
    QTest::newRow("text") << "holding 1" << QVariant("fast")
                          << "a value that is no number was refused";
    QTest::newRow("pulse") << "holding 1" << QVariant() << "a value that is no number was refused";
    QTest::newRow("two for a coil") << "coil 1" << QVariant(2.0) << yesNo;
    QTest::newRow("text for a bit") << "holding 1 bit 3" << QVariant("open") << yesNo;
}

void tst_ModbusWriting::valueThatDoesNotFitIsRefused()
{
    QFETCH(QString, input);
    QFETCH(QVariant, value);
    QFETCH(QString, reason);

    MadeUpServer server([](QTcpSocket& socket, const QByteArray& request) {
        socket.write(MadeUpServer::answerTo(request));
    });
    ModbusSubject plc(server.port());
    plc.addInput("x", input);
    plc.addInput("end", QString("coil 9"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    for (int i = 0; i < 2; ++i) {
        if (!value.isValid()) {
            plc.pulse("x");
        } else if (value.userType() == QMetaType::QString) {
            plc.send("x", value.toString());
        } else {
            plc.send("x", value.toDouble());
        }
    }
    QCOMPARE(plc.faults, QStringList("input \"x\": " + reason)); // Once.
    plc.send("end", true);
    QTRY_VERIFY_WITH_TIMEOUT(server.requests.last().at(7) == 5, kPatience);
    for (const QByteArray& request : server.requests) {
        QVERIFY(request.at(7) < 5 || request.at(9) == 9);
    }
    QTRY_COMPARE_WITH_TIMEOUT(plc.alerts.last(),
                              QString("writes refused, the values do not fit: 2"), kPatience);
}

void tst_ModbusWriting::refusalOfTheServerIsNamed()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addInput("x", QString("holding 400"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    plc.send("x", 1.0);
    const QString text =
        "input \"x\" (holding 400) cannot be written: illegal data address (exception 2)";
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults, QStringList(text), kPatience);
    plc.send("x", 2.0);
    QTRY_COMPARE_WITH_TIMEOUT(plc.alerts, QStringList({text, "writes refused by the server: 2"}),
                              kPatience);
    QCOMPARE(plc.faults, QStringList(text));
    QVERIFY(plc.isThere());
}

void tst_ModbusWriting::newestOfTheWritesThatWaitIsSent()
{
    QList<QPair<QTcpSocket*, QByteArray>> open;
    MadeUpServer server([&open](QTcpSocket& socket, const QByteArray& request) {
        open.append({&socket, request});
    });
    const auto answer = [&open] {
        open[0].first->write(MadeUpServer::answerTo(open[0].second));
        open.removeFirst();
    };
    ModbusSubject plc(server.port());
    plc.addOutput("out", QString("holding 50"));
    plc.addInput("a", QString("holding 1"));
    plc.addInput("b", QString("holding 2"));
    plc.start();
    QTRY_COMPARE_WITH_TIMEOUT(open.size(), 1, kPatience);
    answer();
    QTRY_COMPARE_WITH_TIMEOUT(open.size(), 1, kPatience); // The next poll is under way.
    for (const int value : {1, 2, 3}) {
        plc.send("a", value);
        plc.send("b", 10 * value);
    }
    QByteArray written;
    while (written.count('/') < 2) {
        answer();
        QTRY_COMPARE_WITH_TIMEOUT(open.size(), 1, kPatience);
        if (open[0].second.at(7) == 6) {
            written += QByteArray::number(open[0].second.at(9)) + '=' +
                       QByteArray::number(open[0].second.at(11)) + '/';
        }
    }
    QCOMPARE(written, QByteArray("1=3/2=30/"));
    QTRY_COMPARE_WITH_TIMEOUT(plc.alerts,
                              QStringList("writes replaced by newer ones before they were sent: 4"),
                              kPatience);
}

void tst_ModbusWriting::writeGoesBeforeThePoll()
{
    QList<QPair<QTcpSocket*, QByteArray>> open;
    MadeUpServer server([&open](QTcpSocket& socket, const QByteArray& request) {
        open.append({&socket, request});
    });
    ModbusSubject plc(server.port());
    for (int i = 0; i < 5; ++i) { // Too far apart for one request.
        plc.addOutput(QString("out%1").arg(i), QString("holding %1").arg(1000 * i));
    }
    plc.addInput("a", QString("coil 1"));
    plc.start();
    for (const char function : {3, 3, 5, 3}) {
        QTRY_COMPARE_WITH_TIMEOUT(open.size(), 1, kPatience);
        QCOMPARE(open[0].second.at(7), function);
        if (server.requests.size() == 2) {
            plc.send("a", true);
        }
        open[0].first->write(MadeUpServer::answerTo(open[0].second));
        open.clear();
    }
}

void tst_ModbusWriting::answerThatRepeatsAnotherValueConfirmsNothing()
{
    MadeUpServer server([](QTcpSocket& socket, const QByteArray& request) {
        QByteArray answer = MadeUpServer::answerTo(request);
        answer[answer.size() - 1] = char(answer[answer.size() - 1] ^ 1);
        socket.write(answer);
    });
    ModbusSubject plc(server.port());
    plc.device.setParam("timeout", "100");
    plc.addInput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    plc.send("x", 4);
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults.size(), 2, kPatience);
    QCOMPARE(plc.faults[0], QString("input \"x\": the write was not confirmed; whether it has "
                                    "arrived is not known"));
    QVERIFY2(plc.faults[1].endsWith("no answer within 100 ms; an answer came that does not fit the "
                                    "request"),
             qPrintable(plc.faults[1]));
}

void tst_ModbusWriting::writeBeforeTheServerIsThereIsRefused()
{
    PymodbusServer server;
    ModbusSubject plc(server.port);
    plc.addInput("x", QString("holding 1"));
    plc.start();
    plc.send("x", 1.0);
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.contains("away"), kPatience);
    plc.send("x", 2.0);
    server.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    plc.send("x", 3.0);
    QTRY_COMPARE_WITH_TIMEOUT(server.writes(), QStringList("write 6 1 3"), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(plc.alerts.contains("writes refused, the server is away: 2"),
                             kPatience);
}

void tst_ModbusWriting::writeOfTheGapNeverArrives()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addOutput("out", QString("holding 50"));
    plc.addInput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    server.stop();
    plc.send("x", 1.0); // Not noticed yet, so that it is on its way, or next behind a reading.
    QTRY_VERIFY_WITH_TIMEOUT(!plc.isThere(), kPatience);
    plc.send("x", 2.0);
    plc.notes.clear();
    server.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("out number 0") >= 3, kPatience);
    QCOMPARE(server.writes(), QStringList());
    const QString unconfirmed(
        "input \"x\": the write was not confirmed; whether it has arrived is not known");
    QTRY_VERIFY(plc.faults.contains(unconfirmed) ||
                plc.alerts.contains("writes dropped, the server has gone away: 1"));
}

void tst_ModbusWriting::writeThatWaitedForAHungServerNeverArrives()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.device.setParam("timeout", "1000");
    plc.device.setParam("retries", "0");
    plc.addOutput("out", QString("holding 50"));
    plc.addInput("sent", QString("holding 1"));
    plc.addInput("waits", QString("holding 2"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    server.hang();
    plc.send("sent", 1.0);
    plc.send("waits", 1.0);
    QVERIFY(plc.isThere());
    QTRY_VERIFY_WITH_TIMEOUT(!plc.isThere(), kPatience);
    plc.send("waits", 2.0);
    plc.notes.clear();
    server.goOn();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("out number 0") >= 3, kPatience);
    QCOMPARE(server.writes().filter("write 6 2"), QStringList());
    QTRY_VERIFY_WITH_TIMEOUT(
        !plc.alerts.filter("writes dropped, the server has gone away").isEmpty(), kPatience);
}

void tst_ModbusWriting::writeIsNotRepeated()
{
    MadeUpServer server([](QTcpSocket& socket, const QByteArray& request) {
        if (request[7] != 6) {
            socket.write(MadeUpServer::answerTo(request));
        }
    });
    ModbusSubject plc(server.port());
    plc.device.setParam("timeout", "50");
    plc.device.setParam("retries", "5");
    plc.addOutput("out", QString("holding 50"));
    plc.addInput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    plc.send("x", 1);
    QTRY_VERIFY_WITH_TIMEOUT(!plc.isThere(), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.mid(plc.notes.lastIndexOf("connected")).size() > 5,
                             kPatience);
    int writes = 0;
    for (const QByteArray& request : server.requests) {
        writes += request[7] == 6;
    }
    QCOMPARE(writes, 1);
}

NORVO_GUILESS_TEST(tst_ModbusWriting)
#include "tst_ModbusWriting.moc"
