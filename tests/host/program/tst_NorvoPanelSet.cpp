// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "TestMain.h"
#include "host/panel/file/TypeKnowledge.h"
#include "host/program/SetParams.h"

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"

#include <QImage>
#include <QtTest>

namespace {

const QByteArray kPanel("# Two devices\r\n"
                        "devices:\r\n"
                        "  start: {device: button, params: {text: Start}} # the button\r\n"
                        "  level:\r\n"
                        "    device: slider\r\n"
                        "    params:\r\n"
                        "      widget: {row: 1, column: 0}");

const PanelFolder* s_folder = nullptr;

/// A device whose making is slow enough for somebody else to save the file.
class MeanwhileDevice : public BaseDevice
{
public:
    static DeviceTypeInfo typeInfo() { return {}; }

    MeanwhileDevice()
    {
        addParam("text", "");
        s_folder->fill("panel.yaml", "# saved by an editor\n");
    }
};

} // namespace

class tst_NorvoPanelSet : public QObject
{
    Q_OBJECT

private slots:
    void severalValuesAreWrittenAtOnce();
    void allOrNothingIsWritten();
    void errorIsClear_data();
    void errorIsClear();
    void valueThatTheCheckRefusesIsWrittenWithAWarning();
    void firstRefusalCountsToo();
    void warningThatHasMovedIsNothingNew();
    void fileBesideThePanelIsFound();
    void storedValueThatReplacesTheNewOneIsReported();
    void storedValueThatCountsForNothingIsNotReported_data();
    void storedValueThatCountsForNothingIsNotReported();
    void valueThatIsThereAlreadyLeavesTheFileAlone();
    void permissionsStay();
    void linkStaysAndItsTargetIsWritten();
    void fileThatCannotBeWrittenIsReported();
    void fileThatWasChangedMeanwhileStays();
};

