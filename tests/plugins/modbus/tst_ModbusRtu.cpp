// SPDX-License-Identifier: GPL-3.0-or-later

#include "Effort.h"
#include "ModbusSubject.h"
#include "TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

#include <limits>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// A serial cable: a pseudo terminal whose other end is a TCP server, or another pseudo terminal.
class Cable
{
public:
    explicit Cable(const QString& otherEnd) : m_otherEnd(otherEnd) { plugIn(); }
    explicit Cable(quint16 port) : Cable(QString("TCP:127.0.0.1:%1,nodelay").arg(port)) {}
    ~Cable() { unplug(); }

    void plugIn()
    {
        m_socat.start("socat", {"PTY,raw,echo=0,link=" + path(), m_otherEnd});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path()), kPatience);
    }
    void unplug()
    {
        m_socat.terminate();
        m_socat.waitForFinished();
        QFile::remove(path());
    }
    QString path() const { return m_folder.filePath("panel"); }
    QString target() const { return "rtu://" + path(); }

private:
    const QTemporaryDir m_folder;
    const QString m_otherEnd;
    QProcess m_socat;
};

QByteArray withCrc(QByteArray frame)
{
    quint16 crc = 0xffff;
    for (const char byte : frame) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = quint16((crc & 1) != 0 ? (crc >> 1) ^ 0xa001 : crc >> 1);
        }
    }
    return frame.append(char(crc & 0xff)).append(char(crc >> 8));
}

/// An answer of one register to a read request.
QByteArray answerOf(int value, int unit = 7)
{
    return withCrc(QByteArray("\0\3\2\0\0", 5)
                       .replace(0, 1, QByteArray(1, char(unit)))
                       .replace(4, 1, QByteArray(1, char(value))));
}

/// The other end of a cable, on which the test makes up the answers to requests of 8 bytes.
class OtherEnd
{
public:
    using Answer = std::function<QByteArray(const QByteArray& request)>;

    explicit OtherEnd(Answer answer) : m_answer(std::move(answer))
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this] {
                while (socket->bytesAvailable() >= 8) {
                    requests.append(socket->read(8));
                    socket->write(m_answer(requests.last()));
                }
            });
        });
    }
    quint16 port() const { return m_server.serverPort(); }

    QTcpSocket* socket = nullptr;
    QList<QByteArray> requests;

private:
    Answer m_answer;
    QTcpServer m_server;
};

} // namespace

/// A modbus device on a serial line.
class tst_ModbusRtu : public QObject
{
    Q_OBJECT

private slots:
    void readsAndWrites();
    void unpluggedCableIsReportedAndFoundAgain();
    void hungServerIsReportedWithinThreeSeconds();
    void portThatIsNotThereIsReported();
    void lateAnswerIsNotThatOfTheNextRequest();
    void lineMustBeSilentBeforeTheFirstRequest();
    void lineIsSilentBetweenAnAnswerAndTheNextRequest();
    void wrongAnswerIsNone_data();
    void wrongAnswerIsNone();
    void noiseBeforeAnAnswerIsSkipped();
    void exceptionIsNamed();
};

