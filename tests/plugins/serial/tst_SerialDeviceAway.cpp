// SPDX-License-Identifier: GPL-3.0-or-later

#include "SerialStand.h"
#include "TestMain.h"

#include <QProcess>
#include <QSerialPort>
#include <QtTest>

#include <csignal>
#include <fcntl.h>
#include <sys/fsuid.h>
#include <unistd.h>

namespace {

/// Two terminals that a program joins, one for the port and one for the device.
class TerminalPair
{
public:
    TerminalPair()
    {
        const QString end = "pty,raw,echo=0,link=" + m_folder.path();
        m_program.start("socat", {end + "/here", end + "/there"});
        QTRY_VERIFY(QFile::exists(here()) && QFile::exists(there()));
        m_there = ::open(QFile::encodeName(there()).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        QVERIFY(m_there >= 0);
    }
    ~TerminalPair()
    {
        end();
        ::close(m_there);
    }
    TerminalPair(const TerminalPair&) = delete;
    TerminalPair& operator=(const TerminalPair&) = delete;

    QString here() const { return m_folder.filePath("here"); }
    void write(const QByteArray& bytes)
    {
        QCOMPARE(::write(m_there, bytes.constData(), size_t(bytes.size())), ssize_t(bytes.size()));
    }
    QByteArray read() { return readAll(m_there); }
    void signal(int number) { ::kill(pid_t(m_program.processId()), number); }
    void end()
    {
        m_program.kill();
        m_program.waitForFinished();
    }

private:
    QString there() const { return m_folder.filePath("there"); }

    QTemporaryDir m_folder;
    QProcess m_program;
    int m_there = -1;
};

} // namespace

/// A serial device whose port is not there, or goes and comes back.
class tst_SerialDeviceAway : public QObject
{
    Q_OBJECT

private slots:
    void missingPortIsReportedOnceAndFoundLater();
    void fileThatIsNoPortIsReported();
    void portWithoutPermissionIsReported();
    void portThatIsInUseIsReported();
    void unpluggingIsNoticedAndPluggingInFound_data();
    void unpluggingIsNoticedAndPluggingInFound();
    void frameThatWasBegunIsNotContinued();
    void writesWhileItIsAwayNeverArrive();
    void whatTheLostPortHadToWriteNeverArrives();
    void whatWaitsWhenTheDeviceFallsSilentNeverArrives();
    void portThatTakesNothingLosesWrites();
    void pairOfTerminalsThatIsKilledIsNoticed();
    void stoppedPairIsSilent();
};

void tst_SerialDeviceAway::missingPortIsReportedOnceAndFoundLater()
{
    PseudoPort port;
    port.unplug();
    SerialSubject subject(port.path());
    subject.start();
    QCOMPARE(subject.notes, QStringList("away"));
    QTest::qWait(1500); // It has been tried again meanwhile.
    QCOMPARE(subject.faults, QStringList("there is no port " + port.path()));
    port.plug();
    QTRY_COMPARE(subject.notes, QStringList({"away", "connected"}));
    QCOMPARE(subject.faults.size(), 1);
}

void tst_SerialDeviceAway::fileThatIsNoPortIsReported()
{
    SerialSubject subject("/dev/null");
    subject.start();
    QCOMPARE(subject.faults, QStringList("/dev/null is no serial port"));
}

void tst_SerialDeviceAway::portWithoutPermissionIsReported()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    QFile::setPermissions(port.node(), {});
    // What a superuser may is taken from this thread.
    const int user = ::setfsuid(65534);
    subject.start();
    ::setfsuid(uid_t(user));
    QCOMPARE(subject.faults, QStringList("no permission to use " + port.path() +
                                         "; its group, often \"dialout\", may"));
    QFile::setPermissions(port.node(), QFile::ReadOwner | QFile::WriteOwner);
    QTRY_COMPARE(subject.notes, QStringList({"away", "connected"}));
}

void tst_SerialDeviceAway::portThatIsInUseIsReported()
{
    PseudoPort port;
    QSerialPort other;
    other.setPortName(port.node()); // By another name.
    QVERIFY(other.open(QIODevice::ReadWrite));
    SerialSubject subject(port.path());
    subject.start();
    QCOMPARE(subject.faults, QStringList(port.path() + " is in use by another program or device"));
    other.close();
    QTRY_COMPARE(subject.notes, QStringList({"away", "connected"}));
}

void tst_SerialDeviceAway::unpluggingIsNoticedAndPluggingInFound_data()
{
    QTest::addColumn<bool>("isHungUp");
    QTest::addColumn<bool>("isHidden");

    QTest::newRow("unplugged") << true << true;
    QTest::newRow("other end closed") << true << false;
    QTest::newRow("only the name is gone") << false << true;
}

void tst_SerialDeviceAway::unpluggingIsNoticedAndPluggingInFound()
{
    QFETCH(bool, isHungUp);
    QFETCH(bool, isHidden);
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    for (int i = 0; i < 2; ++i) {
        if (isHungUp) {
            port.hangUp();
        }
        if (isHidden) {
            port.hide();
        }
        QTRY_COMPARE_WITH_TIMEOUT(subject.notes, QStringList("away"), 3000);
        QVERIFY(subject.faults.filter(port.path() + " is gone").size() == i + 1);
        port.unplug();
        port.plug();
        QTRY_COMPARE(subject.notes, QStringList({"away", "connected"}));
        port.write("1\n");
        QTRY_COMPARE(subject.texts(), QStringList("text 1"));
        subject.notes.clear();
    }
}

