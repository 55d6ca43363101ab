// SPDX-License-Identifier: GPL-3.0-or-later

#include "SerialStand.h"
#include "TestMain.h"

#include <QtTest>

/// A serial device whose port is there.
class tst_SerialDevice : public QObject
{
    Q_OBJECT

private slots:
    void linesLeaveAsTextsAndNumbers();
    void framesLeaveWhereverTheStreamIsSplit();
    void namedOutputsFindTheirValues();
    void framesThatMatchNothingAreCounted();
    void namedInputsWriteFrames();
    void prefixedFramesGoBothWays();
    void hexFramesGoBothWays();
    void textsThatAreNoSingleFrameAreRefused();
    void whatCameBeforeTheOpeningIsOld();
    void firstLineOfATalkerIsDropped();
    void garbageDoesNoHarm();
    void floodIsBoundedAndCounted();
    void lastWritesArriveAtTheStop();
    void silenceIsReported();
    void deviceWithALimitOfSilenceIsConnectedWhenItIsHeard();
    void pausedDeviceEmitsNothing();
    void secondStartIsLikeTheFirst();
};

void tst_SerialDevice::linesLeaveAsTextsAndNumbers()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    port.write("21.5\r\nhot\n");
    QTRY_COMPARE(subject.notes, QStringList({"text 21.5", "number 21.5", "text hot"}));
    port.write("1");
    QTest::qWait(50);
    port.write("2\n3\n");
    QTRY_COMPARE(subject.notes.mid(3), QStringList({"text 12", "number 12", "text 3", "number 3"}));
    QCOMPARE(subject.alerts, QStringList());
}

void tst_SerialDevice::framesLeaveWhereverTheStreamIsSplit()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"end", "CRLF"}});
    subject.startConnected();
    const QByteArray stream = "ab\r\nc\r\n";
    for (int split = 1; split < stream.size(); ++split) {
        port.write(stream.left(split));
        QTest::qWait(5);
        port.write(stream.mid(split));
        QTRY_COMPARE(subject.notes, QStringList({"text ab", "text c"}));
        subject.notes.clear();
    }
}

void tst_SerialDevice::namedOutputsFindTheirValues()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    QCOMPARE(subject.device.addOutput("t", {"T ([-0-9,]+)", {{"decimal", "comma"}}}), QString());
    QCOMPARE(subject.device.addOutput("on", QString("heater (on|off)")), QString());
    QCOMPARE(subject.device.addOutput("bad", {"T", {{"stale", "5 s"}}}),
             QString("unknown option \"stale\"; valid names: \"as\", \"decimal\""));
    subject.listenTo("t");
    subject.listenTo("on");
    subject.startConnected();
    port.write("T 21,5 heater on\n");
    QTRY_COMPARE(subject.notes, QStringList({"text T 21,5 heater on", "t number 21.5",
                                             "t text 21,5", "on text on", "on yes"}));
}

void tst_SerialDevice::framesThatMatchNothingAreCounted()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    QCOMPARE(subject.device.addOutput("t", QString("T")), QString());
    subject.startConnected();
    port.write("T\nU\nV\n");
    QTRY_COMPARE(subject.alerts, QStringList("frames that match none of the named outputs: 2"));
}

void tst_SerialDevice::namedInputsWriteFrames()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"end", "CR"}});
    QCOMPARE(subject.device.addInput("set", {"S%1", {{"decimal", "comma"}}}), QString());
    QCOMPARE(subject.device.addInput("bad", {"S%1", {{"resend", "true"}}}),
             QString("unknown option \"resend\"; valid names: \"as\", \"decimal\""));
    Sender sender;
    sender.sendTo(subject.device, "set");
    subject.startConnected();
    emit sender.value(2.5);
    emit sender.value(QString("x"));
    subject.device.input("plain");
    QByteArray written;
    QTRY_COMPARE(written += port.read(), QByteArray("S2,5\rSx\rplain\r"));
    QCOMPARE(subject.alerts, QStringList());
}

void tst_SerialDevice::prefixedFramesGoBothWays()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"framing", "prefixed"}, {"prefix", "2 little"}});
    subject.startConnected();
    port.write(QByteArray("\x02\x00"
                          "12\x01",
                          5));
    QTRY_COMPARE(subject.notes, QStringList({"text 12", "number 12"}));
    port.write(QByteArray("\x00x", 2));
    QTRY_COMPARE(subject.notes.mid(2), QStringList("text x"));
    subject.device.input("a\nb");
    QByteArray written;
    QTRY_COMPARE(written += port.read(), QByteArray("\x03\x00"
                                                    "a\nb",
                                                    5));
}

void tst_SerialDevice::hexFramesGoBothWays()
{
    PseudoPort port;
    SerialSubject subject(port.path(),
                          {{"framing", "fixed"}, {"length", "3"}, {"encoding", "hex"}});
    QCOMPARE(subject.device.addInput("go", QString("02 %1 03")), QString());
    Sender sender;
    sender.sendTo(subject.device, "go");
    subject.startConnected();
    port.write(QByteArray("\x02\x00\xff\x02\x0a\x0d\x02", 7));
    QTRY_COMPARE(subject.texts(), QStringList({"text 0200ff", "text 020a0d"}));
    // The last one never becomes whole.
    QTRY_COMPARE(subject.alerts, QStringList("frames dropped, they broke off: 1"));
    port.write("\x01\x02\x03");
    QTRY_COMPARE(subject.texts().mid(2), QStringList("text 010203"));
    emit sender.value(QString("ff"));
    QByteArray written;
    QTRY_COMPARE(written += port.read(), QByteArray("\x02\xff\x03"));
}

