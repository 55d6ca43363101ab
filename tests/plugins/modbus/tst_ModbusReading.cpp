// SPDX-License-Identifier: GPL-3.0-or-later

#include "ModbusSubject.h"
#include "TestMain.h"

#include <QtTest>

/// The outputs of a modbus device, with a server that is there.
class tst_ModbusReading : public QObject
{
    Q_OBJECT

private slots:
    void everyTableAndTypeIsRead();
    void valueLeavesAtEachPoll();
    void optionSendsChangesOnly();
    void neighboursAreReadByOneRequest();
    void onlyWhatIsHeardIsRead();
    void serverIsAskedWhereNothingIsHeard();
    void holeInTheMapTakesNoValueAlong();
    void exceptionIsNamedOnce();
    void exceptionThatChangesIsNamedAgain();
    void slowServerIsNotAskedTwice();
    void receiverMayDeleteTheDevice();
    void wrongParametersAreErrors_data();
    void wrongParametersAreErrors();
};

void tst_ModbusReading::everyTableAndTypeIsRead()
{
    PymodbusServer server;
    server.start();
    server.set("c 3 1");
    server.set("d 4 1 0");
    server.set("i 5 65535");
    server.set("h 100 215 65534 4660 22136 16320 0 0 49088 16369 39321 39321 39322 8");
    ModbusSubject plc(server.port);
    plc.addOutput("coil", QString("coil 3"));
    plc.addOutput("on", QString("discrete 4"));
    plc.addOutput("off", QString("discrete 5"));
    plc.addOutput("input", QString("input 5 int16"));
    plc.addOutput("scaled", QString("holding 100 uint16 x0.1 +5"));
    plc.addOutput("signed", QString("holding 101 int16"));
    plc.addOutput("swapped", QString("holding 102 badc"));
    plc.addOutput("uint32", QString("holding 102 uint32"));
    plc.addOutput("int32", QString("holding 102 int32 cdab"));
    plc.addOutput("float32", QString("holding 104 float32"));
    plc.addOutput("lowFirst", {"holding 106", {{"type", "float32"}, {"order", "cdab"}}});
    plc.addOutput("float64", QString("holding 108 float64"));
    plc.addOutput("bit3", QString("holding 112 bit 3"));
    plc.addOutput("bit4", QString("holding 112 bit 4"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("bit4 no") > 0, kPatience);
    QCOMPARE(plc.notes.first(), QString("connected"));
    QVERIFY(plc.notes.contains("coil yes") && plc.notes.contains("on yes"));
    QVERIFY(plc.notes.contains("off no") && plc.notes.contains("bit3 yes"));
    QCOMPARE(plc.last("input"), -1.0);
    QCOMPARE(plc.last("scaled"), 26.5);
    QCOMPARE(plc.last("signed"), -2.0);
    QCOMPARE(plc.last("swapped"), double(0x3412));
    QCOMPARE(plc.last("uint32"), double(0x12345678));
    QCOMPARE(plc.last("int32"), double(0x56781234));
    QCOMPARE(plc.last("float32"), 1.5);
    QCOMPARE(plc.last("lowFirst"), -1.5);
    QCOMPARE(plc.last("float64"), 1.1);
    QVERIFY(plc.notes.contains("scaled text 26.5"));
    QCOMPARE(plc.faults, QStringList());
}

void tst_ModbusReading::valueLeavesAtEachPoll()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("x number 0") >= 5, kPatience);
    server.set("h 1 6");
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("x number 6") >= 5, kPatience);
    QCOMPARE(plc.notes.count("connected"), 1);
}

void tst_ModbusReading::optionSendsChangesOnly()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addOutput("x", {"holding 1", {{"send", "changes"}}});
    plc.addOutput("each", QString("holding 1"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("each number 0") >= 5, kPatience);
    server.set("h 1 6");
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("each number 6") >= 5, kPatience);
    QCOMPARE(plc.notes.filter("x number"), QStringList({"x number 0", "x number 6"}));
    ModbusDevice wrong;
    QCOMPARE(wrong.addOutput("y", {"holding 1", {{"send", "never"}}}),
             QString("option \"send\": \"never\" is neither always nor changes"));
}

