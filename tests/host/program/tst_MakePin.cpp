// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "host/services/access/PinHash.h"
#include "host/services/access/TestPins.h"
#include "TestMain.h"

using norvo::PinHash::fits;
using norvo::PinHash::isAvailable;

/// The program asked for the hash of a PIN, as a script and as a person do it.
class tst_MakePin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!isAvailable()) {
            QSKIP("built without libsodium");
        }
    }
    void hashOfAPipedPinIsPrinted();
    void hashStandsInAPanelFile();
    void badPinIsRefused_data();
    void badPinIsRefused();
    void terminalIsAskedTwiceAndShowsNothing();
    void twoDifferentPinsAreRefused();
    void programWithoutTheHashSaysWhatToInstall_data();
    void programWithoutTheHashSaysWhatToInstall();

private:
    /// The exit status; what it printed is then in `output`.
    static int hash(const QByteArray& input, QByteArray& output)
    {
        PanelProcess program({"--make-pin"});
        program.takeDisplayAway();
        program.start();
        program.write(input);
        program.closeWriteChannel();
        const int status = program.waitForEnd();
        output = program.readAllStandardOutput();
        return status;
    }

    /// Types the lines on a terminal of its own; returns all that was seen there, and at its end
    /// whether the terminal still shows what is typed.
    static QByteArray onTerminal(const QStringList& lines)
    {
        QProcess python;
        python.start("/usr/bin/python3",
                     QStringList{"-c",
                                 "import os, pty, sys, termios\n"
                                 "pid, terminal = pty.fork()\n"
                                 "if pid == 0:\n"
                                 "    os.execv(sys.argv[1], [sys.argv[1], '--make-pin'])\n"
                                 "seen = b''\n"
                                 "for prompt, line in zip([b'shown:', b'again:'], sys.argv[2:]):\n"
                                 "    while prompt not in seen:\n"
                                 "        seen += os.read(terminal, 1000)\n"
                                 "    os.write(terminal, line.encode() + b'\\n')\n"
                                 "try:\n"
                                 "    while True:\n"
                                 "        seen += os.read(terminal, 1000)\n"
                                 "except OSError:\n"
                                 "    pass\n"
                                 "shows = termios.tcgetattr(terminal)[3] & termios.ECHO\n"
                                 "seen += b'shows' if shows else b'hides'\n"
                                 "sys.stdout.buffer.write(seen)\n",
                                 NORVO_BUILD_DIR "/bin/norvo-panel"} +
                         lines);
        python.waitForFinished(PanelProcess::kPatience);
        return python.readAllStandardOutput();
    }
};

void tst_MakePin::hashOfAPipedPinIsPrinted()
{
    QByteArray output;
    QCOMPARE(hash("4711\n", output), 0);
    QVERIFY(output.endsWith('\n'));
    QVERIFY(fits("4711", output.trimmed()));
    QVERIFY(!fits("4712", output.trimmed()));
    QByteArray second;
    QCOMPARE(hash("4711", second), 0);
    QVERIFY(second != output);
}

void tst_MakePin::hashStandsInAPanelFile()
{
    QByteArray output;
    QCOMPARE(hash("4711\n", output), 0);
    const QTemporaryDir folder;
    QFile file(folder.filePath("panel.yaml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("access: {roles: {operate: \"" + output.trimmed() + "\"}}\n" +
               "devices: {start: {device: button, access: operate, confirm: yes}}\n");
    file.close();
    PanelProcess check({"--check", file.fileName()});
    QCOMPARE(check.runToEnd(), 0);
    QVERIFY(check.readAllStandardOutput().endsWith("no errors\n"));
}

void tst_MakePin::badPinIsRefused_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("too short") << QByteArray("123\n");
    QTest::newRow("too long") << QByteArray(33, '1');
    QTest::newRow("letters") << QByteArray("12a4\n");
    QTest::newRow("other digits") << QByteArray("\xd9\xa1\xd9\xa2\xd9\xa3\xd9\xa4\n");
}

void tst_MakePin::badPinIsRefused()
{
    QFETCH(QByteArray, input);
    QByteArray output;
    QCOMPARE(hash(input, output), 1);
    QCOMPARE(output, QByteArray());
}

void tst_MakePin::terminalIsAskedTwiceAndShowsNothing()
{
    const QByteArray seen = onTerminal({"471155", "471155"});
    QVERIFY2(seen.contains("$argon2id$"), seen);
    QVERIFY2(!seen.contains("471155"), seen);
    QVERIFY2(seen.contains("again:"), seen);
    QVERIFY2(seen.endsWith("shows"), seen);
}

void tst_MakePin::twoDifferentPinsAreRefused()
{
    const QByteArray seen = onTerminal({"471155", "471156"});
    QVERIFY2(seen.contains("two different PINs"), seen);
    QVERIFY2(!seen.contains("$argon2id$"), seen);
}

void tst_MakePin::programWithoutTheHashSaysWhatToInstall_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("place");
    QTest::newRow("PIN") << QStringList{"--make-pin"} << "norvo-panel: ";
    QTest::newRow("check") << QStringList{"--check", "panel.yaml"} << "panel.yaml:1:1: error: ";
    QTest::newRow("picture") << QStringList{"--no-state", "--screenshot", "p.png", "panel.yaml"}
                             << "panel.yaml:1:1: error: ";
}

void tst_MakePin::programWithoutTheHashSaysWhatToInstall()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, place);
    const PanelFolder folder("access: {roles: {operate: \"" + pins::kOperateHash.toUtf8() +
                             "\"}}\ndevices: {a: {device: button}}\n");
    PanelProcess program(arguments + QStringList{"--plugins", NORVO_BUILD_DIR "/plugins"},
                         fixture("panel_without_pins"));
    program.setWorkingDirectory(folder.path());
    QCOMPARE(program.runToEnd(), 1);
    const QStringList lines = program.outputLines() + program.errorLines();
    QVERIFY2(lines.contains(place + "this program was built without libsodium and can check no "
                                    "PIN; install it (Debian: libsodium-dev) and build the "
                                    "program again"),
             qPrintable(lines.join('\n')));
}

NORVO_TEST(tst_MakePin)
#include "tst_MakePin.moc"
