// SPDX-License-Identifier: GPL-3.0-or-later

#include "Effort.h"
#include "ProcessSubject.h"
#include "TestMain.h"

#include <QtTest>

#include <ctime>

namespace {

/// Resident memory of this process in KiB.
int residentMemory()
{
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    const QByteArray status = file.readAll();
    return status.mid(status.indexOf("VmRSS:") + 6, 20).trimmed().split(' ').first().toInt();
}

/// The longest time for which the event loop did not come round although it could.
class Heartbeat : public QObject
{
public:
    Heartbeat()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            m_longest = std::max(m_longest, m_clock.restart().ownMs);
            ++m_count;
        });
        m_timer.start(1);
    }

    qint64 longestMs() const { return m_longest; }
    int count() const { return m_count; }

private:
    QTimer m_timer;
    norvo::OwnTimer m_clock;
    qint64 m_longest = 0;
    int m_count = 0;
};

/// A device without a recorder that would grow.
struct Flooded
{
    explicit Flooded(const QString& command)
    {
        device.setObjectName("child");
        device.setParam("command", command);
        QObject::connect(&device, &ProcessDevice::alertRaised,
                         [this](const QString& text) { alerts << text; });
        QVERIFY(device.initialise());
        device.setRunning(true);
        device.postInitialisation();
    }

    void stop()
    {
        device.setRunning(false);
        device.preShutdown();
        device.deinitialise();
    }

    ProcessDevice device;
    QStringList alerts;
};

/// What a receiver does with a line. On a busy machine a program may be slower than one that does
/// nothing.
void takeTime(qint64 nanoseconds)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.nsecsElapsed() < nanoseconds) {
    }
}

int s_logged = 0;

void countLogged(QtMsgType, const QMessageLogContext&, const QString& text)
{
    s_logged += text.startsWith("child: ") && text.contains("noise");
}

#ifdef __SANITIZE_ADDRESS__
constexpr bool kMemoryIsOurs = false; // The sanitizer keeps what has been freed.
#else
constexpr bool kMemoryIsOurs = true;
#endif

} // namespace

/// A program that writes without pause costs neither the window nor the memory.
class tst_ProcessDeviceFlood : public QObject
{
    Q_OBJECT

private slots:
    void neitherBlocksNorGrows_data();
    void neitherBlocksNorGrows();
    void slowReceiverDoesNotBlockEither();
    void newestLinesSurviveAndTheRestIsCounted();
    void shortBurstComesWhole();
    void standardErrorIsLoggedInMeasure();
};

void tst_ProcessDeviceFlood::neitherBlocksNorGrows_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("dropsLines");

    QTest::newRow("shortLines") << "yes" << true;
    QTest::newRow("numbers") << "yes 123.456" << true;
    QTest::newRow("longLines") << "sh -c 'exec yes $(printf %050000d 7)'" << false;
    QTest::newRow("oneEndlessLine") << "cat /dev/zero" << false;
}

void tst_ProcessDeviceFlood::neitherBlocksNorGrows()
{
    QFETCH(QString, command);
    QFETCH(bool, dropsLines);

    Flooded child(command);
    qint64 lines = 0;
    QObject::connect(&child.device, qOverload<QString>(&ProcessDevice::output), [&] {
        takeTime(20000);
        ++lines;
    });
    QTest::qWait(300);
    const int before = residentMemory();
    const std::clock_t processorBefore = std::clock();
    Heartbeat heartbeat;
    QTest::qWait(2000);
    const double share = double(std::clock() - processorBefore) / CLOCKS_PER_SEC / 2.0;
    const int grown = residentMemory() - before;
    QTRY_VERIFY_WITH_TIMEOUT(heartbeat.count() > 50, 60000);
    if (dropsLines) {
        QTRY_VERIFY_WITH_TIMEOUT(!child.alerts.isEmpty(), 60000); // After a second, then every ten.
    }
    child.stop();

    qInfo("%lld lines, longest turn %lld ms, %d KiB more, %.0f %% of a core", lines,
          heartbeat.longestMs(), grown, 100.0 * share);
    QVERIFY(heartbeat.longestMs() < 200);
    if (kMemoryIsOurs) {
        QVERIFY(before > 0);
        QVERIFY(grown < 8 * 1024);
    }
    QCOMPARE(!child.alerts.isEmpty() && child.alerts[0].startsWith("lines of output dropped"),
             dropsLines);
    QVERIFY(child.alerts.size() <= 1);
}

void tst_ProcessDeviceFlood::slowReceiverDoesNotBlockEither()
{
    Flooded child("yes");
    int lines = 0;
    QObject::connect(&child.device, qOverload<QString>(&ProcessDevice::output), [&] {
        QTest::qSleep(1);
        ++lines;
    });
    Heartbeat heartbeat;
    QTest::qWait(1000);
    QTRY_VERIFY_WITH_TIMEOUT(lines > 10 && heartbeat.count() > 50, 60000);
    child.stop();
    QVERIFY2(heartbeat.longestMs() < 200, qPrintable(QString::number(heartbeat.longestMs())));
}

void tst_ProcessDeviceFlood::newestLinesSurviveAndTheRestIsCounted()
{
    constexpr qint64 total = 2000000;

    ProcessSubject child(QString("seq %1").arg(total));
    QObject::connect(&child.device, qOverload<QString>(&ProcessDevice::output),
                     [] { takeTime(5000); });
    QTRY_VERIFY_WITH_TIMEOUT(child.hasFinished(), 60000);
    QCOMPARE(child.lines.last().toLongLong(), total);
    qint64 previous = 0;
    for (const QString& line : qAsConst(child.lines)) {
        const qint64 number = line.toLongLong();
        QVERIFY(number > previous);
        previous = number;
    }
    const QString head = "lines of output dropped, they came too fast: ";
    qint64 dropped = 0;
    for (const QString& alert : qAsConst(child.alerts)) {
        QVERIFY(alert.startsWith(head));
        dropped += alert.mid(head.size()).toLongLong();
    }
    QVERIFY(dropped > 0);
    QCOMPARE(dropped + child.lines.size(), total);
}

void tst_ProcessDeviceFlood::shortBurstComesWhole()
{
    ProcessSubject child("seq 20000");
    QTRY_VERIFY_WITH_TIMEOUT(child.hasFinished(), 20000);
    QCOMPARE(child.lines.size(), 20000);
    QVERIFY(child.alerts.isEmpty());
}

void tst_ProcessDeviceFlood::standardErrorIsLoggedInMeasure()
{
    s_logged = 0;
    const QtMessageHandler handler = qInstallMessageHandler(countLogged);
    QElapsedTimer clock;
    clock.start();
    Flooded child("sh -c 'exec yes noise >&2'");
    Heartbeat heartbeat;
    QTest::qWait(2500);
    child.stop();
    const qint64 most = 100 * (clock.elapsed() / 1000 + 1); // 100 a second.
    qInstallMessageHandler(handler);
    QVERIFY2(s_logged >= 100 && s_logged <= most, qPrintable(QString::number(s_logged)));
    QVERIFY(heartbeat.longestMs() < 200);
    QCOMPARE(child.alerts.size(), 1);
    QVERIFY(child.alerts[0].startsWith("lines of standard error not logged: "));
}

NORVO_GUILESS_TEST(tst_ProcessDeviceFlood)
#include "tst_ProcessDeviceFlood.moc"