void tst_ModbusReading::neighboursAreReadByOneRequest()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    for (int i = 0; i < 100; ++i) { // 100 of them; those at 60 and 62 and the last, apart.
        plc.addOutput(QString("h%1").arg(i), QString("holding %1").arg(i < 90 ? i / 2 : i - 30));
    }
    plc.addOutput("c0", QString("coil 0"));
    plc.addOutput("c50", QString("coil 50"));
    plc.addOutput("c299", QString("coil 299"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("h99 number 0") >= 3, kPatience);
    QStringList reads = server.lines().filter(QRegularExpression("^read "));
    reads.removeDuplicates();
    QCOMPARE(reads, QStringList({"read 1 0 51", "read 1 299 1", "read 3 0 45", "read 3 60 10"}));
}

void tst_ModbusReading::onlyWhatIsHeardIsRead()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addOutput("unheard", QString("holding 1"), false);
    plc.addOutput("heard", QString("holding 100"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("heard number 0") >= 3, kPatience);
    QStringList reads = server.lines().filter(QRegularExpression("^read "));
    reads.removeDuplicates();
    QCOMPARE(reads, QStringList("read 3 100 1"));
}

void tst_ModbusReading::serverIsAskedWhereNothingIsHeard()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addInput("set", QString("holding 9 float32"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(server.lines().count("read 3 9 2") >= 2, kPatience);
    QCOMPARE(plc.notes, QStringList("connected"));
}

void tst_ModbusReading::holeInTheMapTakesNoValueAlong()
{
    PymodbusServer server;
    server.start();
    server.set("h 145 1 2 3 4 5 6 7 8 9 10");
    ModbusSubject plc(server.port);
    for (int address = 145; address < 155; ++address) {
        plc.addOutput(QString("h%1").arg(address), QString("holding %1").arg(address));
    }
    plc.addOutput("beyond", QString("holding 303"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("h154 number 10") >= 5, kPatience);
    for (int address = 145; address < 155; ++address) {
        QCOMPARE(plc.last(QString("h%1").arg(address)), double(address - 144));
    }
    QCOMPARE(plc.faults, QStringList("output \"beyond\" (holding 303) cannot be read: illegal data "
                                     "address (exception 2)"));
    // It is found out once.
    QCOMPARE(server.lines().count("refused 3 145 159"), 0);
    QCOMPARE(server.lines().filter(QRegularExpression("^refused 3 145 ")).count(), 1);
}

void tst_ModbusReading::exceptionIsNamedOnce()
{
    PymodbusServer server;
    server.start();
    ModbusSubject plc(server.port);
    plc.addOutput("beyond", QString("input 400"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(server.lines().count("refused 4 400 1") >= 4, kPatience);
    QCOMPARE(plc.faults, QStringList("output \"beyond\" (input 400) cannot be read: illegal data "
                                     "address (exception 2)"));
    QCOMPARE(plc.alerts, plc.faults);
    QCOMPARE(plc.notes, QStringList("connected"));
}

void tst_ModbusReading::exceptionThatChangesIsNamedAgain()
{
    int code = 4;
    MadeUpServer server([&code](QTcpSocket& socket, const QByteArray& request) {
        const QByteArray refusal =
            request.left(5) + char(3) + request.mid(6, 1) + char(request[7] | 0x80) + char(code);
        socket.write(code > 0 ? refusal : MadeUpServer::answerTo(request, 5));
    });
    ModbusSubject plc(server.port());
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    for (const int next : {6, 0, 6}) {
        const int before = server.requests.size();
        QTRY_VERIFY_WITH_TIMEOUT(server.requests.size() > before + 3, kPatience);
        code = next;
    }
    const QString text = "output \"x\" (holding 1) cannot be read: server device ";
    QTRY_COMPARE_WITH_TIMEOUT(
        plc.faults,
        QStringList({text + "failure (exception 4)", text + "busy (exception 6)",
                     text + "busy (exception 6)"}),
        kPatience);
    QCOMPARE(plc.last("x"), 5.0);
}

void tst_ModbusReading::slowServerIsNotAskedTwice()
{
    QList<QPair<QTcpSocket*, QByteArray>> open;
    MadeUpServer server([&open](QTcpSocket& socket, const QByteArray& request) {
        open.append({&socket, request});
    });
    ModbusSubject plc(server.port());
    plc.device.setParam("poll", "10");
    plc.addOutput("x", QString("holding 1"));
    plc.start();
    for (int i = 0; i < 3; ++i) {
        QTRY_COMPARE_WITH_TIMEOUT(open.size(), 1, kPatience);
        QTest::qWait(100); // Ten polls.
        QCOMPARE(open.size(), 1);
        open[0].first->write(MadeUpServer::answerTo(open[0].second, i));
        open.clear();
    }
    QTRY_COMPARE_WITH_TIMEOUT(plc.last("x"), 2.0, kPatience);
}

void tst_ModbusReading::receiverMayDeleteTheDevice()
{
    MadeUpServer server([](QTcpSocket& socket, const QByteArray& request) {
        socket.write(MadeUpServer::answerTo(request));
    });
    auto device = std::make_unique<ModbusDevice>();
    device->setParam("target", QString("tcp://127.0.0.1:%1").arg(server.port()));
    QCOMPARE(device->addOutput("x", QString("holding 1")), QString());
    QCOMPARE(device->addOutput("y", QString("holding 1")), QString());
    Listener x;
    Listener y;
    x.listenTo(*device, "x");
    y.listenTo(*device, "y");
    x.onNote = [&device] { device.reset(); };
    QVERIFY(device->initialise());
    device->setRunning(true);
    device->postInitialisation();
    QTRY_VERIFY_WITH_TIMEOUT(!device, kPatience);
    QCOMPARE(x.notes, QStringList("number 0"));
    QCOMPARE(y.notes, QStringList());
}

void tst_ModbusReading::wrongParametersAreErrors_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("error");

    const QString target = "parameter \"target\": \"%1\" is neither tcp://host:port nor "
                           "rtu:///dev/name";
    for (const char* text : {"", "127.0.0.1:502", "udp://host", "tcp://", "tcp://host:port",
                             "tcp://host/path", "rtu://ttyUSB0", "rtu:///dev/x?baud=9600"}) {
        QTest::newRow(qPrintable(QString("target \"%1\"").arg(text)))
            << "target" << text << target.arg(text);
    }
    QTest::newRow("host") << "target"
                          << "tcp://plc.local"
                          << "";
    QTest::newRow("IPv6") << "target"
                          << "tcp://[::1]:1502"
                          << "";
    QTest::newRow("serial port") << "target"
                                 << "rtu:///dev/ttyUSB0"
                                 << "";
    QTest::newRow("unit") << "unit"
                          << "256"
                          << "parameter \"unit\": \"256\" is not a whole number from 0 to 255";
    QTest::newRow("poll") << "poll"
                          << "0"
                          << "parameter \"poll\": \"0\" is not a whole number from 10 to 3600000";
    QTest::newRow("timeout") << "timeout"
                             << "1 s"
                             << "parameter \"timeout\": \"1 s\" is not a whole number from 10 to "
                                "60000";
    QTest::newRow("retries") << "retries"
                             << "-1"
                             << "parameter \"retries\": \"-1\" is not a whole number from 0 to 10";
}

void tst_ModbusReading::wrongParametersAreErrors()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QFETCH(QString, error);

    ModbusDevice device;
    QStringList errors;
    connect(&device, &ModbusDevice::errorOccurred,
            [&errors](const QString& text) { errors << text; });
    device.setParam("target", "tcp://127.0.0.1");
    device.setParam(name, value);
    QCOMPARE(device.initialise(), error.isEmpty());
    QCOMPARE(errors.join('|'), error);
}

NORVO_GUILESS_TEST(tst_ModbusReading)
#include "tst_ModbusReading.moc"
