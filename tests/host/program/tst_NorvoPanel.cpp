// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "TestMain.h"

#include <QImage>
#include <QtTest>

#include <unistd.h>

/// The program from outside: command line, plug-in folders and the check.
class tst_NorvoPanel : public QObject
{
    Q_OBJECT

private slots:
    void helpAndVersionGoToStandardOutput();
    void wrongCommandLineIsOneLine();
    void checkNeedsNoDisplay();
    void checkReportsEveryError();
    void errorsOfFormAndMeaningAreReportedInTheOrderOfTheFile();
    void checkPassesWarnings();
    void fileThatCannotBeReadIsAnError_data();
    void fileThatCannotBeReadIsAnError();
    void oddPluginFolderDoesNotStopThePanel_data();
    void oddPluginFolderDoesNotStopThePanel();
    void withoutAnyDeviceTypeItEnds_data();
    void withoutAnyDeviceTypeItEnds();
    void defaultFoldersAreSearched();
};

namespace {

const QByteArray kPatch = "devices:\n"
                          "  a: {device: patch}\n";

/// A copy of the program in a folder of its own, away from the plug-ins of the build.
class LonelyProgram
{
public:
    LonelyProgram()
    {
        QDir().mkpath(m_prefix.filePath("bin"));
        QFile::copy(NORVO_BUILD_DIR "/bin/norvo-panel", path());
        QFile::link(NORVO_BUILD_DIR "/lib", m_prefix.filePath("lib")); // Found from the program.
    }

    QString path() const { return m_prefix.filePath("bin/norvo-panel"); }
    QString folder() const { return m_prefix.path(); }

private:
    QTemporaryDir m_prefix;
};

} // namespace

void tst_NorvoPanel::helpAndVersionGoToStandardOutput()
{
    PanelProcess help({"--help"});
    help.takeDisplayAway();
    QCOMPARE(help.runToEnd(), 0);
    QCOMPARE(help.errorLines(), QStringList());
    QCOMPARE(help.outputLines().value(0), QString("Runs an operator panel from a text file."));
    PanelProcess version({"--version"});
    QCOMPARE(version.runToEnd(), 0);
    QVERIFY(QRegularExpression("^norvo-panel \\d+\\.\\d+\\.\\d+$")
                .match(version.outputLines().value(0))
                .hasMatch());
}

void tst_NorvoPanel::wrongCommandLineIsOneLine()
{
    PanelProcess panel({"--grün"});
    QCOMPARE(panel.runToEnd(), 2);
    QCOMPARE(panel.errorLines(),
             QStringList("norvo-panel: unknown option 'grün'; see norvo-panel --help"));
}

void tst_NorvoPanel::checkNeedsNoDisplay()
{
    const PanelFolder folder(kPatch);
    PanelProcess check({"--plugins", fixture("probes"), "--check", folder.panel()});
    check.takeDisplayAway();
    check.setEnvironment("DISPLAY", ":47113");
    QCOMPARE(check.runToEnd(), 0);
    QCOMPARE(check.errorLines(), QStringList());
    QCOMPARE(check.outputLines(), QStringList(folder.panel() + ": no errors"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("panel.yaml"));
}

void tst_NorvoPanel::checkReportsEveryError()
{
    const PanelFolder folder("devices:\n"
                             "  a: {device: pach}\n"
                             "  b: {device: patch, params: {color: red}}\n");
    PanelProcess check({"--plugins", fixture("probes"), "--check", folder.panel()});
    QCOMPARE(check.runToEnd(), 1);
    QCOMPARE(check.errorLines(), QStringList());
    const QStringList lines = check.outputLines();
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[0].startsWith(folder.panel() + ":2:15: error: "), qPrintable(lines[0]));
    QVERIFY2(lines[1].startsWith(folder.panel() + ":3:31: error: "), qPrintable(lines[1]));
    QCOMPARE(lines[2], folder.panel() + ": 2 errors");
}

void tst_NorvoPanel::errorsOfFormAndMeaningAreReportedInTheOrderOfTheFile()
{
    const PanelFolder folder("colour: red\n"
                             "devices:\n"
                             "  a: {device: pach}\n"
                             "  b: {params: {text: x}}\n"
                             "connections:\n"
                             "  - a.output -> c.input\n"
                             "  - nonsense\n");
    PanelProcess check({"--plugins", fixture("probes"), "--check", folder.panel()});
    QCOMPARE(check.runToEnd(), 1);
    const QStringList lines = check.outputLines();
    const QStringList places{":1:1: ", ":3:15: ", ":4:3: ", ":6:17: ", ":7:5: "};
    QCOMPARE(lines.size(), places.size() + 1);
    for (int i = 0; i < places.size(); ++i) {
        QVERIFY2(lines[i].startsWith(folder.panel() + places[i] + "error: "), qPrintable(lines[i]));
    }
    QCOMPARE(lines.last(), folder.panel() + ": 5 errors");
}

