// SPDX-License-Identifier: GPL-3.0-or-later

#include "CountingFolder.h"
#include "Fifo.h"
#include "TestMain.h"

#include <QtTest>

/// The program from outside: readers of its messages that are slow, stall, or go away.
class tst_StandardStreams : public QObject
{
    Q_OBJECT

private slots:
    void panelOutlivesTheReaderOfItsMessages();
    void panelStartsWithStandardErrorClosed();
    void standardInputThatIsClosedIsEmpty();
    void stalledReaderStopsNeitherThePanelNorItsEnd();
    void lostMessagesAreCounted();
    void lastMessagesAreWrittenBeforeTheEnd();
    void outputOfTheCheckIsCompleteForASlowReader();
    void checkOutlivesTheReaderOfItsOutput();
    void messageCannotSteerATerminal();
};

namespace {

/// A panel that writes messages without end.
class TalkingFolder : public CountingFolder
{
public:
    explicit TalkingFolder(const QByteArray& params)
    {
        add("  talker: {device: talker, params: {level: info, " + params + "}}\n");
    }
};

const QByteArray kFlood = "count: 50, text: '%1 " + QByteArray(90, 'x') + "'";

void waitForMoreTicks(const CountingFolder& folder)
{
    const int before = folder.counted();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > before + 20, PanelProcess::kPatience);
}

/// Many lines of output: a panel file with an error on each of them.
QByteArray panelWithErrors(int count)
{
    QByteArray panel = "devices:\n";
    for (int i = 0; i < count; ++i) {
        panel += "  d" + QByteArray::number(i) + ": {device: nonesuch}\n";
    }
    return panel;
}

} // namespace

void tst_StandardStreams::panelOutlivesTheReaderOfItsMessages()
{
    const TalkingFolder folder(kFlood);
    Fifo errors;
    PanelProcess panel(probes({folder.panel()}));
    panel.setStandardErrorFile(errors.path());
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 0, PanelProcess::kPatience);
    errors.closeReader();
    waitForMoreTicks(folder);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(folder.saved(), folder.counted());
}

/// A file opened later would else take the place of standard error, and the messages go there.
void tst_StandardStreams::panelStartsWithStandardErrorClosed()
{
    const TalkingFolder folder(kFlood);
    PanelProcess panel({"-c", "exec \"$0\" \"$@\" 0<&- 1>&- 2>&-",
                        NORVO_BUILD_DIR "/bin/norvo-panel", "--plugins", fixture("probes"),
                        folder.panel()},
                       "/bin/sh");
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 50, PanelProcess::kPatience);
    for (const int fd : {0, 1, 2}) {
        QCOMPARE(QFile::symLinkTarget(QString("/proc/%1/fd/%2").arg(panel.processId()).arg(fd)),
                 QString("/dev/null"));
    }
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(folder.saved(), folder.counted());
}

void tst_StandardStreams::standardInputThatIsClosedIsEmpty()
{
    PanelProcess check({"-c", "exec " NORVO_BUILD_DIR "/bin/norvo-panel --check - <&-"}, "/bin/sh");
    QCOMPARE(check.runToEnd(), 1);
    QVERIFY(check.outputLines().value(0).startsWith("<stdin>:1:1: error: the file is empty"));
}

void tst_StandardStreams::stalledReaderStopsNeitherThePanelNorItsEnd()
{
    const TalkingFolder folder(kFlood);
    Fifo errors;
    PanelProcess panel(probes({folder.panel()}));
    panel.setStandardErrorFile(errors.path());
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 200, PanelProcess::kPatience); // Over 1 MB
    waitForMoreTicks(folder);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(folder.saved(), folder.counted());
}

void tst_StandardStreams::lostMessagesAreCounted()
{
    constexpr int kMessages = 100000;
    const TalkingFolder folder("count: 5000, most: 100000, text: '%1 " + QByteArray(90, 'x') + "'");
    Fifo errors;
    PanelProcess panel(probes({folder.panel()}));
    panel.setStandardErrorFile(errors.path());
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 200, PanelProcess::kPatience);
    QByteArray text = errors.readToEnd();
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    text += errors.readToEnd();

    const QRegularExpression note("^norvo-panel: (\\d+) messages lost, because standard error was "
                                  "not read$");
    int read = 0;
    int lost = 0;
    for (const QString& line : QString::fromUtf8(text).split('\n', Qt::SkipEmptyParts)) {
        const auto match = note.match(line);
        lost += match.captured(1).toInt();
        if (!match.hasMatch()) {
            ++read;
            QCOMPARE(line, QString("%1 ").arg(read + lost) + QString(90, 'x'));
        }
    }
    QVERIFY(lost > 0);
    QCOMPARE(read + lost, kMessages);
}

void tst_StandardStreams::lastMessagesAreWrittenBeforeTheEnd()
{
    const TalkingFolder folder("count: 1000, most: 1000");
    Fifo errors;
    PanelProcess panel(probes({folder.panel()}));
    panel.setStandardErrorFile(errors.path());
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 20, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QByteArray text;
    while (panel.state() != QProcess::NotRunning) {
        text += errors.read(500);
        QTest::qWait(10);
    }
    QCOMPARE(panel.waitForEnd(), 0);
    text += errors.readToEnd();
    QVERIFY2(text.endsWith("message 1000\n"), text.right(100));
}

void tst_StandardStreams::outputOfTheCheckIsCompleteForASlowReader()
{
    constexpr int kErrors = 150;
    const PanelFolder folder(panelWithErrors(kErrors));
    Fifo output;
    PanelProcess check(probes({"--check", folder.panel()}));
    check.setStandardOutputFile(output.path());
    check.start();
    QByteArray text;
    while (!text.endsWith(" errors\n")) {
        const QByteArray part = output.read(1000);
        QVERIFY2(!part.isEmpty() || check.state() != QProcess::NotRunning, text.right(100));
        text += part;
        QTest::qWait(20);
    }
    QCOMPARE(check.waitForEnd(), 1);
    QCOMPARE(text.count('\n'), kErrors + 1);
    QVERIFY(text.endsWith(": 150 errors\n"));
}

void tst_StandardStreams::checkOutlivesTheReaderOfItsOutput()
{
    const PanelFolder folder(panelWithErrors(150));
    Fifo output;
    PanelProcess check(probes({"--check", folder.panel()}));
    check.setStandardOutputFile(output.path());
    check.start();
    QVERIFY(check.waitForStarted());
    QVERIFY(!output.read(1).isEmpty() || !output.read(1).isEmpty());
    output.closeReader();
    QCOMPARE(check.waitForEnd(), 1);
}

void tst_StandardStreams::messageCannotSteerATerminal()
{
    const TalkingFolder folder("most: 1, text: \"a\\e[2Jb\\u009bc\\rd\"");
    PanelProcess panel(probes({folder.panel()}));
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 5, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(panel.errorLines(), QStringList("a\\u001b[2Jb\\u009bc\\u000dd"));
}

NORVO_GUILESS_TEST(tst_StandardStreams)
#include "tst_StandardStreams.moc"