void tst_SerialDevice::textsThatAreNoSingleFrameAreRefused()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    subject.device.input("stop\nstart");
    subject.device.input("stop\rstart");
    subject.device.input("good");
    QByteArray written;
    QTRY_COMPARE(written += port.read(), QByteArray("good\n"));
    QTRY_COMPARE(subject.alerts, QStringList("inputs refused, they are no single frame: 2"));
}

void tst_SerialDevice::whatCameBeforeTheOpeningIsOld()
{
    PseudoPort port;
    port.write("old\nol");
    SerialSubject subject(port.path());
    subject.startConnected();
    port.write("new\n");
    QTRY_COMPARE(subject.notes, QStringList("text new"));
}

void tst_SerialDevice::firstLineOfATalkerIsDropped()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.start();
    port.write("1.5\n21.5\n"); // Before the pause that shows where a line begins.
    QTRY_COMPARE(subject.notes, QStringList({"connected", "text 21.5", "number 21.5"}));
    QCOMPARE(subject.alerts, QStringList());
}

void tst_SerialDevice::garbageDoesNoHarm()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    QByteArray garbage;
    for (int i = 0; i < 2000; ++i) {
        garbage += char(i * 7919 >> 3 & 0xff);
    }
    garbage.replace('\n', ' ');
    port.write(garbage + '\n' + QByteArray("a\0b\n\xff\xfe\n", 7) + "12\n");
    QTRY_COMPARE(subject.texts().size(), 4);
    QCOMPARE(subject.texts().mid(1),
             QStringList({"text " + QString::fromUtf8("a\0b", 3),
                          QString("text ") + QChar(0xfffd) + QChar(0xfffd), "text 12"}));
    QVERIFY(subject.device.isRunning());
}

void tst_SerialDevice::floodIsBoundedAndCounted()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    // A receiver that is slower than the port.
    int count = 0;
    QObject::connect(&subject.device, qOverload<double>(&SerialDevice::output), [&count] {
        ++count;
        QTest::qSleep(1);
    });
    const QByteArray lines = QByteArray("1\n").repeated(1000);
    int sent = 0;
    QElapsedTimer clock;
    clock.start();
    while (subject.alerts.isEmpty() && !clock.hasExpired(60000)) {
        sent += port.writeSome(lines) / 2; // A rest of one byte does no harm.
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    QVERIFY2(!subject.alerts.isEmpty(), qPrintable(QString::number(sent)));
    QVERIFY(subject.alerts.constFirst().startsWith("frames dropped, they came too fast: "));
    const int dropped = subject.alerts.constFirst().section(": ", -1).toInt();
    QVERIFY(dropped > 0);
    QVERIFY(count + dropped <= sent);
    QVERIFY(sent - count - dropped <= 10000 + 64 * 1024); // What waits here and in the port.
}

void tst_SerialDevice::lastWritesArriveAtTheStop()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    subject.device.input("stop");
    subject.stop();
    QCOMPARE(port.read(), QByteArray("stop\n"));
    QCOMPARE(subject.notes, QStringList("away"));
}

void tst_SerialDevice::silenceIsReported()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"silence", "400 ms"}});
    subject.start();
    port.write("\n1\n");
    QTRY_COMPARE(subject.notes, QStringList({"connected", "text 1", "number 1", "away"}));
    QCOMPARE(subject.faults, QStringList("the device has sent nothing for 400 ms"));
    subject.device.input("late");
    port.write("2\n");
    QTRY_COMPARE(subject.notes.mid(4), QStringList({"connected", "text 2", "number 2", "away"}));
    QCOMPARE(subject.faults.size(), 2);
    QCOMPARE(port.read(), QByteArray());
}

void tst_SerialDevice::deviceWithALimitOfSilenceIsConnectedWhenItIsHeard()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"silence", "400 ms"}});
    subject.start();
    QTRY_COMPARE(subject.notes, QStringList("away"));
    QCOMPARE(subject.faults, QStringList("the device has sent nothing for 400 ms"));
}

void tst_SerialDevice::pausedDeviceEmitsNothing()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    subject.device.setRunning(false);
    port.write("1\n");
    subject.device.input("x");
    QTest::qWait(100);
    QCOMPARE(subject.notes, QStringList());
    QCOMPARE(port.read(), QByteArray());
}

void tst_SerialDevice::secondStartIsLikeTheFirst()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"ask", "W"}, {"every", "20"}});
    for (int i = 0; i < 2; ++i) {
        subject.start();
        subject.device.input("early");
        QByteArray asked;
        QTRY_VERIFY((asked += port.read()).startsWith("W\n"));
        port.write("1\n");
        QTRY_COMPARE(subject.notes, QStringList({"connected", "text 1", "number 1"}));
        subject.stop();
        QVERIFY(!(asked + port.read()).contains("early"));
        QCOMPARE(subject.notes.mid(3), QStringList("away"));
        subject.notes.clear();
    }
}

NORVO_GUILESS_TEST(tst_SerialDevice)
#include "tst_SerialDevice.moc"
