// SPDX-License-Identifier: GPL-3.0-or-later

#include "CountingFolder.h"
#include "XServer.h"
#include "TestMain.h"

#include <QtTest>

#include <functional>

/// The program from outside, on an X server that a hand works at.
class tst_NorvoPanelScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void brokenFileIsReadAgain_data();
    void brokenFileIsReadAgain();
    void kioskKeepsTheScreenAwake();
    void kioskSaysThatTheScreenMayGoBlank();
    void newDisplayShowsWhatWasKept();
};

namespace {

const QColor kGreen("#00ff00");
const QStringList kPressF5{"key", "F5"};
const QStringList kTapTheKey{"mousemove", "960", "570", "click", "1"}; // of 1024x600
const QStringList kTapTheButton{"mousemove", "500", "40", "click", "1"};

bool comesTrue(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, PanelProcess::kPatience);
}

} // namespace

void tst_NorvoPanelScreen::initTestCase()
{
    for (const char* const program : {"Xvfb", "xdotool", "xset"}) {
        if (QStandardPaths::findExecutable(program).isEmpty()) {
            QSKIP(qPrintable(QString("there is no ") + program));
        }
    }
}

void tst_NorvoPanelScreen::brokenFileIsReadAgain_data()
{
    QTest::addColumn<QStringList>("hand");
    QTest::newRow("by F5") << kPressF5;
    QTest::newRow("by a finger on the key") << kTapTheKey;
}

void tst_NorvoPanelScreen::brokenFileIsReadAgain()
{
    QFETCH(QStringList, hand);
    XServer server;
    const PanelFolder folder("devices:\n"
                             "  a: {device: pach}\n");
    PanelProcess panel(probes({"--fullscreen", folder.panel()}));
    setDisplay(panel, server.display());
    panel.start();
    QVERIFY(panel.waitForErrorText("unknown device type \"pach\""));
    folder.fill("panel.yaml", "devices:\n"
                              "  a: {device: ptch}\n");
    QVERIFY(comesTrue([&] {
        server.run("xdotool", hand);
        return !panel.errorLines().filter("unknown device type \"ptch\"").isEmpty();
    }));
    folder.fill("panel.yaml", "devices:\n"
                              "  a: {device: patch, params: {colour: '#00ff00'}}\n");
    QVERIFY(server.pixel(100, 100) != kGreen);
    QVERIFY(comesTrue([&] {
        server.run("xdotool", hand);
        return server.pixel(100, 100) == kGreen;
    }));
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
}

void tst_NorvoPanelScreen::kioskKeepsTheScreenAwake()
{
    XServer server;
    const PanelFolder folder("devices:\n"
                             "  a: {device: patch, params: {colour: '#00ff00'}}\n");
    PanelProcess panel(probes({"--kiosk", folder.panel()}));
    setDisplay(panel, server.display());
    server.run("xset", {"s", "300", "400"});
    QVERIFY(server.run("xset", {"q"}).contains("timeout:  300    cycle:  400"));
    panel.start();
    QVERIFY(comesTrue([&] { return server.pixel(100, 100) == kGreen; }));
    QVERIFY(server.run("xset", {"q"}).contains("timeout:  0 "));
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QVERIFY(server.run("xset", {"q"}).contains("timeout:  300    cycle:  400"));
    QCOMPARE(panel.errorLines(), QStringList());
}

void tst_NorvoPanelScreen::kioskSaysThatTheScreenMayGoBlank()
{
    XServer server;
    const PanelFolder folder("devices:\n"
                             "  a: {device: patch, params: {closeAfter: 0}}\n");
    PanelProcess panel(probes({"--kiosk", folder.panel()}));
    setDisplay(panel, server.display());
    panel.setEnvironment("PATH", folder.path());
    panel.start();
    QVERIFY(panel.waitForErrorText("the screen may go blank: the program xset"));
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
}

/// An X server that dies takes its programs along; whoever starts them again finds what was kept.
void tst_NorvoPanelScreen::newDisplayShowsWhatWasKept()
{
    const PanelFolder folder("devices:\n"
                             "  key: {device: button, params: {text: Key}}\n"
                             "  lamp: {device: indicator, params: {widget/color: red}}\n"
                             "connections: [key.toggled -> lamp.input]\n");
    const auto lamp = [](const XServer& server) {
        return server.picture().copy(0, 68, 1024, 532); // all but the key
    };
    QImage lit;
    {
        XServer server;
        PanelProcess panel({"--kiosk", folder.panel()});
        setDisplay(panel, server.display());
        panel.start();
        QVERIFY(comesTrue([&] { return server.pixel(1000, 580).lightness() > 0; }));
        const QImage dark = lamp(server);
        server.run("xdotool", kTapTheButton);
        QVERIFY(comesTrue([&] {
            lit = lamp(server);
            return lit != dark;
        }));
        QVERIFY(comesTrue(
            [&] { return folder.content("panel.state.yaml").contains("\"toggled\": \"true\""); }));
        server.kill();
        QVERIFY(panel.waitForEnd() > 0);
    }
    QVERIFY(folder.content("panel.state.yaml").contains("\"toggled\": \"true\""));
    XServer server;
    PanelProcess panel({"--kiosk", folder.panel()});
    setDisplay(panel, server.display());
    panel.start();
    QVERIFY(comesTrue([&] { return lamp(server) == lit; }));
    QCOMPARE(panel.errorLines(), QStringList());
}

NORVO_GUILESS_TEST(tst_NorvoPanelScreen)
#include "tst_NorvoPanelScreen.moc"
