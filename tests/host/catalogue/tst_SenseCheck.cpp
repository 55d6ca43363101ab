// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/SenseCheck.h"

#include "host/catalogue/Catalogue.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/program/PluginSet.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

using namespace norvo;

/// Values that make no sense, on the types and words that come with the program.
class tst_SenseCheck : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void badFiles_data();
    void badFiles();
    void onlyADeviceThatCannotWorkIsAnError();
    void typeWithoutWordsIsNotJudged();
    void planFindsTheFilesOfAnIncludedFile();

private:
    QStringList check(const PanelDescription& description, Diagnostics& diagnostics) const;

    PluginSet m_plugins;
    std::unique_ptr<Catalogue> m_catalogue;
};

void tst_SenseCheck::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    m_plugins.load(NORVO_BUILD_DIR "/tests/fixtures/probes");
    m_catalogue = std::make_unique<Catalogue>(m_plugins.manager());
    QVERIFY(QDir::setCurrent(NORVO_SOURCE_DIR "/tests/panels/bad"));
}

QStringList tst_SenseCheck::check(const PanelDescription& description,
                                  Diagnostics& diagnostics) const
{
    PanelPlan::make(description, m_plugins.manager(), {}, diagnostics, {},
                    SenseCheck(*m_catalogue));
    QStringList lines;
    for (const Diagnostic& diagnostic : diagnostics.sorted()) {
        lines.append(diagnostic.toString());
    }
    return lines;
}

void tst_SenseCheck::badFiles_data()
{
    QTest::addColumn<QStringList>("expected"); // without the file's name
    const QString is = "parameter ";
    const QString here = " in " + QDir::currentPath();

    QTest::newRow("sense-numbers") << QStringList{
        "2:49: warning: " + is + "\"widget/step\": 0 is out of range; it must be at least 1",
        "3:44: warning: " + is + "\"decimals\": 400 is out of range; it must be 0 to 15",
        "4:46: warning: " + is + "\"period\": -1 is out of range; it must be at least 0",
        "5:61: warning: " + is + "\"widget/precision\": 99 is out of range; it must be 0 to 15",
        "6:60: error: " + is + "\"widget/timePeriod\": -1 is out of range; it must be at least 1",
        "7:51: warning: " + is + "\"widget/fontSize\": 12.5 is not a whole number",
        "8:59: warning: " + is + "\"minValue\": \"low\" is not a number",
        "9:47: error: " + is +
            "\"widget/row\": \"-7\" is not a whole number from 0 to 999, nor -1 for the next free "
            "place"};
    QTest::newRow("port-definitions") << QStringList{
        "5:18: error: output \"t\": broken regular expression: missing closing parenthesis, at "
        "character 10",
        "5:39: error: output \"output\": \"output\" is the name of an output or input that the "
        "device has by itself; choose another",
        "5:50: error: output \"h\": option \"decimal\": \",\" is neither point nor comma",
        "6:19: error: input \"set\": unknown option \"send\"; valid names: \"as\", \"decimal\", "
        "\"resend\"",
        "6:50: error: input \"two words\": the name \"two words\" holds more than letters, digits, "
        "\"_\" and \"-\"",
        "7:36: error: a device of type \"label\" takes no outputs and inputs of its author's; "
        "leave "
        "the key away",
        "10:11: error: \"bench\" has no signal \"hh\"; it has connected(bool), fault(QString), "
        "output(QString), output(double), finished(int), running(bool)"};
    QTest::newRow("sense-relations") << QStringList{
        "2:76: error: " + is +
            "\"widget/maxValue\": 5 must be greater than \"widget/minValue\", which is 10",
        "3:53: error: " + is +
            "\"widget/minValue\": 200 must be less than \"widget/maxValue\", which is 100 by "
            "default",
        "4:40: error: " + is + "\"min\": 1 must be less than \"max\", which is 1 by default",
        "5:92: warning: " + is +
            "\"widget/maxThreshold\": 10 must not be less than \"widget/minThreshold\", which is "
            "50"};
    QTest::newRow("sense-texts") << QStringList{
        "2:52: warning: " + is +
            "\"color\": \"zz\" is not a colour; write a name such as \"orange\", or red, green and "
            "blue as in \"#ff8800\"",
        "3:61: warning: " + is +
            "\"widget/timeFormat\": \"hours\" is not a time format, because of its \"o\"; write "
            "one "
            "of hh, mm, ss, zzz, dd, MM, yyyy for each part, as in \"hh:mm:ss\"",
        "4:63: warning: " + is +
            "\"widget/timeFormat\": \"--\" is not a time format, because it shows nothing of a "
            "time; write, for example, \"hh:mm:ss\""};
    QTest::newRow("sense-files") << QStringList{
        "2:56: error: " + is + "\"widget/filename\": there is no file \"nowhere.png\"" + here,
        "3:53: error: " + is +
            "\"widget/filename\": the file \"sense-files.yaml\" is not a picture that can be shown",
        "5:61: warning: " + is + "\"alarmFile\": there is no file \"nowhere.wav\"" + here,
        "6:62: warning: " + is + "\"alarmFile\": the file \".\" cannot be read",
        "7:48: error: device \"program\" does not start: " + is +
            "\"command\": there is no program \"./nowhere\"",
        "8:3: error: device \"document\" does not start, and its connections cannot be checked: "
        "nowhere.qml: No such file or directory"};
    QTest::newRow("sense-curves") << QStringList{
        "6:3: warning: \"many\" has 4 curves or more and none has a name; a graph_settings between "
        "source and graph names and colours a curve"};
    QTest::newRow("../good/question") << QStringList{};
}

