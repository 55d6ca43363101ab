// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/SystemDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>

namespace {

/// A small /proc of our own.
class ProcFolder
{
public:
    ProcFolder()
    {
        QDir(m_folder.path()).mkdir("net");
        write("stat", "cpu 0 0 0 100\n");
        write("meminfo", "MemTotal: 1000 kB\nMemAvailable: 250 kB\n");
        write("loadavg", "0.50 0 0 1/1 1\n");
        writeTraffic(1000, 2000);
        write("uptime", "93784.5 0\n");
    }

    QString path() const { return m_folder.path(); }
    QString path(const QString& file) const { return m_folder.filePath(file); }

    void write(const QString& file, const QByteArray& text)
    {
        QFile target(path(file));
        QVERIFY(target.open(QIODevice::WriteOnly));
        QCOMPARE(target.write(text), qint64(text.size()));
    }

    void writeTraffic(int received, int sent)
    {
        write("net/dev", QString("Inter-| Receive | Transmit\n face |bytes|bytes\n"
                                 "lo: 5 0 0 0 0 0 0 0 5 0\neth0: %1 0 0 0 0 0 0 0 %2 0\n")
                             .arg(received)
                             .arg(sent)
                             .toUtf8());
    }

    void remove(const QString& file) { QVERIFY(QFile::remove(path(file))); }

private:
    QTemporaryDir m_folder;
};

/// A running device on that folder that notes what it emits.
struct Subject
{
    explicit Subject(const QString& folder, const QString& interval = "100000") : device(folder)
    {
        device.setObjectName("machine");
        device.setParam("interval", interval);
        const auto note = [this](const char* name) {
            return [this, name](double value) { noted << name << QString::number(value); };
        };
        QObject::connect(&device, &SystemDevice::cpu, note("cpu"));
        QObject::connect(&device, &SystemDevice::memory, note("memory"));
        QObject::connect(&device, &SystemDevice::load, note("load"));
        QObject::connect(&device, &SystemDevice::received, [this](double value) {
            noted << "received" << (std::isnan(value) ? "nan" : value > 0 ? "some" : "none");
        });
        QObject::connect(&device, &SystemDevice::sent, [this](double value) {
            noted << "sent" << (std::isnan(value) ? "nan" : value > 0 ? "some" : "none");
        });
        QObject::connect(&device, &SystemDevice::uptime,
                         [this](const QString& text) { noted << "uptime" << text; });
        QObject::connect(&device, &SystemDevice::alertRaised,
                         [this](const QString& text) { alerts << text; });
        initialised = device.initialise();
        device.setRunning(initialised);
    }

    QStringList takeReading()
    {
        noted.clear();
        device.takeReading();
        return noted;
    }

    SystemDevice device;
    bool initialised = false;
    QStringList noted;
    QStringList alerts;
};

const QStringList kFirstReading{"memory", "75", "load", "0.5", "uptime", "1 d 02:03:04"};

} // namespace

class tst_SystemDevice : public QObject
{
    Q_OBJECT

private slots:
    void firstReadingLeavesOutWhatNeedsTwo();
    void emitsInOneOrder();
    void missingFileGivesOneAlertAndNan_data();
    void missingFileGivesOneAlertAndNan();
    void oddFileGivesOneAlert();
    void overlongFileIsRefused();
    void alertsAgainAfterItReadWell();
    void trafficIsNotComparedAcrossAFailure();
    void startedAgainItComparesWithNothingBefore();
    void firstComparisonComesPromptly();
    void staysSilentWhenNotRunning();
    void stopsBeforeTheShutdown();
    void takesNoReadingWhilePaused();
    void pauseDoesNotCountInTheNextLoad();
    void endOfNoPauseTakesNoReading();
    void endOfAPauseTakesNoReadingOfADeviceThatDoesNotRun();
    void pausedBeforeTheStartTakesTheFirstReadingOnly();
    void intervalHasAFloor();
    void intervalThatIsNoNumberIsAnError();
    void readsThisMachine();
    void declaresItsParameter();
};

void tst_SystemDevice::firstReadingLeavesOutWhatNeedsTwo()
{
    ProcFolder folder;
    Subject subject(folder.path());
    subject.device.postInitialisation();
    QCOMPARE(subject.noted, kFirstReading);
    QVERIFY(subject.alerts.isEmpty());
}

void tst_SystemDevice::emitsInOneOrder()
{
    ProcFolder folder;
    Subject subject(folder.path());
    subject.takeReading();
    folder.write("stat", "cpu 50 0 0 150\n");
    folder.writeTraffic(1001, 2000);
    QCOMPARE(subject.takeReading(),
             (QStringList{"cpu", "50", "memory", "75", "load", "0.5", "received", "some", "sent",
                          "none", "uptime", "1 d 02:03:04"}));
}

void tst_SystemDevice::missingFileGivesOneAlertAndNan_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("stat") << "stat" << QStringList{"cpu", "nan"};
    QTest::newRow("meminfo") << "meminfo" << QStringList{"memory", "nan"};
    QTest::newRow("loadavg") << "loadavg" << QStringList{"load", "nan"};
    QTest::newRow("traffic") << "net/dev" << QStringList{"received", "nan", "sent", "nan"};
    QTest::newRow("uptime") << "uptime" << QStringList{"uptime", "nan"};
}

