// SPDX-License-Identifier: GPL-3.0-or-later

#include "CountingFolder.h"
#include "XServer.h"
#include "TestMain.h"

#include <QtTest>

/// The program from outside: with a display, without one, and with one that goes away.
class tst_NorvoPanelDisplay : public QObject
{
    Q_OBJECT

private slots:
    void withoutDisplayItSaysWhatToDo();
    void displayThatCannotBeOpenedIsOneLine_data();
    void displayThatCannotBeOpenedIsOneLine();
    void panelRunsOnAnXDisplay_data();
    void panelRunsOnAnXDisplay();
    void wholeScreenIsCoveredWithoutAWindowManager_data();
    void wholeScreenIsCoveredWithoutAWindowManager();
    void platformOfTheCommandLineIsUsed();
    void displayOfTheCommandLineIsUsed();
    void factorBelowOneIsRefused_data();
    void factorBelowOneIsRefused();
    void factorFromOneOnIsTaken();
    void platformWithoutOpenGlIsNoNews();
    void displayThatGoesAwayEndsThePanel();
};

namespace {

const QByteArray kPatch = "devices:\n"
                          "  a: {device: patch}\n";
const QString kAdvice = "a picture of the panel needs no display: norvo-panel --screenshot OUT.png "
                        "PANEL.yaml";

} // namespace

void tst_NorvoPanelDisplay::withoutDisplayItSaysWhatToDo()
{
    const PanelFolder folder(kPatch);
    PanelProcess panel({folder.panel()});
    panel.takeDisplayAway();
    QCOMPARE(panel.runToEnd(), 1);
    QCOMPARE(panel.errorLines(),
             QStringList("norvo-panel: there is no display (neither DISPLAY nor WAYLAND_DISPLAY is "
                         "set); " +
                         kAdvice));
}

void tst_NorvoPanelDisplay::displayThatCannotBeOpenedIsOneLine_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");
    QTest::newRow("no such X display") << "DISPLAY"
                                       << ":47113";
    QTest::newRow("no such Wayland display") << "WAYLAND_DISPLAY"
                                             << "norvo-none";
    QTest::newRow("no such platform") << "QT_QPA_PLATFORM"
                                      << "nonsense";
}

void tst_NorvoPanelDisplay::displayThatCannotBeOpenedIsOneLine()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);
    const PanelFolder folder(kPatch);
    PanelProcess panel({folder.panel()});
    panel.takeDisplayAway();
    panel.setEnvironment(variable, value);
    QCOMPARE(panel.runToEnd(), 1);
    const QStringList lines = panel.errorLines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith("norvo-panel: the display cannot be opened ("),
             qPrintable(lines[0]));
    QVERIFY2(lines[0].endsWith("); " + kAdvice), qPrintable(lines[0]));
}

void tst_NorvoPanelDisplay::panelRunsOnAnXDisplay_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("in a window") << QStringList();
    QTest::newRow("on the whole screen") << QStringList("--fullscreen");
}

void tst_NorvoPanelDisplay::panelRunsOnAnXDisplay()
{
    QFETCH(QStringList, options);
    if (!XServer::isInstalled()) {
        QSKIP("there is no Xvfb");
    }
    XServer server;
    const QString display = server.display();
    QVERIFY(!display.isEmpty());
    const CountingFolder folder;
    PanelProcess panel(probes(options << folder.panel()));
    setDisplay(panel, display);
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 0, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(panel.errorLines(), QStringList());
    QCOMPARE(folder.saved(), folder.counted());
}

void tst_NorvoPanelDisplay::wholeScreenIsCoveredWithoutAWindowManager_data()
{
    QTest::addColumn<QString>("option");
    QTest::newRow("whole screen") << "--fullscreen";
    QTest::newRow("kiosk") << "--kiosk";
}

/// What a panel of one colour leaves at the edges is its margin.
void tst_NorvoPanelDisplay::wholeScreenIsCoveredWithoutAWindowManager()
{
    QFETCH(QString, option);
    if (!XServer::isInstalled()) {
        QSKIP("there is no Xvfb");
    }
    XServer server("1920x1080");
    const PanelFolder folder("devices:\n"
                             "  a: {device: patch, params: {colour: '#00ff00'}}\n");
    PanelProcess panel(probes({option, folder.panel()}));
    setDisplay(panel, server.display());
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(server.pixel(100, 100), QColor("#00ff00"), PanelProcess::kPatience);
    for (const QPoint& corner : {QPoint(1890, 1050), QPoint(30, 1050), QPoint(1890, 30)}) {
        QTRY_COMPARE(server.pixel(corner.x(), corner.y()), QColor("#00ff00"));
    }
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
}

