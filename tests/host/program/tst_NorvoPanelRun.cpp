// SPDX-License-Identifier: GPL-3.0-or-later

#include "CountingFolder.h"
#include "TestMain.h"

#include <QImage>
#include <QImageReader>
#include <QtTest>

#include <sys/stat.h>

/// The program from outside: a panel that runs, its picture, its state and its end.
class tst_NorvoPanelRun : public QObject
{
    Q_OBJECT

private slots:
    void pictureShowsThePanel();
    void pictureHasTheSizeThatIsAskedFor();
    void pictureIsOfTheKindThatItsNameSays();
    void pictureOfAnotherKindIsRefusedBeforeThePanelStarts();
    void pictureShowsTheErrors();
    void pictureThatCannotBeWrittenIsReported_data();
    void pictureThatCannotBeWrittenIsReported();
    void pictureHasRoomForAPanelLargerThanTheScreen();
    void pictureThatIsStoppedIsNotTaken();
    void startWithErrorsShowsThemAndStartsNothing();
    void startWithErrorsLeavesTheStateAlone();
    void errorOfADeviceLetsThePanelStart();
    void failedDeviceLeavesTheRestRunning();
    void onlyCalculationsLoadTheScriptEngine();
    void onlyPanelsWithQmlLoadQtQuick();
};

namespace {

const QByteArray kTwoPatches = "title: Two patches\n"
                               "devices:\n"
                               "  left:\n"
                               "    device: patch\n"
                               "    params: {colour: '#00ff00', widget/row: 0, widget/column: 0}\n"
                               "  right:\n"
                               "    device: patch\n"
                               "    params: {colour: '#0000ff', widget/row: 0, widget/column: 1}\n";

} // namespace

void tst_NorvoPanelRun::pictureShowsThePanel()
{
    const PanelFolder folder(kTwoPatches);
    const QString picture = folder.filePath("o.png");
    PanelProcess panel(probes({"--screenshot", picture, "--after", "0", folder.panel()}));
    panel.takeDisplayAway();
    QCOMPARE(panel.runToEnd(), 0);
    QCOMPARE(panel.errorLines(), QStringList());
    const QImage image(picture);
    QCOMPARE(image.size(), QSize(800, 480));
    QCOMPARE(image.pixelColor(200, 240), QColor("#00ff00"));
    QCOMPARE(image.pixelColor(600, 240), QColor("#0000ff"));
}

void tst_NorvoPanelRun::pictureHasTheSizeThatIsAskedFor()
{
    const PanelFolder folder(kTwoPatches);
    const QString picture = folder.filePath("o.png");
    for (const QSize size : {QSize(1280, 800), QSize(100, 100)}) {
        const QString text = QString("%1x%2").arg(size.width()).arg(size.height());
        PanelProcess panel(
            probes({"--screenshot", picture, "--after", "0", "--size", text, folder.panel()}));
        QCOMPARE(panel.runToEnd(), 0);
        QCOMPARE(QImage(picture).size(), size);
    }
}

void tst_NorvoPanelRun::pictureIsOfTheKindThatItsNameSays()
{
    const PanelFolder folder(kTwoPatches);
    for (const char* name : {"o.jpg", "o.BMP", "o"}) {
        PanelProcess panel(
            probes({"--screenshot", folder.filePath(name), "--after", "0", folder.panel()}));
        QCOMPARE(panel.runToEnd(), 0);
    }
    QCOMPARE(QImageReader::imageFormat(folder.filePath("o.jpg")), QByteArray("jpeg"));
    QCOMPARE(QImageReader::imageFormat(folder.filePath("o.BMP")), QByteArray("bmp"));
    QCOMPARE(QImageReader::imageFormat(folder.filePath("o")), QByteArray("png"));
}

void tst_NorvoPanelRun::pictureOfAnotherKindIsRefusedBeforeThePanelStarts()
{
    const CountingFolder folder;
    PanelProcess panel(probes({"--screenshot", folder.filePath("o.gif"), folder.panel()}));
    QCOMPARE(panel.runToEnd(), 2);
    QCOMPARE(panel.errorLines().size(), 1);
    QVERIFY(!QFile::exists(folder.filePath("log")));
    QVERIFY(!QFile::exists(folder.filePath("o.gif")));
}

void tst_NorvoPanelRun::pictureShowsTheErrors()
{
    const PanelFolder folder("devices:\n  a: {device: pach}\n");
    const QString picture = folder.filePath("o.png");
    PanelProcess panel(probes({"--screenshot", picture, "--after", "0", folder.panel()}));
    QCOMPARE(panel.runToEnd(), 1);
    QCOMPARE(panel.errorLines().size(), 1);
    QVERIFY(panel.errorLines()[0].startsWith(folder.panel() + ":2:15: error: "));
    const QImage image(picture);
    QCOMPARE(image.size(), QSize(800, 480));
    QSet<QRgb> colours;
    for (int x = 0; x < 400; ++x) {
        for (int y = 0; y < 200; ++y) {
            colours.insert(image.pixel(x, y));
        }
    }
    QVERIFY2(colours.size() > 20, "text has many shades along its edges");
}

void tst_NorvoPanelRun::pictureThatCannotBeWrittenIsReported_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << "missing/o.png";
    QTest::newRow("a folder") << ".";
    QTest::newRow("a pipe") << "pipe.png";
}

