// SPDX-License-Identifier: GPL-3.0-or-later

#include "ProcessSubject.h"
#include "TestMain.h"

#include <QtTest>

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

class tst_ProcessDevice : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void linesLeaveAsTextAndAsNumber();
    void lastLineNeedsNoEnd();
    void exitStatus_data();
    void exitStatus();
    void noShellIsInvolved();
    void hasThePanelsEnvironmentAndFolder();
    void standardSignalsAreAsUsual();
    void signalThatThePanelIgnoresStaysIgnored();
    void standardErrorGoesToTheLog();
    void standardErrorCommandsNoTerminal();
    void numberMayHaveAllItsDigits();
    void longerTextIsNoNumber();
    void longestLineIsWhole();
    void longerLineIsCutAndReported();
    void mayCloseItsOutput();
    void whatItLeavesBehindEndsWithIt();
    void restarts_data();
    void restarts();
    void badCommandIsAnError_data();
    void badCommandIsAnError();
    void programThatDoesNotRunGivesAnAlert();
    void programWithoutDescriptorsGivesAnAlert_data();
    void programWithoutDescriptorsGivesAnAlert();
    void startsOnlyWhenRunning();
    void declaresItsParameters();
};

/// A shell ignores SIGINT for what it runs in the background, nohup(1) SIGHUP, and what is ignored
/// here is ignored by the programs.
void tst_ProcessDevice::initTestCase()
{
    for (const int number : {SIGHUP, SIGINT, SIGQUIT}) {
        struct sigaction action = {};
        if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
            std::signal(number, SIG_DFL);
        }
    }
}

void tst_ProcessDevice::linesLeaveAsTextAndAsNumber()
{
    ProcessSubject child(R"(printf '1.5\nabc\n -7e3 \n0x10\n\n')");
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.notes,
             (QStringList{"up", "text 1.5", "number 1.5", "text abc", "text  -7e3 ", "number -7000",
                          "text 0x10", "text ", "down", "finished 0"}));
    QVERIFY(child.alerts.isEmpty());
}

void tst_ProcessDevice::lastLineNeedsNoEnd()
{
    ProcessSubject child(R"(printf 'a\r\nb')");
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.lines, (QStringList{"a", "b"}));
}

void tst_ProcessDevice::exitStatus_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("last");

    QTest::newRow("success") << "true"
                             << "finished 0";
    QTest::newRow("failure") << "sh -c 'exit 3'"
                             << "finished 3";
    QTest::newRow("killed") << "sh -c 'kill -9 $$'"
                            << "finished 137";
}

void tst_ProcessDevice::exitStatus()
{
    QFETCH(QString, command);

    ProcessSubject child(command);
    QTRY_VERIFY(child.hasFinished());
    QTEST(child.notes.last(), "last");
}

void tst_ProcessDevice::noShellIsInvolved()
{
    ProcessSubject child("echo $HOME '*' ; ls >x");
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.lines, QStringList{"$HOME * ; ls >x"});
}

void tst_ProcessDevice::hasThePanelsEnvironmentAndFolder()
{
    qputenv("NORVO_TEST_WORD", "here");
    ProcessSubject child("sh -c 'echo $NORVO_TEST_WORD; pwd'");
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.lines, (QStringList{"here", QDir::currentPath()}));
}

void tst_ProcessDevice::standardSignalsAreAsUsual()
{
    ProcessSubject child("grep -E 'SigIgn|SigBlk' /proc/self/status");
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.lines, (QStringList{"SigBlk:\t0000000000000000", "SigIgn:\t0000000000000000"}));
}

void tst_ProcessDevice::signalThatThePanelIgnoresStaysIgnored()
{
    const auto before = std::signal(SIGHUP, SIG_IGN); // As nohup does it.
    ProcessSubject child("sh -c 'kill -HUP $$; echo alive'");
    QTRY_VERIFY(child.hasFinished());
    std::signal(SIGHUP, before);
    QCOMPARE(child.lines, QStringList("alive"));
}