void tst_SenseCheck::badFiles()
{
    QFETCH(QStringList, expected);
    const QString file = QString(QTest::currentDataTag()) + ".yaml";
    Diagnostics diagnostics(file);
    const PanelDescription description = PanelFile::read(file, diagnostics);
    expected.replaceInStrings(QRegularExpression("^"), file + ":");
    QCOMPARE(check(description, diagnostics), expected);
}

void tst_SenseCheck::onlyADeviceThatCannotWorkIsAnError()
{
    for (const char* name : {"sense-relations", "sense-files"}) {
        Diagnostics diagnostics(name);
        const auto description = PanelFile::read(QString("%1.yaml").arg(name), diagnostics);
        check(description, diagnostics);
        QVERIFY(diagnostics.hasErrors());
        QVERIFY2(!diagnostics.preventsStart(), "the panel runs, as it would without a check");
    }
}

void tst_SenseCheck::typeWithoutWordsIsNotJudged()
{
    Diagnostics diagnostics("p");
    const auto description = PanelFile::parse("devices:\n"
                                              "  a: {device: patch, params: {colour: zz}}\n"
                                              "  b: {device: nothing}\n",
                                              "p", diagnostics);
    const QStringList lines = check(description, diagnostics);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith("p:3:15: error: unknown device type"), qPrintable(lines[0]));
}

/// By all that plan a panel: a check, a start, a change of a value.
void tst_SenseCheck::planFindsTheFilesOfAnIncludedFile()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("lib"));
    const auto write = [&folder](const QString& name, const QByteArray& text) {
        QFile file(folder.filePath("lib/" + name));
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
    };
    QVERIFY(write("bell.wav", "sound"));
    QVERIFY(write("t.yaml", "templates:\n"
                            "  t:\n"
                            "    devices:\n"
                            "      a: {device: output_with_progress, params: {alarmFile: "
                            "bell.wav}}\n"));
    Diagnostics diagnostics("p");
    const auto description = PanelFile::parse("include: [lib/t.yaml]\ndevices: {p: {use: t}}\n",
                                              folder.filePath("panel.yaml"), diagnostics);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    const QStringList lines = check(description, diagnostics);
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(lines, QStringList());
}

NORVO_TEST(tst_SenseCheck)
#include "tst_SenseCheck.moc"