void tst_SystemDevice::missingFileGivesOneAlertAndNan()
{
    QFETCH(QString, file);
    QFETCH(QStringList, expected);

    ProcFolder folder;
    folder.remove(file);
    Subject subject(folder.path());
    for (int reading = 0; reading < 3; ++reading) {
        const QStringList noted = subject.takeReading();
        for (int i = 0; i < expected.size(); i += 2) {
            const int at = noted.indexOf(expected[i]);
            QVERIFY(at >= 0);
            QCOMPARE(noted[at + 1], expected[i + 1]);
        }
        QCOMPARE(noted.count("nan"), expected.count("nan"));
    }
    QCOMPARE(subject.alerts,
             QStringList("Cannot read " + folder.path(file) + ": No such file or directory"));
}

void tst_SystemDevice::oddFileGivesOneAlert()
{
    ProcFolder folder;
    folder.write("meminfo", "MemTotal: lots\n");
    Subject subject(folder.path());
    subject.takeReading();
    QCOMPARE(subject.takeReading().mid(0, 2), (QStringList{"memory", "nan"}));
    QCOMPARE(subject.alerts, QStringList("Cannot read " + folder.path("meminfo") +
                                         ": its text is not what was expected"));
}

void tst_SystemDevice::overlongFileIsRefused()
{
    ProcFolder folder;
    Subject subject(folder.path());
    folder.write("loadavg", "0.5 " + QByteArray(1024 * 1024 - 4, ' '));
    QCOMPARE(subject.takeReading().mid(2, 2), (QStringList{"load", "0.5"}));
    folder.write("loadavg", "0.5 " + QByteArray(1024 * 1024 - 3, ' '));
    QCOMPARE(subject.takeReading().mid(2, 2), (QStringList{"load", "nan"}));
    QCOMPARE(subject.alerts,
             QStringList("Cannot read " + folder.path("loadavg") + ": longer than 1 MiB"));
}

void tst_SystemDevice::alertsAgainAfterItReadWell()
{
    ProcFolder folder;
    Subject subject(folder.path());
    for (int round = 1; round <= 2; ++round) {
        folder.write("stat", "");
        subject.takeReading();
        subject.takeReading();
        QCOMPARE(subject.alerts.size(), round);
        folder.write("stat", "cpu 0 0 0 100\n");
        QVERIFY(!subject.takeReading().contains("cpu"));
        folder.write("stat", "cpu 100 0 0 100\n");
        QCOMPARE(subject.takeReading().mid(0, 2), (QStringList{"cpu", "100"}));
    }
}

void tst_SystemDevice::trafficIsNotComparedAcrossAFailure()
{
    ProcFolder folder;
    Subject subject(folder.path());
    subject.takeReading();
    folder.remove("net/dev");
    QVERIFY(subject.takeReading().contains("received"));
    folder.writeTraffic(5000, 5000);
    QCOMPARE(subject.takeReading().filter(QRegularExpression("received|sent")), QStringList());
    folder.writeTraffic(6000, 5000);
    QCOMPARE(subject.takeReading().filter(QRegularExpression("received|sent|some|none")),
             (QStringList{"received", "some", "sent", "none"}));
}

void tst_SystemDevice::startedAgainItComparesWithNothingBefore()
{
    ProcFolder folder;
    folder.remove("loadavg");
    Subject subject(folder.path());
    subject.takeReading();
    subject.device.setPaused(true);
    QVERIFY(subject.device.initialise());
    folder.write("stat", "cpu 50 0 0 150\n");
    folder.writeTraffic(5000, 5000);
    subject.noted.clear();
    subject.device.postInitialisation();
    QCOMPARE(subject.noted, (QStringList{"memory", "75", "load", "nan", "uptime", "1 d 02:03:04"}));
    QCOMPARE(subject.alerts.size(), 2); // One for each start.
    folder.write("stat", "cpu 60 0 0 160\n");
    QTRY_VERIFY(subject.noted.contains("cpu")); // It is not paused any more.
}

void tst_SystemDevice::firstComparisonComesPromptly()
{
    ProcFolder folder;
    Subject subject(folder.path(), "100000");
    subject.device.postInitialisation();
    folder.write("stat", "cpu 50 0 0 100\n");
    QTRY_VERIFY_WITH_TIMEOUT(subject.noted.contains("cpu"), 5000);
    QTest::qWait(500);
    QCOMPARE(subject.noted.count("memory"), 2); // The third comes with the interval.
}

void tst_SystemDevice::staysSilentWhenNotRunning()
{
    ProcFolder folder;
    Subject subject(folder.path(), "50");
    subject.device.setRunning(false);
    subject.device.postInitialisation();
    QTest::qWait(120);
    QVERIFY(subject.noted.isEmpty());
}