void tst_ProcessDevice::standardErrorGoesToTheLog()
{
    QTest::ignoreMessage(QtInfoMsg, "child: oops");
    QTest::ignoreMessage(QtInfoMsg, "child: again");
    ProcessSubject child("sh -c 'echo oops >&2; printf again >&2'");
    QTRY_VERIFY(child.hasFinished());
    QVERIFY(child.lines.isEmpty());
}

void tst_ProcessDevice::standardErrorCommandsNoTerminal()
{
    QTest::ignoreMessage(QtInfoMsg, "child: \\x1b]0;mine\\x07\tred \\x1b[31m\\x9b");
    ProcessSubject child(R"(sh -c 'printf "\033]0;mine\007\tred \033[31m\302\233\n" >&2')");
    QTRY_VERIFY(child.hasFinished());
}

void tst_ProcessDevice::numberMayHaveAllItsDigits()
{
    ProcessSubject child("echo " + QString(399, '0') + '7');
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.notes.value(2), QString("number 7"));
}

void tst_ProcessDevice::longerTextIsNoNumber()
{
    ProcessSubject child("echo " + QString(400, '0') + '7');
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.notes.size(), 4); // up, text, down, finished
    QCOMPARE(child.notes.value(2), QString("down"));
}

void tst_ProcessDevice::longestLineIsWhole()
{
    ProcessSubject child("sh -c 'head -c 1048576 /dev/zero | tr \"\\\\0\" x; echo; echo next'");
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.lines, (QStringList{QString(1048576, 'x'), "next"}));
    QVERIFY(child.alerts.isEmpty());
}

void tst_ProcessDevice::longerLineIsCutAndReported()
{
    ProcessSubject child("sh -c 'head -c 1048577 /dev/zero | tr \"\\\\0\" x; echo; echo next'");
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.lines, (QStringList{QString(1048576, 'x'), "next"}));
    QCOMPARE(child.alerts, QStringList{"lines of output cut at 1 MiB: 1"});
}

void tst_ProcessDevice::mayCloseItsOutput()
{
    ProcessSubject child("sh -c 'echo a; exec >&- 2>&-; sleep 0.2; exit 4'");
    QTRY_VERIFY(child.hasFinished());
    QCOMPARE(child.notes, (QStringList{"up", "text a", "down", "finished 4"}));

    // What stands behind the last line end comes as soon as no more can come.
    ProcessSubject open("sh -c 'printf \"a\\nb\"; exec >&- 2>&-; exec sleep 1000'");
    QTRY_COMPARE(open.notes, (QStringList{"up", "text a", "text b"}));
}

void tst_ProcessDevice::whatItLeavesBehindEndsWithIt()
{
    ProcessSubject child("sh -c 'sleep 1000 & echo $!'");
    QTRY_VERIFY(child.hasFinished());
    QTRY_VERIFY(!isAlive(child.lines.value(0)));
}

void tst_ProcessDevice::restarts_data()
{
    QTest::addColumn<QString>("restart");
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("again");

    QTest::newRow("never") << "never"
                           << "false" << false;
    QTest::newRow("unknownIsNever") << "Always"
                                    << "false" << false;
    QTest::newRow("onFailureAfterSuccess") << "on-failure"
                                           << "true" << false;
    QTest::newRow("onFailureAfterFailure") << "on-failure"
                                           << "false" << true;
    QTest::newRow("onFailureAfterSignal") << "on-failure"
                                          << "sh -c 'kill $$'" << true;
    QTest::newRow("alwaysAfterSuccess") << "always"
                                        << "true" << true;
}

void tst_ProcessDevice::restarts()
{
    QFETCH(QString, restart);
    QFETCH(QString, command);
    QFETCH(bool, again);

    ProcessSubject child(command, restart);
    QTRY_VERIFY(child.hasFinished());
    QElapsedTimer clock;
    clock.start();
    if (again) {
        QTRY_COMPARE(child.notes.count("up"), 2);
        QVERIFY2(clock.elapsed() >= 400, qPrintable(QString::number(clock.elapsed())));
    } else {
        QTest::qWait(900);
        QCOMPARE(child.notes.count("up"), 1);
    }
    child.stop();
}