void tst_NorvoPanelSet::severalValuesAreWrittenAtOnce()
{
    const PanelFolder folder(kPanel);
    PanelProcess program({"--set", "start.text=Go: 100 %", "--set=level.widget/colspan=2", "--set",
                          "level.widget/ROW=3", "--set", "start.mode=click", folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(program.errorLines(), QStringList());
    QByteArray expected = kPanel;
    expected.replace("text: Start", "text: \"Go: 100 %\", mode: click");
    expected.replace("row: 1, column: 0", "row: 3, column: 0, colspan: 2");
    QCOMPARE(folder.content("panel.yaml"), expected);
}

void tst_NorvoPanelSet::allOrNothingIsWritten()
{
    const PanelFolder folder(kPanel);
    PanelProcess program({"--set", "start.text=Go", "--set", "strat.text=Go", "--set",
                          "start.txet=Go", folder.panel()});
    QCOMPARE(program.runToEnd(), 1);
    QCOMPARE(program.errorLines(),
             (QStringList{
                 folder.panel() + ": error: there is no device \"strat\"; did you mean \"start\"?",
                 folder.panel() + ":3:3: error: a device of type \"button\" has no parameter "
                                  "\"txet\"; did you mean \"text\"?"}));
    QCOMPARE(folder.content("panel.yaml"), kPanel);
}

void tst_NorvoPanelSet::errorIsClear_data()
{
    QTest::addColumn<QByteArray>("panel");
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("error");
    QTest::newRow("unknown type") << QByteArray("devices: {a: {device: buton}}\n") << "a.text=1"
                                  << ":1:23: error: unknown device type \"buton\"; did you mean "
                                     "\"button\"?";
    QTest::newRow("device of a template")
        << QByteArray("templates: {t: {devices: {a: {device: button}}}}\n"
                      "devices: {p: {use: t}}\n")
        << "p-a.text=1"
        << ": error: the device \"p-a\" comes from a template; change it there, or what its use "
           "gives";
    QTest::newRow("use of a template")
        << QByteArray("templates: {t: {devices: {a: {device: button}}}}\n"
                      "devices: {p: {use: t}}\n")
        << "p.text=1"
        << ": error: \"p\" uses a template; change what it gives it, or the template";
    QTest::newRow("broken YAML") << QByteArray("devices: {a: {device: button}\n") << "a.text=1"
                                 << ":1:10: error: broken YAML: the map that opens here is not "
                                    "closed; \"}\" is missing before line 2, column 1";
    QTest::newRow("alias") << QByteArray("devices:\n  a: {device: button, params: {text: &t Go}}\n"
                                         "  b: {device: button, params: {text: *t}}\n")
                           << "a.text=Stop"
                           << ":2:41: error: the alias in line 3, column 38 uses this value, too; "
                              "write a value there in its place first";
}

void tst_NorvoPanelSet::errorIsClear()
{
    QFETCH(QByteArray, panel);
    QFETCH(QString, change);
    QFETCH(QString, error);
    const PanelFolder folder(panel);
    PanelProcess program({"--set", change, folder.panel()});
    QCOMPARE(program.runToEnd(), 1);
    QCOMPARE(program.errorLines(), QStringList(folder.panel() + error));
    QCOMPARE(folder.content("panel.yaml"), panel);
}

void tst_NorvoPanelSet::valueThatTheCheckRefusesIsWrittenWithAWarning()
{
    const PanelFolder folder("devices:\n  a: {device: button, params: {widget/row: 0}}\n"
                             "  b: {device: label, params: {widget/row: x}}\n");
    PanelProcess program({"--set", "a.widget/row=first", folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    const QStringList lines = program.errorLines();
    QCOMPARE(lines.size(), 1); // What was wrong before is nothing new.
    QVERIFY2(lines[0].startsWith(folder.panel() +
                                 ":2:44: warning: parameter \"widget/row\": \"first\" is not"),
             qPrintable(lines[0]));
    QVERIFY(folder.content("panel.yaml").contains("{widget/row: first}}"));
}

void tst_NorvoPanelSet::firstRefusalCountsToo()
{
    const PanelFolder folder(kPanel);
    PanelProcess program({"--set", "strat.text=Go", "--set", "start.text=Go", folder.panel()});
    QCOMPARE(program.runToEnd(), 1);
    QCOMPARE(folder.content("panel.yaml"), kPanel);
}

void tst_NorvoPanelSet::warningThatHasMovedIsNothingNew()
{
    const PanelFolder folder("devices:\n  a:\n    device: button\n    params:\n      mode: click\n"
                             "  b: {device: label}\nconnections:\n  - a.toggled -> b.inputWarning\n"
                             "  - a.toggled -> b.inputWarning\n");
    PanelProcess check({"--check", folder.panel()});
    QCOMPARE(check.runToEnd(), 0);
    QCOMPARE(check.outputLines().filter("is connected already, in line 8").size(), 1);
    PanelProcess program({"--set", "a.text=Go", folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(program.errorLines(), QStringList());
    QVERIFY(folder.content("panel.yaml").contains("mode: click\n      text: Go\n"));
}

void tst_NorvoPanelSet::fileBesideThePanelIsFound()
{
    const PanelFolder folder("devices: {a: {device: picture}}\n");
    QVERIFY(QImage(1, 1, QImage::Format_RGB32).save(folder.filePath("pump.png")));
    PanelProcess program({"--set", "a.widget/filename=pump.png", folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(program.errorLines(), QStringList());
}

void tst_NorvoPanelSet::storedValueThatReplacesTheNewOneIsReported()
{
    const QByteArray stored("start:\n  toggled: true\n");
    for (const bool isNamed : {false, true}) {
        const PanelFolder folder(kPanel);
        const QString state = folder.filePath(isNamed ? "mine.yaml" : "panel.state.yaml");
        folder.fill(QFileInfo(state).fileName(), stored);
        PanelProcess program(QStringList{"--set", "start.Toggled=false", folder.panel()} +
                             (isNamed ? QStringList{"--state", state} : QStringList()));
        QCOMPARE(program.runToEnd(), 0);
        QCOMPARE(program.errorLines(),
                 QStringList(state + ":2:3: warning: \"start\" has stored \"true\" for "
                                     "\"toggled\", which replaces the value in the panel file at "
                                     "the start; remove this line for \"false\" to count"));
        QVERIFY(folder.content("panel.yaml").contains("oggled: false"));
        QCOMPARE(folder.content(QFileInfo(state).fileName()), stored);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2); // No lock is left.
    }
}

void tst_NorvoPanelSet::storedValueThatCountsForNothingIsNotReported_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QStringList>("options");
    QTest::newRow("the same") << QByteArray("start: {toggled: 'false'}\n") << QStringList();
    QTest::newRow("another device") << QByteArray("stop: {toggled: 'true'}\n") << QStringList();
    QTest::newRow("parameter that the device does not store")
        << QByteArray("start: {mode: click}\n") << QStringList{"--set", "start.mode=toggle"};
    QTest::newRow("no state wanted")
        << QByteArray("start: {toggled: 'true'}\n") << QStringList("--no-state");
    QTest::newRow("broken state file") << QByteArray("start: {toggled: 'true'\n") << QStringList();
}

void tst_NorvoPanelSet::storedValueThatCountsForNothingIsNotReported()
{
    QFETCH(QByteArray, state);
    QFETCH(QStringList, options);
    const PanelFolder folder(kPanel);
    folder.fill("panel.state.yaml", state);
    PanelProcess program(options + QStringList{"--set", "start.toggled=false", folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(program.errorLines(), QStringList());
    QCOMPARE(folder.content("panel.state.yaml"), state);
}

void tst_NorvoPanelSet::valueThatIsThereAlreadyLeavesTheFileAlone()
{
    const PanelFolder folder(kPanel);
    const QDateTime old = QDateTime::currentDateTime().addDays(-1);
    QFile file(folder.panel());
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(old, QFileDevice::FileModificationTime));
    file.close();
    PanelProcess program({"--set", "start.text=Start", folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(QFileInfo(folder.panel()).lastModified(), old);
}

void tst_NorvoPanelSet::permissionsStay()
{
    const PanelFolder folder(kPanel);
    const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    QVERIFY(QFile::setPermissions(folder.panel(), permissions));
    PanelProcess program({"--set", "start.text=Go", folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(QFile::permissions(folder.panel()) & ~QFile::Permissions(0x0700), permissions);
    QVERIFY(folder.content("panel.yaml").contains("text: Go"));
}

void tst_NorvoPanelSet::linkStaysAndItsTargetIsWritten()
{
    const PanelFolder folder(kPanel);
    QVERIFY(QFile::link("panel.yaml", folder.filePath("link.yaml")));
    PanelProcess program({"--set", "start.text=Go", folder.filePath("link.yaml")});
    QCOMPARE(program.runToEnd(), 0);
    QVERIFY(QFileInfo(folder.filePath("link.yaml")).isSymLink());
    QVERIFY(folder.content("panel.yaml").contains("text: Go"));
}

void tst_NorvoPanelSet::fileThatCannotBeWrittenIsReported()
{
    PanelProcess program({"--set", "start.text=Go", "/nowhere/panel.yaml"});
    QCOMPARE(program.runToEnd(), 1);
    QCOMPARE(program.errorLines(),
             QStringList("/nowhere/panel.yaml: error: there is no such file"));
}

void tst_NorvoPanelSet::fileThatWasChangedMeanwhileStays()
{
    const PanelFolder folder("devices: {a: {device: meanwhile}}\n");
    s_folder = &folder;
    DeviceManager manager;
    manager.registerDeviceType<MeanwhileDevice>("meanwhile");
    const QString here = QDir::currentPath();
    const int status = norvo::setParams(folder.panel(), {}, {{"a", "text", "1"}}, manager, {});
    QDir::setCurrent(here);
    QCOMPARE(status, 1);
    QCOMPARE(folder.content("panel.yaml"), QByteArray("# saved by an editor\n"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("panel.yaml"));
}

NORVO_TEST(tst_NorvoPanelSet)
#include "tst_NorvoPanelSet.moc"
