// SPDX-License-Identifier: GPL-3.0-or-later

#include "CountingFolder.h"
#include "Effort.h"
#include "TestMain.h"

#include <QTcpServer>
#include <QtTest>

#include <limits>

/// The program from outside: what ends it, and how.
class tst_NorvoPanelSignals : public QObject
{
    Q_OBJECT

private slots:
    void signalStopsWithTheStateSaved_data();
    void signalStopsWithTheStateSaved();
    void hangUpThatWasIgnoredStaysIgnored();
    void signalDuringTheStartStopsThePanel_data();
    void signalDuringTheStartStopsThePanel();
    void secondSignalEndsAPanelThatHangs_data();
    void secondSignalEndsAPanelThatHangs();
    void doubledSignalEndsAPanelThatHangs();
    void closedWindowStopsWithTheStateSaved();
};

void tst_NorvoPanelSignals::signalStopsWithTheStateSaved_data()
{
    QTest::addColumn<QVector<int>>("signalNumbers");
    QTest::newRow("SIGTERM") << QVector<int>{SIGTERM};
    QTest::newRow("SIGINT") << QVector<int>{SIGINT};
    QTest::newRow("SIGHUP") << QVector<int>{SIGHUP};
    // timeout(1) sends its signal to the process and to its group, the system on its way down
    // SIGTERM and SIGHUP.
    QTest::newRow("SIGTERM doubled") << QVector<int>{SIGTERM, SIGTERM};
    QTest::newRow("SIGINT doubled") << QVector<int>{SIGINT, SIGINT};
    QTest::newRow("SIGTERM and SIGHUP") << QVector<int>{SIGTERM, SIGHUP};
    QTest::newRow("SIGHUP and SIGTERM") << QVector<int>{SIGHUP, SIGTERM};
    QTest::newRow("a hundred") << QVector<int>(100, SIGTERM);
}

void tst_NorvoPanelSignals::signalStopsWithTheStateSaved()
{
    QFETCH(QVector<int>, signalNumbers);
    const CountingFolder folder;
    PanelProcess panel(probes({folder.panel()}));
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 0, PanelProcess::kPatience);
    for (const int number : signalNumbers) {
        panel.sendSignal(number);
    }
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(panel.errorLines(), QStringList());
    QCOMPARE(folder.saved(), folder.counted());
}

/// nohup(1) starts a program that outlives its terminal.
void tst_NorvoPanelSignals::hangUpThatWasIgnoredStaysIgnored()
{
    const CountingFolder folder;
    PanelProcess panel({"-c", "trap '' HUP; exec \"$0\" \"$@\"", NORVO_BUILD_DIR "/bin/norvo-panel",
                        "--plugins", fixture("probes"), folder.panel()},
                       "/bin/sh");
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 0, PanelProcess::kPatience);
    panel.sendSignal(SIGHUP);
    QVERIFY(!panel.waitForFinished(500));
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
}

void tst_NorvoPanelSignals::signalDuringTheStartStopsThePanel_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

/// A document that never comes is waited for with the events going round.
void tst_NorvoPanelSignals::signalDuringTheStartStopsThePanel()
{
    QFETCH(int, signalNumber);
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    const PanelFolder folder("devices:\n"
                             "  q: {device: qml_widget, network: true, params: {sourceData: "
                             "'http://127.0.0.1:" +
                             QByteArray::number(silent.serverPort()) + "/a.qml'}}\n");
    PanelProcess panel({folder.panel()});
    panel.start();
    QVERIFY(silent.waitForNewConnection(PanelProcess::kPatience));
    QElapsedTimer clock;
    clock.start();
    panel.sendSignal(signalNumber);
    QCOMPARE(panel.waitForEnd(), 0);
    QVERIFY2(clock.elapsed() < 8000, "the wait for the document is 10 s long");
}

void tst_NorvoPanelSignals::secondSignalEndsAPanelThatHangs_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::newRow("SIGTERM twice") << SIGTERM << SIGTERM;
    QTest::newRow("SIGINT twice") << SIGINT << SIGINT;
    QTest::newRow("SIGTERM, then SIGINT") << SIGTERM << SIGINT;
    QTest::newRow("SIGINT, then SIGTERM") << SIGINT << SIGTERM;
}

void tst_NorvoPanelSignals::secondSignalEndsAPanelThatHangs()
{
    QFETCH(int, first);
    QFETCH(int, second);
    const CountingFolder folder;
    folder.add("  talker: {device: talker, params: {most: 0, hangAfter: 50}}\n");
    constexpr qint64 soonMs = 1500; // A doubled signal would leave two seconds.
    qint64 shortestMs = std::numeric_limits<qint64>::max();
    // A busy machine may hold the end of a process up, but never makes it come sooner.
    for (int attempt = 0; attempt < 5 && shortestMs >= soonMs; ++attempt) {
        PanelProcess panel(probes({folder.panel()}));
        panel.start();
        QVERIFY(panel.waitForErrorText("hanging"));
        panel.sendSignal(first);
        QVERIFY2(!panel.waitForFinished(1000), "one signal asks for a clean stop");
        const norvo::OwnTimer timer;
        panel.sendSignal(second);
        QCOMPARE(panel.waitForEnd(), 128 + second);
        shortestMs = qMin(shortestMs, timer.elapsed().ownMs);
    }
    QVERIFY2(shortestMs < soonMs, QByteArray::number(shortestMs));
}

/// Two at once may be one that was doubled on its way: the stop then has two seconds.
void tst_NorvoPanelSignals::doubledSignalEndsAPanelThatHangs()
{
    const CountingFolder folder;
    folder.add("  talker: {device: talker, params: {most: 0, hangAfter: 50}}\n");
    PanelProcess panel(probes({folder.panel()}));
    panel.start();
    QVERIFY(panel.waitForErrorText("hanging"));
    panel.sendSignal(SIGTERM);
    panel.sendSignal(SIGINT);
    const int status = panel.waitForEnd(); // The system chooses which of the two comes first.
    QVERIFY2(status == 128 + SIGINT || status == 128 + SIGTERM, QByteArray::number(status));
}

void tst_NorvoPanelSignals::closedWindowStopsWithTheStateSaved()
{
    const CountingFolder folder;
    folder.add("  a: {device: patch, params: {closeAfter: 50}}\n");
    PanelProcess panel(probes({folder.panel()}));
    QCOMPARE(panel.runToEnd(), 0);
    QVERIFY(folder.counted() > 0);
    QCOMPARE(folder.saved(), folder.counted());
}

NORVO_GUILESS_TEST(tst_NorvoPanelSignals)
#include "tst_NorvoPanelSignals.moc"
