// SPDX-License-Identifier: GPL-3.0-or-later

#include "XServer.h"
#include "TestMain.h"

#include <QtTest>

/// What a panel does not use takes neither time nor memory. The dynamic linker tells what it loads.
class tst_LoadedLibraries : public QObject
{
    Q_OBJECT

private slots:
    void plainPanelLoadsNothingOfWhatItDoesNotUse();
    void panelWithAGraphLoadsThePlotLibrary();
    void panelWithAQmlDeviceLoadsQtQuick();
    void plainPanelUnderXLoadsNoOpenGl();
    void qmlDeviceThatIsAddedLaterIsDrawn();
    void changedFileLoadsWhatItsNewDeviceNeeds();
    void unknownTypeIsToldWithTheNearestOfAll();

private:
    /// Has the linker write what it loads.
    void watch(PanelProcess& program)
    {
        program.setEnvironment("LD_DEBUG", "files");
        program.setEnvironment("LD_DEBUG_OUTPUT", m_folder.filePath("linker"));
    }
    /// What it has written of this process.
    QByteArray loadedBy(qint64 process) const
    {
        QFile file(m_folder.filePath(QString("linker.%1").arg(process)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Not only looked at for what it says of itself.
    static bool hasLoaded(const QString& linkerSays, const char* library)
    {
        return linkerSays.contains(QRegularExpression(QString("calling init: .*%1").arg(library)));
    }
    QByteArray loadedForPictureOf(const QString& panel);
    QString write(const QByteArray& text) const
    {
        QFile file(m_folder.filePath("panel.yaml"));
        file.open(QIODevice::WriteOnly);
        file.write(text);
        return file.fileName();
    }

    QTemporaryDir m_folder;
};

QByteArray tst_LoadedLibraries::loadedForPictureOf(const QString& panel)
{
    PanelProcess program({"--screenshot", m_folder.filePath("picture.png"), panel});
    watch(program);
    program.start();
    program.waitForStarted();
    const qint64 process = program.processId();
    return program.waitForEnd() == 0 ? loadedBy(process) : QByteArray();
}

void tst_LoadedLibraries::plainPanelLoadsNothingOfWhatItDoesNotUse()
{
    const QByteArray loaded = loadedForPictureOf(NORVO_SOURCE_DIR "/examples/hello/panel.yaml");
    QVERIFY(hasLoaded(loaded, "libnorvoguidevices"));
    QVERIFY(hasLoaded(loaded, "libnorvosources"));
    for (const char* const name :
         {"libQt5Quick", "libQt5Qml", "libQt5Network", "libQt5SerialPort", "libmosquitto",
          "libnorvomqtt", "libnorvologic", "libnorvoextras", "libQCustomPlot", "libsodium"}) {
        QVERIFY2(!hasLoaded(loaded, name), name);
    }
}

void tst_LoadedLibraries::panelWithAGraphLoadsThePlotLibrary()
{
    const QByteArray loaded = loadedForPictureOf(write("devices: {a: {device: output_vector}}\n"));
    QVERIFY(hasLoaded(loaded, "libnorvoplotwidgets"));
    QVERIFY(hasLoaded(loaded, "libQCustomPlot"));
    QVERIFY(hasLoaded(loaded, "libNorvoPlots")); // Its tools.
}

void tst_LoadedLibraries::panelWithAQmlDeviceLoadsQtQuick()
{
    const QByteArray loaded = loadedForPictureOf(NORVO_SOURCE_DIR "/examples/qml/panel.yaml");
    QVERIFY(hasLoaded(loaded, "libQt5Quick"));
}

void tst_LoadedLibraries::plainPanelUnderXLoadsNoOpenGl()
{
    if (!XServer::isInstalled()) {
        QSKIP("there is no Xvfb");
    }
    XServer server;
    PanelProcess program({"--fullscreen", write("devices: {a: {device: label}}\n")});
    watch(program);
    setDisplay(program, server.display());
    program.start();
    QVERIFY(program.waitForStarted());
    const qint64 process = program.processId();
    QTRY_VERIFY_WITH_TIMEOUT(server.pixel(500, 300) != Qt::black, PanelProcess::kPatience);
    QVERIFY(hasLoaded(loadedBy(process), "libqxcb"));
    for (const char* const name : {"libGLX_", "swrast_dri", "libLLVM"}) {
        QVERIFY2(!hasLoaded(loadedBy(process), name), name);
    }
}

/// Its window stands already, and takes no OpenGL.
void tst_LoadedLibraries::qmlDeviceThatIsAddedLaterIsDrawn()
{
    if (!XServer::isInstalled()) {
        QSKIP("there is no Xvfb");
    }
    QFile document(m_folder.filePath("Green.qml"));
    QVERIFY(document.open(QIODevice::WriteOnly));
    document.write(
        "import QtQuick 2.0\nRectangle { width: 1024; height: 600; color: \"#00ff00\" }\n");
    document.close();
    XServer server;
    PanelProcess program({"--fullscreen", write("devices: {a: {device: label}}\n")});
    watch(program);
    setDisplay(program, server.display());
    program.start();
    QVERIFY(program.waitForStarted());
    const qint64 process = program.processId();
    QTRY_VERIFY_WITH_TIMEOUT(hasLoaded(loadedBy(process), "libnorvoguidevices"),
                             PanelProcess::kPatience);
    QTest::qWait(500); // The panel is on view, and its file is watched.
    write("devices: {a: {device: qml_widget, params: {sourceData: Green.qml}}}\n");
    QTRY_COMPARE_WITH_TIMEOUT(server.pixel(500, 300), QColor("#00ff00"), PanelProcess::kPatience);
}

void tst_LoadedLibraries::changedFileLoadsWhatItsNewDeviceNeeds()
{
    PanelProcess program({write("devices: {a: {device: label}}\n")});
    watch(program);
    program.start();
    QVERIFY(program.waitForStarted());
    const qint64 process = program.processId();
    const auto has = [&](const char* name) { return hasLoaded(loadedBy(process), name); };
    QTRY_VERIFY_WITH_TIMEOUT(has("libnorvoguidevices"), PanelProcess::kPatience);
    QVERIFY(!has("libnorvologic"));
    QTest::qWait(500); // The panel is on view, and its file is watched.
    write("devices: {a: {device: label}, b: {device: timer}}\n");
    QTRY_VERIFY_WITH_TIMEOUT(has("libnorvologic"), PanelProcess::kPatience);
    QCOMPARE(program.state(), QProcess::Running);
}

void tst_LoadedLibraries::unknownTypeIsToldWithTheNearestOfAll()
{
    PanelProcess program({write("devices: {a: {device: label}, b: {device: mqqt}}\n")});
    program.start();
    QVERIFY(program.waitForErrorText("unknown device type \"mqqt\"; did you mean \"mqtt\"?"));
}

NORVO_TEST(tst_LoadedLibraries)

#include "tst_LoadedLibraries.moc"