void tst_SerialDeviceAway::frameThatWasBegunIsNotContinued()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    port.write("half");
    QTest::qWait(50);
    port.unplug();
    QTRY_COMPARE(subject.notes, QStringList("away"));
    port.plug();
    QTRY_COMPARE(subject.notes.size(), 2);
    port.write("new\n");
    QTRY_COMPARE(subject.texts(), QStringList("text new"));
}

void tst_SerialDeviceAway::writesWhileItIsAwayNeverArrive()
{
    PseudoPort port;
    port.unplug();
    SerialSubject subject(port.path());
    QCOMPARE(subject.device.addInput("set", QString("set %1")), QString());
    Sender sender;
    sender.sendTo(subject.device, "set");
    subject.start();
    subject.device.input("never 1");
    emit sender.value(QString("never 2"));
    port.plug();
    QTRY_COMPARE(subject.notes, QStringList({"away", "connected"}));
    port.unplug();
    QTRY_COMPARE(subject.notes.size(), 3);
    subject.device.input("never 3");
    port.plug();
    QTRY_COMPARE(subject.notes.size(), 4);
    subject.device.input("now");
    QByteArray written;
    QTRY_COMPARE(written += port.read(), QByteArray("now\n"));
    QTRY_VERIFY(!subject.alerts.filter("inputs lost, the device is not connected: ").isEmpty());
}

void tst_SerialDeviceAway::whatTheLostPortHadToWriteNeverArrives()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    // More than a terminal takes while nobody reads it; the end waits in this process.
    for (int i = 0; i < 100; ++i) {
        subject.device.input(QString("%1").arg(i, 400, 10, QChar('0')));
    }
    QTest::qWait(100);
    QCOMPARE(subject.alerts, QStringList());
    QByteArray written;
    QObject::connect(&subject.device, &SerialDevice::fault, [&port, &written] {
        for (int i = 0; i < 10; ++i) { // As a receiver that opens a dialog.
            written += port.read();
            QTest::qWait(20);
        }
    });
    port.hide(); // The device is lost, and the line would still take bytes.
    QTRY_VERIFY(!written.isEmpty());
    QTest::qWait(100);
    written += port.read();
    QVERIFY2(written.size() < 20000, qPrintable(QString::number(written.size())));
    port.unplug();
    port.plug();
    QTRY_COMPARE(subject.notes, QStringList({"away", "connected"}));
    QTest::qWait(100);
    QCOMPARE(port.read(), QByteArray());
}

void tst_SerialDeviceAway::whatWaitsWhenTheDeviceFallsSilentNeverArrives()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"silence", "500 ms"}});
    subject.start();
    port.write("\n1\n");
    QTRY_COMPARE(subject.notes.mid(0, 1), QStringList("connected"));
    for (int i = 0; i < 100; ++i) {
        subject.device.input(QString("%1").arg(i, 400, 10, QChar('0')));
    }
    QTRY_COMPARE(subject.notes.mid(3), QStringList("away"));
    QByteArray written;
    for (int i = 0; i < 10; ++i) {
        written += port.read();
        QTest::qWait(20);
    }
    QVERIFY2(written.size() < 20000, qPrintable(QString::number(written.size())));
}

void tst_SerialDeviceAway::portThatTakesNothingLosesWrites()
{
    PseudoPort port;
    SerialSubject subject(port.path());
    subject.startConnected();
    for (int i = 0; i < 100; ++i) {
        subject.device.input(QString(1000, 'x'));
    }
    QTRY_COMPARE(subject.alerts.filter("inputs lost, the port does not take them: ").size(), 1);
}

void tst_SerialDeviceAway::pairOfTerminalsThatIsKilledIsNoticed()
{
    TerminalPair pair;
    SerialSubject subject(pair.here());
    subject.startConnected();
    pair.write("5\n");
    QTRY_COMPARE(subject.notes, QStringList({"text 5", "number 5"}));
    subject.device.input("back");
    QByteArray written;
    QTRY_COMPARE(written += pair.read(), QByteArray("back\n"));
    pair.end();
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes.mid(2), QStringList("away"), 3000);
    QCOMPARE(subject.faults.size(), 1);
}

void tst_SerialDeviceAway::stoppedPairIsSilent()
{
    TerminalPair pair;
    SerialSubject subject(pair.here(), {{"silence", "3 s"}});
    subject.start();
    pair.write("\n5\n"); // The empty line is a frame if the pause of the beginning is over.
    QTRY_VERIFY_WITH_TIMEOUT(subject.notes.contains("number 5"), 60000);
    subject.notes.clear();
    pair.signal(SIGSTOP);
    pair.write("6\n");
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes, QStringList("away"), 60000);
    subject.device.input("never");
    pair.signal(SIGCONT);
    QTRY_COMPARE_WITH_TIMEOUT(subject.notes.mid(1),
                              QStringList({"connected", "text 6", "number 6"}), 60000);
    subject.device.input("now");
    QByteArray written;
    QTRY_COMPARE(written += pair.read(), QByteArray("now\n"));
}

NORVO_GUILESS_TEST(tst_SerialDeviceAway)
#include "tst_SerialDeviceAway.moc"