void tst_SystemDevice::stopsBeforeTheShutdown()
{
    ProcFolder folder;
    Subject subject(folder.path(), "50");
    subject.device.postInitialisation();
    QTRY_VERIFY(subject.noted.count("memory") >= 3);
    subject.device.setRunning(false);
    subject.device.preShutdown();
    subject.noted.clear();
    QTest::qWait(120);
    QVERIFY(subject.noted.isEmpty());
}

void tst_SystemDevice::takesNoReadingWhilePaused()
{
    ProcFolder folder;
    Subject subject(folder.path(), "50");
    subject.device.postInitialisation();
    QTRY_VERIFY(subject.noted.count("memory") >= 2);
    subject.device.setPaused(true);
    subject.noted.clear();
    QTest::qWait(120);
    QVERIFY(subject.noted.isEmpty());
    subject.device.setPaused(false);
    QCOMPARE(subject.noted, kFirstReading);
    QTRY_VERIFY(subject.noted.count("memory") >= 3);
}

void tst_SystemDevice::pauseDoesNotCountInTheNextLoad()
{
    ProcFolder folder;
    Subject subject(folder.path(), "100000");
    subject.device.postInitialisation();
    subject.device.setPaused(true);
    folder.write("stat", "cpu 900 0 0 100\n");
    subject.noted.clear();
    subject.device.setPaused(false);
    QCOMPARE(subject.noted, kFirstReading); // No load: the pause would be in it.
    folder.write("stat", "cpu 910 0 0 190\n");
    const QStringList noted = subject.takeReading();
    QCOMPARE(noted.mid(0, 2), (QStringList{"cpu", "10"}));
}

void tst_SystemDevice::endOfNoPauseTakesNoReading()
{
    ProcFolder folder;
    Subject subject(folder.path());
    subject.device.postInitialisation();
    subject.noted.clear();
    subject.device.setPaused(false);
    QCOMPARE(subject.noted, QStringList());
}

void tst_SystemDevice::endOfAPauseTakesNoReadingOfADeviceThatDoesNotRun()
{
    ProcFolder folder;
    Subject subject(folder.path());
    subject.device.setRunning(false);
    subject.device.setPaused(true);
    subject.device.setPaused(false);
    QCOMPARE(subject.noted, QStringList());
}

void tst_SystemDevice::pausedBeforeTheStartTakesTheFirstReadingOnly()
{
    ProcFolder folder;
    Subject subject(folder.path(), "50");
    subject.device.setPaused(true);
    subject.device.postInitialisation();
    QTest::qWait(300);
    QCOMPARE(subject.noted, kFirstReading);
}

void tst_SystemDevice::intervalHasAFloor()
{
    ProcFolder folder;
    Subject subject(folder.path(), "-5");
    QVERIFY(subject.initialised);
    QElapsedTimer clock;
    clock.start();
    subject.device.postInitialisation();
    QTRY_VERIFY(subject.noted.count("memory") >= 4);
    QVERIFY2(clock.elapsed() >= 140, qPrintable(QString::number(clock.elapsed())));
}

void tst_SystemDevice::intervalThatIsNoNumberIsAnError()
{
    ProcFolder folder;
    QTest::ignoreMessage(QtWarningMsg, "machine: parameter \"interval\": \"soon\" is not a number");
    Subject subject(folder.path(), "soon");
    QVERIFY(!subject.initialised);
}

void tst_SystemDevice::readsThisMachine()
{
    SystemDevice device;
    QList<double> loads;
    QString uptime;
    QObject::connect(&device, &SystemDevice::cpu, [&](double percent) { loads << percent; });
    QObject::connect(&device, &SystemDevice::uptime, [&](const QString& text) { uptime = text; });
    QSignalSpy alerts(&device, &SystemDevice::alertRaised);
    device.setParam("interval", "50");
    QVERIFY(device.initialise());
    device.setRunning(true);
    device.postInitialisation();
    QTRY_VERIFY(loads.size() >= 2);
    QVERIFY(loads.first() >= 0.0 && loads.first() <= 100.0);
    QVERIFY(QRegularExpression("^\\d+ d \\d\\d:\\d\\d:\\d\\d$").match(uptime).hasMatch());
    QCOMPARE(alerts.count(), 0);
    device.setRunning(false);
    device.preShutdown();
    device.deinitialise();
}

void tst_SystemDevice::declaresItsParameter()
{
    SystemDevice device;
    QCOMPARE(device.paramNames(), QStringList("interval"));
    QCOMPARE(QString(device.getParam("interval")), "1000");
    QCOMPARE(device.getParam("interval").unit(), "ms");
    QVERIFY(!device.getParam("interval").description().isEmpty());
    QCOMPARE(device.grabMethods({}, QMetaMethod::Signal, true),
             (QStringList{"cpu(double)", "memory(double)", "load(double)", "received(double)",
                          "sent(double)", "uptime(QString)"}));
    QCOMPARE(device.grabMethods({}, QMetaMethod::Slot, true), QStringList{"setPaused(bool)"});
}

NORVO_GUILESS_TEST(tst_SystemDevice)
#include "tst_SystemDevice.moc"
