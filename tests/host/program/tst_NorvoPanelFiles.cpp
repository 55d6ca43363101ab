// SPDX-License-Identifier: GPL-3.0-or-later

#include "CountingFolder.h"
#include "TestMain.h"

#include <QImage>
#include <QtTest>

/// The program from outside: which files it means, from whatever folder it is started.
class tst_NorvoPanelFiles : public QObject
{
    Q_OBJECT

private slots:
    void filesOfAPanelAreRelativeToItsFolder_data();
    void filesOfAPanelAreRelativeToItsFolder();
    void filesOfAnIncludedFileAreRelativeToItsFolder();
    void fileOfAUseIsRelativeToTheFileThatGivesIt_data();
    void fileOfAUseIsRelativeToTheFileThatGivesIt();
    void noFileStaysNoFileInAnIncludedFile();
    void programOfAnIncludedFileIsRelativeToItsFolder_data();
    void programOfAnIncludedFileIsRelativeToItsFolder();
    void programOfAPanelRunsInItsFolder();
    void argumentsAreRelativeToTheFolderOfTheStart();
    void stateIsKeptBesideThePanel();
    void checkReportsOnEachOfSeveralFiles();
    void eachOfSeveralFilesHasAFolderOfItsOwn();
    void checkReadsStandardInput();
    void pictureOfStandardInput();
    void panelFromStandardInputKeepsNoStateByItself();
};

namespace {

/// A start folder with a panel in its folder "bench", which brings its files along.
class Start : public QTemporaryDir
{
public:
    explicit Start(const QByteArray& panel, const QByteArray& second = {})
    {
        for (const QString& name : {QString("bench"), QString("second")}) {
            QDir(path()).mkdir(name);
            write(name + "/panel.yaml", name == "bench" ? panel : second);
        }
        QImage image(40, 40, QImage::Format_RGB32);
        image.fill(QColor("#00ff00"));
        image.save(filePath("bench/green.png"));
        write("bench/Blue.qml", "import QtQuick 2.0\n"
                                "Rectangle { color: '#0000ff'; anchors.fill: parent }\n");
        QFile::link(fixture("probes"), filePath("plug"));
    }

