// SPDX-License-Identifier: GPL-3.0-or-later

#include "Effort.h"
#include "ProcessSubject.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>
#include <vector>

#include <sys/wait.h>

namespace {

/// Milliseconds that the function takes.
template <class Function>
norvo::OwnTimer::Elapsed timed(Function function)
{
    const norvo::OwnTimer timer;
    function();
    return timer.elapsed();
}

const QString kDeaf = "sh -c 'trap \"\" TERM; echo $$; while :; do sleep 0.05; done'";

} // namespace

/// How a program ends with its device, its panel or its group.
class tst_ProcessDeviceEnd : public QObject
{
    Q_OBJECT

private slots:
    void programIsAskedToEnd();
    void programMayTalkWhileItEnds();
    void programThatIgnoresTheRequestIsKilled();
    void stoppedProgramEndsToo();
    void programMayEndWithItsInput();
    void wholeGroupEnds();
    void groupMemberThatIgnoresTheRequestIsKilled();
    void processThatLeftTheGroupEndsToo();
    void processLeftBehindOutsideTheGroupEndsToo();
    void severalEndAtTheSameTime();
    void endsWithoutAStop();
    void endsWithoutTheFirstStepOfTheStop();
    void nothingIsEmittedByTheStop();
    void noRestartAfterTheStop();
    void noRestartAfterAStopDuringTheLastLines();
    void canBeStartedAgain();
    void startedAgainItsFirstRestartComesSoon();
    void stopBeforeTheProgramRuns();
    void receiverMayStopTheDevice();
    void receiverOfTheLastAlertMayStopTheDevice();
    void runsLeaveNothingBehind();
    void killedPanelTakesItsProgramsAlong_data();
    void killedPanelTakesItsProgramsAlong();
};

void tst_ProcessDeviceEnd::programIsAskedToEnd()
{
    QTemporaryDir folder;
    const QString mark = folder.filePath("mark");
    ProcessSubject child(QString("sh -c 'trap \"echo bye > %1; exit\" TERM; echo up; "
                                 "while :; do sleep 0.01; done'")
                             .arg(mark));
    QTRY_COMPARE(child.lines, QStringList{"up"});
    QVERIFY(timed([&] { child.stop(); }).ownMs < 400);
    QVERIFY(QFile::exists(mark));
}

void tst_ProcessDeviceEnd::programMayTalkWhileItEnds()
{
    QTemporaryDir folder;
    const QString mark = folder.filePath("mark");
    ProcessSubject child(QString("sh -c 'trap \"seq 40000; echo bye > %1; exit\" TERM; echo up; "
                                 "while :; do sleep 0.01; done'")
                             .arg(mark));
    QTRY_COMPARE(child.lines, QStringList{"up"});
    child.stop();
    QVERIFY(QFile::exists(mark));
}

void tst_ProcessDeviceEnd::programThatIgnoresTheRequestIsKilled()
{
    ProcessSubject child(kDeaf);
    QTRY_COMPARE(child.lines.size(), 1);
    QVERIFY(isAlive(child.lines[0]));
    const auto taken = timed([&] { child.stop(); });
    QVERIFY2(taken.clockMs >= 490 && taken.ownMs < 900, qPrintable(QString::number(taken.clockMs)));
    QVERIFY(!isAlive(child.lines[0]));
}

void tst_ProcessDeviceEnd::stoppedProgramEndsToo()
{
    ProcessSubject child("sh -c 'echo $$; kill -STOP $$'");
    QTRY_COMPARE(child.lines.size(), 1);
    QVERIFY(timed([&] { child.stop(); }).ownMs < 400);
    QVERIFY(!isAlive(child.lines[0]));
}

void tst_ProcessDeviceEnd::programMayEndWithItsInput()
{
    const QTemporaryDir folder;
    const QString mark = folder.filePath("mark");
    ProcessSubject child("sh -c 'trap \"\" TERM; echo ready; cat; touch " + mark + "'");
    QTRY_COMPARE(child.lines, QStringList("ready"));
    child.stop();
    QVERIFY(QFile::exists(mark));
}

void tst_ProcessDeviceEnd::wholeGroupEnds()
{
    ProcessSubject child("sh -c 'echo $$; sleep 1000 & echo $!; wait'");
    QTRY_COMPARE(child.lines.size(), 2);
    QVERIFY(timed([&] { child.stop(); }).ownMs < 400);
    QVERIFY(!isAlive(child.lines[0]));
    QTRY_VERIFY(!isAlive(child.lines[1]));
}