void tst_ProcessDevice::badCommandIsAnError_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("expected");

    QTest::newRow("empty") << ""
                           << "it names no program";
    QTest::newRow("openQuote") << "echo 'a"
                               << "the quote at character 6 is not closed";
    QTest::newRow("missing") << "no-such-program -x"
                             << "there is no program \"no-such-program\"";
    QTest::newRow("missingPath") << "/no/such 1"
                                 << "there is no program \"/no/such\"";
    QTest::newRow("folder") << "/tmp"
                            << "there is no program \"/tmp\"";
    QTest::newRow("notExecutable") << "/etc/passwd"
                                   << "there is no program \"/etc/passwd\"";
}

void tst_ProcessDevice::badCommandIsAnError()
{
    QFETCH(QString, command);
    QFETCH(QString, expected);

    QTest::ignoreMessage(QtWarningMsg, qPrintable("child: parameter \"command\": " + expected));
    ProcessSubject child(command);
    QVERIFY(!child.initialised);
}

void tst_ProcessDevice::programThatDoesNotRunGivesAnAlert()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("text");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("neither a program nor a script\n");
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));

    ProcessSubject child(path, "on-failure");
    QVERIFY(child.initialised);
    const QString alert = QString("cannot start \"%1\": Exec format error").arg(path);
    QTRY_COMPARE(child.alerts, (QStringList{alert, alert})); // Tried again.
    QVERIFY(child.notes.isEmpty());
    child.stop();
}

void tst_ProcessDevice::programWithoutDescriptorsGivesAnAlert_data()
{
    QTest::addColumn<int>("descriptors");

    QTest::newRow("for two pipes of three") << 5;
    QTest::newRow("for the pipes only") << 7;
}

void tst_ProcessDevice::programWithoutDescriptorsGivesAnAlert()
{
    QFETCH(int, descriptors);

    const int free = ::dup(STDIN_FILENO);
    ::close(free);
    rlimit before = {};
    QCOMPARE(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit scarce{rlim_t(free + descriptors), before.rlim_max};
    QCOMPARE(::setrlimit(RLIMIT_NOFILE, &scarce), 0);
    ProcessSubject child("true");
    QCoreApplication::processEvents();
    QCOMPARE(::setrlimit(RLIMIT_NOFILE, &before), 0);
    QVERIFY(child.initialised);
    QTRY_COMPARE(child.alerts.size(), 1);
    QVERIFY2(child.alerts[0].endsWith("/true\": Too many open files"), qPrintable(child.alerts[0]));
    QVERIFY(child.notes.isEmpty());
}

void tst_ProcessDevice::startsOnlyWhenRunning()
{
    ProcessDevice device;
    QSignalSpy running(&device, &ProcessDevice::running);
    device.setParam("command", "true");
    QVERIFY(device.initialise());
    device.postInitialisation();
    QTest::qWait(100);
    QCOMPARE(running.count(), 0);
}

void tst_ProcessDevice::declaresItsParameters()
{
    ProcessDevice device;
    QCOMPARE(device.paramNames(), (QStringList{"command", "restart"}));
    QCOMPARE(device.getParam("restart").options(), (QStringList{"never", "on-failure", "always"}));
    QCOMPARE(device.grabMethods({}, QMetaMethod::Signal, true),
             (QStringList{"connected(bool)", "fault(QString)", "output(QString)", "output(double)",
                          "finished(int)", "running(bool)"}));
    QCOMPARE(device.grabMethods({}, QMetaMethod::Slot, true), QStringList{"input(QString)"});
}

NORVO_GUILESS_TEST(tst_ProcessDevice)
#include "tst_ProcessDevice.moc"