    void write(const QString& name, const QByteArray& content) const
    {
        QFile file(filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
    }

    /// With the standard plug-ins, and on standard input what is given.
    static void run(PanelProcess& program, const QString& folder, int status,
                    const QByteArray& input = {})
    {
        program.setWorkingDirectory(folder);
        program.start();
        program.write(input);
        program.closeWriteChannel();
        QCOMPARE(program.waitForEnd(), status);
    }
};

const QByteArray kGreen =
    "devices:\n  a: {device: picture, params: {widget/filename: green.png}}\n";
const QByteArray kPatch = "devices:\n  a: {device: patch, params: {colour: '#00ff00'}}\n";
const QByteArray kWrong = "devices:\n  a: {device: pach}\n";

} // namespace

void tst_NorvoPanelFiles::filesOfAPanelAreRelativeToItsFolder_data()
{
    QTest::addColumn<QByteArray>("panel");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("picture") << kGreen << QColor("#00ff00");
    QTest::newRow("QML document")
        << QByteArray("devices:\n  a: {device: qml_widget, params: {sourceData: Blue.qml}}\n")
        << QColor("#0000ff");
    QTest::newRow("QML document beside one in the panel file")
        << QByteArray("devices:\n"
                      "  a:\n"
                      "    device: qml_widget\n"
                      "    params: {sourceType: parameter, sourceCode: 'Blue {}'}\n")
        << QColor("#0000ff");
}

void tst_NorvoPanelFiles::filesOfAPanelAreRelativeToItsFolder()
{
    QFETCH(QByteArray, panel);
    QFETCH(QColor, colour);
    const Start start(panel);
    const QString picture = start.filePath("o.png");
    PanelProcess program({"--screenshot", picture, "--size", "400x300", "--no-state",
                          start.filePath("bench/panel.yaml")});
    Start::run(program, "/", 0);
    QCOMPARE(program.errorLines(), QStringList());
    QCOMPARE(QImage(picture).pixelColor(200, 150), colour);
}

void tst_NorvoPanelFiles::filesOfAnIncludedFileAreRelativeToItsFolder()
{
    const QByteArray panel = "include: [../bench/panel.yaml]\ndevices:\n  a: {use: lamp}\n";
    const Start start("templates:\n"
                      "  lamp:\n"
                      "    devices:\n"
                      "      p: {device: picture, params: {widget/filename: green.png}}\n",
                      panel);
    for (const QString& folder : {QString("/"), start.path(), start.filePath("second")}) {
        const QString picture = start.filePath("o.png");
        PanelProcess program({"--screenshot", picture, "--size", "400x300", "--no-state",
                              QDir(folder).relativeFilePath(start.filePath("second/panel.yaml"))});
        Start::run(program, folder, 0);
        QCOMPARE(program.errorLines(), QStringList());
        QCOMPARE(QImage(picture).pixelColor(200, 150), QColor("#00ff00"));
        QVERIFY(QFile::remove(picture));
    }
}

void tst_NorvoPanelFiles::fileOfAUseIsRelativeToTheFileThatGivesIt_data()
{
    QTest::addColumn<QByteArray>("templates"); // of the file that holds the picture, too
    QTest::addColumn<QByteArray>("panel");     // of the other folder
    const QByteArray lamp = "templates:\n"
                            "  lamp:\n"
                            "    with: {f: green.png}\n"
                            "    devices:\n"
                            "      p: {device: picture, params: {widget/filename: $(f)}}\n";
    QTest::newRow("default") << lamp << QByteArray("{use: lamp}");
    QTest::newRow("given by the panel")
        << lamp << QByteArray("{use: lamp, with: {f: ../bench/green.png}}");
    QTest::newRow("folder given by the panel") << QByteArray(lamp).replace("$(f)", "$(f)/green.png")
                                               << QByteArray("{use: lamp, with: {f: ../bench}}");
    QTest::newRow("placeholder within the name") << QByteArray(lamp).replace("$(f)", "./$(f)")
                                                 << QByteArray("{use: lamp, with: {f: green.png}}");
    const QByteArray outer = "  outer: {with: {g: green.png}, devices: {o: {use: lamp, with: "
                             "{f: $(g)}}}}\n";
    QTest::newRow("given by a template") << lamp + outer << QByteArray("{use: outer}");
    QTest::newRow("passed on by a template")
        << lamp + outer << QByteArray("{use: outer, with: {g: ../bench/green.png}}");
}

void tst_NorvoPanelFiles::fileOfAUseIsRelativeToTheFileThatGivesIt()
{
    QFETCH(QByteArray, templates);
    QFETCH(QByteArray, panel);
    const Start start(templates);
    for (const QString& include : {QString("../bench/"), start.filePath("bench/")}) {
        QVERIFY(QDir(start.path()).mkpath("third/deep"));
        for (const QByteArray name : {"second/panel.yaml", "third/deep/panel.yaml"}) {
            const QByteArray up = name.startsWith("third") ? "../" : "";
            const QByteArray file = QByteArray(panel).replace("../bench", up + "../bench");
            const bool isRelative = include.startsWith("..");
            start.write(name, "include: [" + (isRelative ? up : QByteArray()) + include.toUtf8() +
                                  "panel.yaml]\ndevices:\n  a: " + file + "\n");
            PanelProcess check({"--check", name});
            Start::run(check, start.path(), 0);
            QCOMPARE(check.outputLines(), QStringList(name + ": no errors"));
        }
    }
}

void tst_NorvoPanelFiles::noFileStaysNoFileInAnIncludedFile()
{
    const Start start("include: [../parts/t.yaml]\ndevices: {a: {use: t}}\n");
    QVERIFY(QDir(start.path()).mkpath("parts"));
    start.write("parts/t.yaml", "templates:\n  t:\n    devices:\n"
                                "      p: {device: picture, params: {widget/filename: ''}}\n");
    PanelProcess program({"--check", "bench/panel.yaml"});
    Start::run(program, start.path(), 0);
    QCOMPARE(program.outputLines(), QStringList("bench/panel.yaml: no errors"));
}

void tst_NorvoPanelFiles::programOfAnIncludedFileIsRelativeToItsFolder_data()
{
    QTest::addColumn<QByteArray>("command"); // in the folder "my bench"
    QTest::newRow("beside the file") << QByteArray("./say.sh it");
    QTest::newRow("in quotes") << QByteArray("\"'./say.sh' it\"");
    QTest::newRow("with a slash") << QByteArray("\" \\\"bin/say it.sh\\\" it\"");
    QTest::newRow("parent folder") << QByteArray("../my\\ bench/say.sh it");
    QTest::newRow("of the system") << QByteArray("\"sh -c 'echo it > seen'\"");
    QTest::newRow("absolute") << QByteArray("\"/bin/sh -c 'echo it > seen'\"");
}

void tst_NorvoPanelFiles::programOfAnIncludedFileIsRelativeToItsFolder()
{
    QFETCH(QByteArray, command);
    const Start start("include: ['../my bench/t.yaml']\ndevices: {a: {use: t}}\n");
    QVERIFY(QDir(start.path()).mkpath("my bench/bin"));
    for (const QString& name : {QString("my bench/say.sh"), QString("my bench/bin/say it.sh")}) {
        start.write(name, "#!/bin/sh\necho $1 > seen\n");
        QVERIFY(QFile::setPermissions(start.filePath(name),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    start.write("my bench/t.yaml",
                "templates:\n  t:\n    devices:\n      p:\n        device: process\n"
                "        params:\n          command: " +
                    command + "\n");
    PanelProcess program(
        {"--screenshot", "o.png", "--after", "500", "--no-state", "bench/panel.yaml"});
    Start::run(program, start.path(), 0);
    QCOMPARE(program.errorLines().join('\n'), QString());
    QVERIFY(QFile::exists(start.filePath("bench/seen"))); // Programs run in the panel's folder.
}

void tst_NorvoPanelFiles::programOfAPanelRunsInItsFolder()
{
    const Start start("devices:\n  a: {device: process, params: {command: ./say.sh}}\n");
    start.write("bench/say.sh", "#!/bin/sh\necho here > seen\n");
    QVERIFY(QFile::setPermissions(start.filePath("bench/say.sh"),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    PanelProcess program({"--screenshot", start.filePath("o.png"), "--after", "500", "--no-state",
                          start.filePath("bench/panel.yaml")});
    Start::run(program, "/", 0);
    QCOMPARE(program.errorLines(), QStringList());
    QVERIFY(QFile::exists(start.filePath("bench/seen")));
}

void tst_NorvoPanelFiles::argumentsAreRelativeToTheFolderOfTheStart()
{
    const Start start(kPatch);
    start.write("s.yaml", "a: {colour: '#ff00ff'}\nb: {colour: red}\n");
    PanelProcess program({"--plugins", "plug", "--state", "s.yaml", "--screenshot", "o.png",
                          "--after", "0", "bench/panel.yaml"});
    Start::run(program, start.path(), 0);
    QCOMPARE(QImage(start.filePath("o.png")).pixelColor(400, 240), QColor("#ff00ff"));
    QCOMPARE(program.errorLines(),
             QStringList("s.yaml:2:1: warning: there is no device \"b\"; its saved values are left "
                         "aside"));
}

void tst_NorvoPanelFiles::stateIsKeptBesideThePanel()
{
    const CountingFolder folder;
    QDir(folder.path()).mkdir("elsewhere");
    PanelProcess program(probes({"../panel.yaml"}));
    program.setWorkingDirectory(folder.filePath("elsewhere"));
    program.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.saved() > 0, PanelProcess::kPatience);
    program.sendSignal(SIGTERM);
    QCOMPARE(program.waitForEnd(), 0);
    QCOMPARE(QDir(folder.filePath("elsewhere")).entryList(QDir::Files), QStringList());
}

void tst_NorvoPanelFiles::checkReportsOnEachOfSeveralFiles()
{
    const Start start(kPatch, kWrong);
    PanelProcess good({"--plugins", "plug", "--check", "bench/panel.yaml", "./bench/panel.yaml"});
    Start::run(good, start.path(), 0);
    QCOMPARE(good.outputLines(),
             (QStringList{"bench/panel.yaml: no errors", "./bench/panel.yaml: no errors"}));

    PanelProcess mixed({"--plugins", "plug", "--check", "second/panel.yaml", "bench/panel.yaml"});
    Start::run(mixed, start.path(), 1);
    const QStringList lines = mixed.outputLines();
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[0].startsWith("second/panel.yaml:2:15: error: "), qPrintable(lines[0]));
    QCOMPARE(lines.mid(1),
             (QStringList{"second/panel.yaml: 1 error", "bench/panel.yaml: no errors"}));
}

void tst_NorvoPanelFiles::eachOfSeveralFilesHasAFolderOfItsOwn()
{
    const QByteArray panel =
        "devices:\n  a: {device: qml_widget, params: {sourceData: Blue.qml}}\n";
    const Start start(panel, panel);
    PanelProcess check({"--check", "bench/panel.yaml", "second/panel.yaml", "bench/panel.yaml"});
    Start::run(check, start.path(), 1);
    const QStringList lines = check.outputLines();
    QCOMPARE(lines.filter(": no errors"),
             (QStringList{"bench/panel.yaml: no errors", "bench/panel.yaml: no errors"}));
    QCOMPARE(lines.filter(": 1 error"), QStringList("second/panel.yaml: 1 error"));
}

void tst_NorvoPanelFiles::checkReadsStandardInput()
{
    const Start start(kPatch);
    PanelProcess check({"--plugins", "plug", "--check", "bench/panel.yaml", "-"});
    Start::run(check, start.path(), 1, kWrong);
    const QStringList lines = check.outputLines();
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[1].startsWith("<stdin>:2:15: error: "), qPrintable(lines[1]));
    QCOMPARE(lines[2], QString("<stdin>: 1 error"));

    PanelProcess large({"--check", "-"});
    Start::run(large, start.path(), 1, QByteArray(5 * 1024 * 1024, ' '));
    QVERIFY(large.outputLines().value(0).contains("4 MiB"));
}

void tst_NorvoPanelFiles::pictureOfStandardInput()
{
    const Start start(kPatch);
    PanelProcess program({"--screenshot", "o.png", "--size", "400x300", "-"});
    Start::run(program, start.filePath("bench"), 0, kGreen);
    QCOMPARE(program.errorLines(), QStringList());
    QCOMPARE(QImage(start.filePath("bench/o.png")).pixelColor(200, 150), QColor("#00ff00"));
}

void tst_NorvoPanelFiles::panelFromStandardInputKeepsNoStateByItself()
{
    for (const bool isNamed : {false, true}) {
        const CountingFolder folder;
        const QByteArray panel = folder.content("panel.yaml");
        PanelProcess program(
            probes(isNamed ? QStringList{"--state", "s.yaml", "-"} : QStringList{"-"}));
        program.setWorkingDirectory(folder.path());
        program.start();
        program.write(panel);
        program.closeWriteChannel();
        QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 0, PanelProcess::kPatience);
        program.sendSignal(SIGTERM);
        QCOMPARE(program.waitForEnd(), 0);
        QCOMPARE(QDir(folder.path()).entryList({"*.yaml"}, QDir::Files),
                 isNamed ? (QStringList{"panel.yaml", "s.yaml"}) : QStringList("panel.yaml"));
    }
}

NORVO_TEST(tst_NorvoPanelFiles)
#include "tst_NorvoPanelFiles.moc"