void tst_NorvoPanelDisplay::platformOfTheCommandLineIsUsed()
{
    const PanelFolder folder("devices:\n"
                             "  a: {device: patch, params: {closeAfter: 0}}\n");
    PanelProcess panel(probes({"-platform", "offscreen", folder.panel()}));
    panel.takeDisplayAway();
    QCOMPARE(panel.runToEnd(), 0);
    QCOMPARE(panel.errorLines(), QStringList());

    PanelProcess nonsense(probes({"--platform=nonsense", folder.panel()}));
    QCOMPARE(nonsense.runToEnd(), 1);
    QVERIFY(
        nonsense.errorLines().value(0).startsWith("norvo-panel: the display cannot be opened ("));
}

void tst_NorvoPanelDisplay::factorBelowOneIsRefused_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");
    QTest::newRow("of all screens") << "QT_SCALE_FACTOR"
                                    << "0.5";
    QTest::newRow("of the second screen") << "QT_SCREEN_SCALE_FACTORS"
                                          << "2;0.75";
    QTest::newRow("of a named screen") << "QT_SCREEN_SCALE_FACTORS"
                                       << "HDMI-1=0.9";
}

void tst_NorvoPanelDisplay::factorBelowOneIsRefused()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);
    const PanelFolder folder(kPatch);
    PanelProcess panel(probes({"--screenshot", folder.filePath("out.png"), folder.panel()}));
    panel.setEnvironment(variable, value);
    QCOMPARE(panel.runToEnd(), 1);
    QCOMPARE(panel.errorLines(),
             QStringList("norvo-panel: " + variable + "=" + value +
                         " is below 1, which Qt cannot draw without holes; \"fit: scale\" and "
                         "\"design: WxH\" in the panel file draw a panel smaller"));
}

void tst_NorvoPanelDisplay::factorFromOneOnIsTaken()
{
    const PanelFolder folder(kPatch);
    PanelProcess panel(probes({"--screenshot", folder.filePath("out.png"), folder.panel()}));
    panel.setEnvironment("QT_SCALE_FACTOR", "1");
    panel.setEnvironment("QT_SCREEN_SCALE_FACTORS", "HDMI-1=1.5");
    QCOMPARE(panel.runToEnd(), 0);
    QCOMPARE(panel.errorLines(), QStringList());
}

void tst_NorvoPanelDisplay::displayOfTheCommandLineIsUsed()
{
    const PanelFolder folder(kPatch);
    PanelProcess panel({"-display", ":47113", folder.panel()});
    panel.takeDisplayAway();
    QCOMPARE(panel.runToEnd(), 1);
    QVERIFY(panel.errorLines().value(0).startsWith("norvo-panel: the display cannot be opened ("));
}

/// Qt Quick draws by itself then.
void tst_NorvoPanelDisplay::platformWithoutOpenGlIsNoNews()
{
    const PanelFolder folder("devices:\n"
                             "  face: {device: qml_widget, params: {sourceType: parameter,\n"
                             "         sourceCode: 'import QtQuick 2.15; Rectangle { }'}}\n"
                             "  a: {device: patch, params: {closeAfter: 0}}\n");
    PanelProcess panel(probes({"--verbose", folder.panel()}));
    panel.setEnvironment("QT_QPA_PLATFORM", "minimal");
    QCOMPARE(panel.runToEnd(), 0);
    QCOMPARE(panel.errorLines().filter("OpenGL"), QStringList());
}

void tst_NorvoPanelDisplay::displayThatGoesAwayEndsThePanel()
{
    if (!XServer::isInstalled()) {
        QSKIP("there is no Xvfb");
    }
    XServer server;
    const CountingFolder folder;
    PanelProcess panel(probes({folder.panel()}));
    setDisplay(panel, server.display());
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.saved() > 0, PanelProcess::kPatience);
    server.stop();
    QCOMPARE(panel.waitForEnd(), 1);
    QVERIFY(folder.saved() > 0);
}

NORVO_GUILESS_TEST(tst_NorvoPanelDisplay)
#include "tst_NorvoPanelDisplay.moc"