void tst_ProcessDeviceEnd::groupMemberThatIgnoresTheRequestIsKilled()
{
    ProcessSubject child(
        "sh -c '(trap \"\" TERM; exec sleep 1000) & echo $!; sleep 0.1; echo; wait'");
    QTRY_COMPARE(child.lines.size(), 2);
    const auto taken = timed([&] { child.stop(); });
    QVERIFY2(taken.clockMs >= 490 && taken.ownMs < 900, qPrintable(QString::number(taken.clockMs)));
    QTRY_VERIFY(!isAlive(child.lines[0]));
}

void tst_ProcessDeviceEnd::processThatLeftTheGroupEndsToo()
{
    ProcessSubject child(
        "sh -c 'setsid sh -c \"echo \\$\\$; exec sleep 1000\" & wait; sleep 1000'");
    QTRY_COMPARE(child.lines.size(), 1);
    QVERIFY(isAlive(child.lines[0]));
    child.stop();
    QTRY_VERIFY(!isAlive(child.lines[0]));
}

void tst_ProcessDeviceEnd::processLeftBehindOutsideTheGroupEndsToo()
{
    ProcessSubject child("sh -c 'setsid sh -c \"echo \\$\\$; exec sleep 1000\" & sleep 3'");
    QTRY_VERIFY_WITH_TIMEOUT(child.hasFinished(), 60000);
    QCOMPARE(child.lines.size(), 1);
    QTRY_VERIFY(!isAlive(child.lines[0]));
}

void tst_ProcessDeviceEnd::severalEndAtTheSameTime()
{
    std::vector<std::unique_ptr<ProcessSubject>> children;
    for (int i = 0; i < 4; ++i) {
        children.push_back(std::make_unique<ProcessSubject>(kDeaf));
        QTRY_COMPARE(children.back()->lines.size(), 1);
    }
    const auto taken = timed([&] {
        for (const auto& child : children) {
            child->device.setRunning(false);
            child->device.preShutdown();
        }
        for (const auto& child : children) {
            child->device.deinitialise();
        }
    });
    QVERIFY2(taken.ownMs < 1000, qPrintable(QString::number(taken.ownMs)));
    for (const auto& child : children) {
        QVERIFY(!isAlive(child->lines[0]));
    }
}

void tst_ProcessDeviceEnd::endsWithoutAStop()
{
    QString pid;
    {
        ProcessSubject child(kDeaf);
        QTRY_COMPARE(child.lines.size(), 1);
        pid = child.lines[0];
    }
    QVERIFY(!isAlive(pid));
}

void tst_ProcessDeviceEnd::endsWithoutTheFirstStepOfTheStop()
{
    ProcessSubject child("sh -c 'echo $$; exec sleep 1000'");
    QTRY_COMPARE(child.lines.size(), 1);
    QVERIFY(timed([&] { child.device.deinitialise(); }).ownMs < 400);
    QVERIFY(!isAlive(child.lines[0]));
}

void tst_ProcessDeviceEnd::nothingIsEmittedByTheStop()
{
    ProcessSubject child(
        "sh -c 'trap \"echo bye; exit\" TERM; echo up; while :; do sleep 0.01; done'");
    QTRY_COMPARE(child.notes, (QStringList{"up", "text up"}));
    child.device.setRunning(false);
    child.device.preShutdown();
    QTest::qWait(100);
    child.device.deinitialise();
    QTest::qWait(50);
    QCOMPARE(child.notes, (QStringList{"up", "text up"}));
}

void tst_ProcessDeviceEnd::noRestartAfterTheStop()
{
    ProcessSubject child("true", "always");
    QTRY_VERIFY(child.hasFinished());
    child.stop();
    QTest::qWait(800);
    QCOMPARE(child.notes.count("up"), 1);
}

void tst_ProcessDeviceEnd::noRestartAfterAStopDuringTheLastLines()
{
    ProcessSubject child("seq 2000", "always");
    QObject::connect(&child.device, qOverload<QString>(&ProcessDevice::output),
                     [] { QTest::qSleep(1); });
    QTRY_VERIFY(!child.lines.isEmpty());
    QTest::qWait(200); // It has ended long since.
    child.device.setRunning(false);
    child.device.preShutdown();
    QTest::qWait(1500);
    child.device.deinitialise();
    QTest::qWait(800);
    QCOMPARE(child.notes.count("up"), 1);
    QVERIFY(!child.notes.contains("down")); // It was stopped with lines to come.
}

void tst_ProcessDeviceEnd::canBeStartedAgain()
{
    ProcessSubject child("sh -c 'echo up; exec sleep 1000'");
    QTRY_COMPARE(child.lines.size(), 1);
    child.stop();
    QVERIFY(child.device.initialise());
    child.device.setRunning(true);
    child.device.postInitialisation();
    QTRY_COMPARE(child.lines.size(), 2);
    child.stop();
}