void tst_ModbusRtu::readsAndWrites()
{
    PymodbusServer server("rtu");
    server.start();
    server.set("h 100 215 16320 0");
    server.set("c 3 1");
    const Cable cable(server.port);
    ModbusSubject plc(cable.target());
    plc.device.setParam("timeout", "1000");
    plc.addOutput("x", QString("holding 100 x0.1"));
    plc.addOutput("f", QString("holding 101 float32"));
    plc.addOutput("coil", QString("coil 3"));
    plc.addOutput("beyond", QString("holding 400"));
    plc.addInput("set", QString("holding 110 float32"));
    plc.addInput("bit", QString("holding 100 bit 3"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.last("f") == 1.5 && plc.last("x") == 21.5, kPatience);
    QVERIFY(plc.notes.contains("coil yes"));
    plc.send("set", -1.5);
    plc.send("bit", true);
    QTRY_COMPARE_WITH_TIMEOUT(server.writes(),
                              QStringList({"write 16 110 49088 0", "write 22 100 223"}), kPatience);
    QTRY_COMPARE_WITH_TIMEOUT(plc.last("x"), 22.3, kPatience);
    QCOMPARE(plc.faults, QStringList("output \"beyond\" (holding 400) cannot be read: illegal data "
                                     "address (exception 2)"));
}

void tst_ModbusRtu::unpluggedCableIsReportedAndFoundAgain()
{
    PymodbusServer server("rtu");
    server.start();
    Cable cable(server.port);
    ModbusSubject plc(cable.target());
    plc.device.setParam("timeout", "500");
    plc.addOutput("x", QString("holding 100"));
    plc.addInput("set", QString("holding 110"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.last("x") == 0, kPatience);
    const norvo::OwnTimer timer;
    cable.unplug();
    QTRY_VERIFY_WITH_TIMEOUT(!plc.isThere(), kPatience);
    const qint64 took = timer.elapsed().ownMs;
    QVERIFY2(took < 3000, qPrintable(QString::number(took)));
    plc.send("set", 1.0);
    cable.plugIn();
    plc.notes.clear();
    QTRY_VERIFY_WITH_TIMEOUT(plc.last("x") == 0, kPatience);
    QCOMPARE(plc.notes.first(), QString("connected"));
    QCOMPARE(server.writes(), QStringList());
}

void tst_ModbusRtu::hungServerIsReportedWithinThreeSeconds()
{
    PymodbusServer server("rtu");
    server.start();
    const Cable cable(server.port);
    ModbusSubject plc(cable.target());
    plc.device.setParam("poll", "500"); // These two are what they are without being set.
    plc.device.setParam("timeout", "500");
    plc.addOutput("x", QString("holding 100"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.last("x") == 0, kPatience);
    server.hang();
    const norvo::OwnTimer timer;
    QTRY_VERIFY_WITH_TIMEOUT(!plc.isThere(), kPatience);
    const qint64 took = timer.elapsed().ownMs;
    QVERIFY2(took < 3000, qPrintable(QString::number(took)));
    server.goOn();
    QTRY_VERIFY_WITH_TIMEOUT(plc.isThere(), kPatience);
}

void tst_ModbusRtu::portThatIsNotThereIsReported()
{
    ModbusSubject plc("rtu:///dev/ttyNone0");
    plc.addOutput("x", QString("holding 100"));
    plc.start();
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults.size(), 1, kPatience);
    QCOMPARE(plc.faults[0], QString("rtu:///dev/ttyNone0: No such file or directory"));
    QCOMPARE(plc.notes, QStringList("away"));
}

void tst_ModbusRtu::lateAnswerIsNotThatOfTheNextRequest()
{
    // The second request is answered after its time-out, and looks like an answer to all of them.
    QByteArray late;
    OtherEnd other([&](const QByteArray&) {
        const int count = other.requests.size();
        if (count == 2) {
            QTimer::singleShot(1200, other.socket, [&] { other.socket->write(answerOf(99)); });
        }
        if (count == 3) { // Not before the late answer, were it asked at once.
            QTimer::singleShot(600, other.socket, [&] { other.socket->write(answerOf(3)); });
        }
        return count == 2 || count == 3 ? QByteArray() : answerOf(count);
    });
    const Cable cable(other.port());
    ModbusSubject plc(cable.target());
    plc.device.setParam("timeout", "800");
    plc.addOutput("x", QString("holding 100"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.contains("x number 4"), kPatience);
    QVERIFY(plc.notes.contains("x number 3"));
    QVERIFY(!plc.notes.contains("x number 99"));
}

void tst_ModbusRtu::lineMustBeSilentBeforeTheFirstRequest()
{
    OtherEnd other([](const QByteArray&) { return answerOf(5); });
    const Cable cable(other.port());
    QTRY_VERIFY_WITH_TIMEOUT(other.socket, kPatience);
    QTimer noise;
    QObject::connect(&noise, &QTimer::timeout, [&other] { other.socket->write(answerOf(99)); });
    noise.start(20);
    ModbusSubject plc(cable.target());
    plc.device.setParam("timeout", "300");
    plc.device.setParam("retries", "0");
    plc.addOutput("x", QString("holding 100"));
    plc.start();
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults.size(), 1, kPatience);
    QVERIFY2(plc.faults[0].endsWith("a late answer or noise came"), qPrintable(plc.faults[0]));
    QCOMPARE(other.requests.size(), 0);
    noise.stop();
    QTRY_VERIFY_WITH_TIMEOUT(plc.last("x") == 5, kPatience);
    QVERIFY(!plc.notes.contains("x number 99"));
}

void tst_ModbusRtu::lineIsSilentBetweenAnAnswerAndTheNextRequest()
{
    constexpr int silenceMs = 38500 / 150; // Three and a half characters at 150 bits a second.

    QElapsedTimer sinceAnswer;
    qint64 shortestMs = std::numeric_limits<qint64>::max();
    OtherEnd other([&](const QByteArray&) {
        if (sinceAnswer.isValid()) {
            shortestMs = qMin(shortestMs, sinceAnswer.elapsed());
        }
        sinceAnswer.start();
        return answerOf(5);
    });
    const Cable cable(other.port());
    ModbusSubject plc(cable.target());
    plc.device.setParam("baud", "150");
    plc.device.setParam("poll", "10");
    plc.device.setParam("timeout", "500");
    plc.addOutput("x", QString("holding 100"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(other.requests.size() >= 4, kPatience);
    QVERIFY2(shortestMs >= silenceMs, qPrintable(QString::number(shortestMs)));
}

void tst_ModbusRtu::wrongAnswerIsNone_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("hint");

    const QString noise = "what came is no answer, or its checksum is wrong";
    QTest::newRow("unit") << answerOf(5, 9) << "an answer came from unit 9 instead of 7";
    QTest::newRow("function") << withCrc(QByteArray("\7\4\2\0\5", 5))
                              << "an answer came that does not fit the request";
    QTest::newRow("checksum") << answerOf(5).replace(4, 1, "x") << noise;
    QTest::newRow("longer") << withCrc(QByteArray("\7\3\4\0\5\0\5", 7)) << noise;
    QTest::newRow("cut") << answerOf(5).chopped(1) << noise;
    QTest::newRow("garbage") << QByteArray(2000, '\x55') << noise;
}

void tst_ModbusRtu::wrongAnswerIsNone()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, hint);

    OtherEnd other([&answer](const QByteArray&) { return answer; });
    const Cable cable(other.port());
    ModbusSubject plc(cable.target());
    plc.device.setParam("timeout", "500");
    plc.device.setParam("retries", "0");
    plc.addOutput("x", QString("holding 100"));
    plc.start();
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults.size(), 1, kPatience);
    QVERIFY2(plc.faults[0].endsWith("no answer within 500 ms; " + hint), qPrintable(plc.faults[0]));
    QCOMPARE(plc.notes, QStringList("away"));
}

void tst_ModbusRtu::noiseBeforeAnAnswerIsSkipped()
{
    OtherEnd other([](const QByteArray& request) { return '\0' + request + answerOf(5); });
    const Cable cable(other.port());
    ModbusSubject plc(cable.target());
    plc.device.setParam("timeout", "500");
    plc.addOutput("x", QString("holding 100"));
    plc.start();
    QTRY_VERIFY_WITH_TIMEOUT(plc.notes.count("x number 5") >= 3, kPatience);
}

void tst_ModbusRtu::exceptionIsNamed()
{
    OtherEnd other([](const QByteArray&) { return withCrc(QByteArray("\7\x83\4", 3)); });
    const Cable cable(other.port());
    ModbusSubject plc(cable.target());
    plc.device.setParam("timeout", "500");
    plc.addOutput("x", QString("holding 100"));
    plc.start();
    QTRY_COMPARE_WITH_TIMEOUT(plc.faults,
                              QStringList("output \"x\" (holding 100) cannot be read: server "
                                          "device failure (exception 4)"),
                              kPatience);
    QCOMPARE(plc.notes, QStringList("connected"));
}

NORVO_GUILESS_TEST(tst_ModbusRtu)
#include "tst_ModbusRtu.moc"