void tst_NorvoPanelRun::pictureThatCannotBeWrittenIsReported()
{
    QFETCH(QString, name);
    const PanelFolder folder(kTwoPatches);
    const QByteArray pipe = QFile::encodeName(folder.filePath("pipe.png"));
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    const QString picture = folder.filePath(name);
    PanelProcess panel(probes({"--screenshot", picture, "--after", "0", folder.panel()}));
    QCOMPARE(panel.runToEnd(), 1);
    QCOMPARE(panel.errorLines().size(), 1);
    struct stat status = {};
    QCOMPARE(stat(pipe.constData(), &status), 0);
    QVERIFY2(S_ISFIFO(status.st_mode), "no file takes the place of a pipe");
    QVERIFY2(panel.errorLines()[0].startsWith("norvo-panel: the picture " + picture +
                                              " cannot be written: "),
             qPrintable(panel.errorLines()[0]));
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList("panel.yaml"));
}

void tst_NorvoPanelRun::pictureHasRoomForAPanelLargerThanTheScreen()
{
    const PanelFolder folder("devices:\n  a: {device: label, params: {Value: '" +
                             QByteArray(200, 'm') + "'}}\n");
    const QString picture = folder.filePath("o.png");
    PanelProcess panel({"--screenshot", picture, "--after", "0", folder.panel()});
    QCOMPARE(panel.runToEnd(), 0);
    QVERIFY2(QImage(picture).width() > 1000, "the screen of the tests has 800 pixels");
}

void tst_NorvoPanelRun::pictureThatIsStoppedIsNotTaken()
{
    const CountingFolder folder;
    const QString picture = folder.filePath("o.png");
    PanelProcess panel(probes({"--screenshot", picture, "--after", "100000", folder.panel()}));
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 0, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 1);
    QCOMPARE(panel.errorLines(), QStringList("norvo-panel: stopped before the picture was taken"));
    QVERIFY(!QFile::exists(picture));
}

void tst_NorvoPanelRun::startWithErrorsLeavesTheStateAlone()
{
    const PanelFolder folder("devices: [\n");
    folder.fill("panel.state.yaml", "[broken");
    PanelProcess panel({folder.panel()});
    panel.start();
    QVERIFY(panel.waitForErrorText("is not closed"));
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 1);
    QCOMPARE(panel.errorLines().size(), 1);
    QCOMPARE(folder.content("panel.state.yaml"), QByteArray("[broken"));
}

void tst_NorvoPanelRun::errorOfADeviceLetsThePanelStart()
{
    const PanelFolder folder("devices:\n  a: {device: process, params: {command: no-such-one}}\n"
                             "  b: {device: patch, params: {closeAfter: 20}}\n");
    PanelProcess panel(probes({folder.panel()}));
    QCOMPARE(panel.runToEnd(), 0); // The patch has run, and closed the window.
    QVERIFY(!panel.errorLines().filter("there is no program \"no-such-one\"").isEmpty());
}

void tst_NorvoPanelRun::startWithErrorsShowsThemAndStartsNothing()
{
    const CountingFolder folder;
    folder.add("  a: {device: pach}\n");
    PanelProcess panel(probes({folder.panel()}));
    panel.start();
    QVERIFY(panel.waitForErrorText("panel.yaml:3:15: error: "));
    QVERIFY2(!panel.waitForFinished(300), "the window waits to be read");
    panel.sendSignal(SIGINT);
    QCOMPARE(panel.waitForEnd(), 1);
    QCOMPARE(panel.errorLines().size(), 1);
    QVERIFY(!QFile::exists(folder.filePath("log")));
}

void tst_NorvoPanelRun::failedDeviceLeavesTheRestRunning()
{
    const CountingFolder folder;
    folder.add("  bad: {device: failing}\n");
    PanelProcess panel(probes({"--plugins", fixture("relays"), folder.panel()}));
    panel.start();
    QVERIFY(panel.waitForErrorText("told to fail"));
    QTRY_VERIFY_WITH_TIMEOUT(folder.saved() > 0, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QVERIFY(panel.errorLines().filter(folder.panel() + ":3:3: error: ").size() == 1);
}

void tst_NorvoPanelRun::onlyCalculationsLoadTheScriptEngine()
{
    const PanelFolder plain("devices: {a: {device: settle}, b: {device: timer}}\n");
    const PanelFolder calculating(
        "devices: {a: {device: calc, inputs: {x: \"1\"}, outputs: {y: x + 1}}}\n");
    for (const PanelFolder* folder : {&plain, &calculating}) {
        PanelProcess panel({"--check", folder->panel()});
        panel.setEnvironment("LD_DEBUG", "files");
        QCOMPARE(panel.runToEnd(), 0);
        const QStringList loads = panel.errorLines().filter("calling init:");
        QVERIFY(!loads.filter("libnorvologic.so").isEmpty());
        QCOMPARE(loads.filter("libQt5Qml.so").isEmpty(), folder == &plain);
        QVERIFY(loads.filter("libQt5Quick.so").isEmpty());
    }
}

void tst_NorvoPanelRun::onlyPanelsWithQmlLoadQtQuick()
{
    const PanelFolder folder("");
    for (const bool isQml : {false, true}) {
        PanelProcess panel({"--screenshot", folder.filePath("o.png"), "--after", "0", "--no-state",
                            QString(NORVO_SOURCE_DIR "/examples/%1/panel.yaml")
                                .arg(isQml ? "qml" : "workstation")});
        panel.setEnvironment("LD_DEBUG", "files"); // The loader names each library.
        QCOMPARE(panel.runToEnd(), 0);
        const QStringList lines = panel.errorLines();
        QVERIFY(!lines.filter("calling init:").filter("libNorvoGUI.so").isEmpty());
        for (const char* library : {"libQt5Qml.so", "libQt5Quick.so", "libQt5QuickWidgets.so"}) {
            const QStringList loads = lines.filter("calling init:").filter(library);
            QVERIFY2(loads.isEmpty() == !isQml, library);
        }
    }
}

NORVO_GUILESS_TEST(tst_NorvoPanelRun)
#include "tst_NorvoPanelRun.moc"