void tst_NorvoPanel::checkPassesWarnings()
{
    const PanelFolder folder("devices:\n"
                             "  a: {device: relay}\n"
                             "connections: [a.output -> a.input]\n");
    PanelProcess check({"--plugins", fixture("relays"), "--check", folder.panel()});
    QCOMPARE(check.runToEnd(), 0);
    const QStringList lines = check.outputLines();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines[0].startsWith(folder.panel() + ":3:") && lines[0].contains(": warning: "),
             qPrintable(lines[0]));
    QCOMPARE(lines[1], folder.panel() + ": 1 warning");
}

void tst_NorvoPanel::fileThatCannotBeReadIsAnError_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << "missing.yaml";
    QTest::newRow("folder") << ".";
    if (geteuid() != 0) { // The superuser reads everything.
        QTest::newRow("no permission") << "closed.yaml";
    }
}

void tst_NorvoPanel::fileThatCannotBeReadIsAnError()
{
    QFETCH(QString, name);
    const PanelFolder folder(kPatch);
    folder.fill("closed.yaml", kPatch);
    QVERIFY(QFile::setPermissions(folder.filePath("closed.yaml"), {}));
    const QString path = folder.filePath(name);
    PanelProcess check({"--plugins", fixture("probes"), "--check", path});
    QCOMPARE(check.runToEnd(), 1);
    const QStringList lines = check.outputLines();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines[0].startsWith(path + ": error: "), qPrintable(lines[0]));
    QCOMPARE(lines[1], path + ": 1 error");

    PanelProcess panel({"--plugins", fixture("probes"), path});
    panel.start();
    QVERIFY(panel.waitForErrorText(lines[0].toUtf8()));
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 1);
}

void tst_NorvoPanel::oddPluginFolderDoesNotStopThePanel_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("text");
    QTest::newRow("text named like a library") << "nolibrary"
                                               << "this is not a shared library";
    QTest::newRow("library that is no plug-in") << "noplugin"
                                                << "this library is not a plug-in";
    QTest::newRow("plug-in of another interface") << "otherinterface"
                                                  << "this plug-in is of another interface";
    QTest::newRow("no such folder") << "missing"
                                    << "there is no such plug-in folder";
}

void tst_NorvoPanel::oddPluginFolderDoesNotStopThePanel()
{
    QFETCH(QString, folder);
    QFETCH(QString, text);
    const PanelFolder panelFolder(kPatch);
    PanelProcess panel({"--plugins", fixture(folder), "--plugins", fixture("probes"),
                        "--screenshot", panelFolder.filePath("o.png"), "--after", "0",
                        panelFolder.panel()});
    QCOMPARE(panel.runToEnd(), 0);
    const QStringList lines = panel.errorLines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith(fixture(folder)) && lines[0].contains(": warning: " + text),
             qPrintable(lines[0]));
    QVERIFY(!QImage(panelFolder.filePath("o.png")).isNull());
}

void tst_NorvoPanel::withoutAnyDeviceTypeItEnds_data()
{
    oddPluginFolderDoesNotStopThePanel_data();
}

void tst_NorvoPanel::withoutAnyDeviceTypeItEnds()
{
    QFETCH(QString, folder);
    QFETCH(QString, text);
    const LonelyProgram program;
    const PanelFolder panelFolder(kPatch);
    PanelProcess panel({"--plugins", fixture(folder), panelFolder.panel()}, program.path());
    QCOMPARE(panel.runToEnd(), 1);
    const QStringList lines = panel.errorLines();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines[0].contains(text), qPrintable(lines[0]));
    QCOMPARE(lines[1], QString("norvo-panel: there are no devices, because no plug-in was found; "
                               "--plugins DIR names a folder that holds some"));
}

void tst_NorvoPanel::defaultFoldersAreSearched()
{
    const LonelyProgram program;
    const PanelFolder panelFolder(kPatch);
    QVERIFY(QFile::link(fixture("probes"), program.folder() + "/plugins"));
    PanelProcess check({"--check", panelFolder.panel()}, program.path());
    QCOMPARE(check.runToEnd(), 0);
    QCOMPARE(check.errorLines(), QStringList());
}

NORVO_GUILESS_TEST(tst_NorvoPanel)
#include "tst_NorvoPanel.moc"