void tst_ProcessDeviceEnd::startedAgainItsFirstRestartComesSoon()
{
    ProcessSubject child("false", "always");
    QTRY_COMPARE(child.notes.count("up"), 3); // The next would come after two seconds.
    QTRY_VERIFY(child.hasFinished());
    child.stop();
    child.notes.clear();
    QVERIFY(child.device.initialise());
    child.device.setRunning(true);
    child.device.postInitialisation();
    QTRY_VERIFY(child.hasFinished());
    const norvo::OwnTimer timer;
    QTRY_COMPARE(child.notes.count("up"), 2);
    const auto taken = timer.elapsed();
    QVERIFY2(taken.ownMs < 1800, qPrintable(QString::number(taken.clockMs)));
    child.stop();
}

void tst_ProcessDeviceEnd::stopBeforeTheProgramRuns()
{
    ProcessSubject child("sleep 1000");
    QVERIFY(timed([&] { child.stop(); }).ownMs < 400);
    QTest::qWait(50);
    QVERIFY(child.notes.isEmpty());
}

void tst_ProcessDeviceEnd::receiverMayStopTheDevice()
{
    for (const char* last : {"up", "text 5", "number 5", "down", "finished 0"}) {
        ProcessSubject child("seq 1 10");
        const auto stopWhenNoted = [&] {
            if (child.notes.value(child.notes.size() - 1) == last && child.device.isRunning()) {
                child.stop();
            }
        };
        QObject::connect(&child.device, qOverload<QString>(&ProcessDevice::output), stopWhenNoted);
        QObject::connect(&child.device, qOverload<double>(&ProcessDevice::output), stopWhenNoted);
        QObject::connect(&child.device, &ProcessDevice::running, stopWhenNoted);
        QObject::connect(&child.device, &ProcessDevice::finished, stopWhenNoted);
        QTRY_VERIFY(!child.device.isRunning());
        QTest::qWait(20);
        QCOMPARE(child.notes.last(), QString(last));
    }
}

void tst_ProcessDeviceEnd::receiverOfTheLastAlertMayStopTheDevice()
{
    ProcessSubject child("sleep 0.1", "always");
    child.device.input("two\nlines");
    QObject::connect(&child.device, &ProcessDevice::alertRaised, [&] { child.stop(); });
    QTRY_VERIFY(!child.device.isRunning());
    QTest::qWait(800); // It would have been started again.
    QCOMPARE(child.notes, QStringList{"up"});
    QCOMPARE(child.alerts.size(), 1);
}

void tst_ProcessDeviceEnd::runsLeaveNothingBehind()
{
    const auto openFiles = [] { return QDir("/proc/self/fd").entryList(QDir::Files).size(); };
    const int before = openFiles();
    for (int i = 0; i < 5; ++i) {
        ProcessSubject child("true");
        QTRY_VERIFY(child.hasFinished());
        child.stop();
        ProcessSubject stopped("sleep 1000");
        QTRY_COMPARE(stopped.notes, QStringList{"up"});
        stopped.stop();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(openFiles(), before);
    QVERIFY(::waitpid(-1, nullptr, WNOHANG) < 0); // No child, running or waiting to be reaped.
}

void tst_ProcessDeviceEnd::killedPanelTakesItsProgramsAlong_data()
{
    QTest::addColumn<QString>("command");

    QTest::newRow("in the group")
        << "sh -c 'trap \"\" TERM HUP; echo $$; sleep 1000 & echo $!; wait; sleep 1000'";
    QTest::newRow("in a session of its own")
        << "sh -c 'echo $$; setsid sh -c \"echo \\$\\$; exec sleep 1000\" & wait; sleep 1000'";
}

void tst_ProcessDeviceEnd::killedPanelTakesItsProgramsAlong()
{
    QFETCH(QString, command);

    QProcess panel;
    panel.start(NORVO_BUILD_DIR "/tests/process_parent", {command});
    QByteArray pids;
    QTRY_VERIFY((pids += panel.readAllStandardOutput()).count('\n') == 2);
    const QStringList alive = QString::fromLatin1(pids).split('\n', Qt::SkipEmptyParts);
    QVERIFY(isAlive(alive[0]) && isAlive(alive[1]));
    panel.kill();
    QVERIFY(panel.waitForFinished());
    QTRY_VERIFY(!isAlive(alive[0]));
    QTRY_VERIFY(!isAlive(alive[1]));
}

NORVO_GUILESS_TEST(tst_ProcessDeviceEnd)
#include "tst_ProcessDeviceEnd.moc"
