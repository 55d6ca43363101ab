// SPDX-License-Identifier: GPL-3.0-or-later

#include "CountingFolder.h"
#include "TestMain.h"

#include <QImage>
#include <QtTest>

/// The program from outside: what a panel's devices store, from one run to the next.
class tst_NorvoPanelState : public QObject
{
    Q_OBJECT

private slots:
    void pictureUsesTheStateAndWritesNone();
    void stateComesBack();
    void stateGoesToTheNamedFile();
    void noStateIsNoState();
    void brokenStateIsToldAndKept();
    void stateThatCannotBeSavedIsToldOnce();
    void panelFileIsNeverWritten();
};

void tst_NorvoPanelState::pictureUsesTheStateAndWritesNone()
{
    const PanelFolder folder("devices:\n  a: {device: patch}\n");
    const QByteArray state = "a: {colour: '#ff00ff'}\n";
    folder.fill("panel.state.yaml", state);
    const QString picture = folder.filePath("o.png");
    PanelProcess panel(probes({"--screenshot", picture, "--after", "0", folder.panel()}));
    QCOMPARE(panel.runToEnd(), 0);
    QCOMPARE(QImage(picture).pixelColor(400, 240), QColor("#ff00ff"));
    QCOMPARE(folder.content("panel.state.yaml"), state);

    const CountingFolder counter;
    PanelProcess second(
        probes({"--screenshot", counter.filePath("o.png"), "--after", "400", counter.panel()}));
    QCOMPARE(second.runToEnd(), 0);
    QVERIFY(counter.counted() > 0);
    QCOMPARE(counter.saved(), -1);
}

void tst_NorvoPanelState::stateComesBack()
{
    const CountingFolder folder;
    folder.fill("panel.state.yaml", "counter: {count: '1000'}\ngone: {count: '7'}\n");
    PanelProcess panel(probes({folder.panel()}));
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 1000, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(folder.saved(), folder.counted());
    QVERIFY(folder.content("panel.state.yaml").contains("\"gone\":\n  \"count\": \"7\"\n"));
    QCOMPARE(panel.errorLines(),
             QStringList(folder.filePath("panel.state.yaml") +
                         ":2:1: warning: there is no device \"gone\"; its saved values are left "
                         "aside"));
}

void tst_NorvoPanelState::stateGoesToTheNamedFile()
{
    const CountingFolder folder;
    PanelProcess panel(probes({"--state", folder.filePath("other.yaml"), folder.panel()}));
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.saved("other.yaml") > 0, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(folder.saved("other.yaml"), folder.counted());
    QVERIFY(!QFile::exists(folder.filePath("panel.state.yaml")));
}

void tst_NorvoPanelState::noStateIsNoState()
{
    const CountingFolder folder;
    const QByteArray state = "counter: {count: '1000'}\n";
    folder.fill("panel.state.yaml", state);
    PanelProcess panel(probes({"--no-state", folder.panel()}));
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 0, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QVERIFY(folder.counted() < 1000);
    QCOMPARE(folder.content("panel.state.yaml"), state);
}

void tst_NorvoPanelState::brokenStateIsToldAndKept()
{
    const CountingFolder folder;
    const QByteArray state = "counter: {count: '10";
    folder.fill("panel.state.yaml", state);
    PanelProcess panel(probes({folder.panel()}));
    panel.start();
    QVERIFY(panel.waitForErrorText("warning: the saved state cannot be parsed: "));
    QTRY_VERIFY_WITH_TIMEOUT(folder.saved() > 0, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(folder.content("panel.state.yaml.bad"), state);
    QCOMPARE(panel.errorLines().size(), 1);
}

void tst_NorvoPanelState::stateThatCannotBeSavedIsToldOnce()
{
    const CountingFolder folder;
    const QString state = folder.filePath("missing/s.yaml");
    PanelProcess panel(probes({"--state", state, folder.panel()}));
    panel.start();
    QVERIFY(panel.waitForErrorText("the state cannot be saved: "));
    const int before = folder.counted();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > before + 100, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(panel.errorLines().size(), 1);
}

void tst_NorvoPanelState::panelFileIsNeverWritten()
{
    const CountingFolder folder;
    const QByteArray before = folder.content("panel.yaml");
    const QDateTime changed = QFileInfo(folder.panel()).lastModified();
    PanelProcess panel(probes({folder.panel()}));
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.saved() > 0, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(folder.content("panel.yaml"), before);
    QCOMPARE(QFileInfo(folder.panel()).lastModified(), changed);
}

NORVO_GUILESS_TEST(tst_NorvoPanelState)
#include "tst_NorvoPanelState.moc"
