// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/TestPanel.h"
#include "host/panel/file/PanelFile.h"
#include "host/window/PanelWindow.h"
#include "host/program/PluginSet.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"
#include "TestMain.h"

#include <QLabel>
#include <QTcpServer>
#include <QtTest>

using namespace norvo;

constexpr int kPatience = 60000; ///< ms; a machine under load starts a script slowly.

namespace {

/// So that an example can run beside itself.
QString freePort()
{
    QTcpServer any;
    return any.listen(QHostAddress::LocalHost) ? QString::number(any.serverPort()) : QString();
}

/// In all values of parameters.
void replace(PanelDescription& panel, const QVector<QPair<QString, QString>>& texts)
{
    for (DeviceSetting& device : panel.devices) {
        for (ParamSetting& param : device.params) {
            for (const auto& [before, after] : texts) {
                param.value.text.replace(before, after);
            }
        }
    }
}

} // namespace

/// The panels that come with the program, on the plug-ins as they are built.
class tst_Examples : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void haveNoErrors_data();
    void haveNoErrors();
    void plantIsSaidInSixtyLines();
    void plantPumpsByModbus();
    void brokerSharesValuesOfTwoPanels();
    void benchHeatsToItsSetPoint();
    void robotDrivesByItsKeys();
    void galleryShowsEveryTypeWithAWidget();
    void galleryRunsAValueThroughQmlAndBack();

private:
    PanelDescription read(const QString& example, Diagnostics& diagnostics,
                          const QString& file = "panel.yaml") const;

    PluginSet m_plugins;
};

void tst_Examples::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    QVERIFY(!m_plugins.isEmpty());
}

PanelDescription tst_Examples::read(const QString& example, Diagnostics& diagnostics,
                                    const QString& file) const
{
    QDir::setCurrent(NORVO_SOURCE_DIR "/examples/" + example);
    return PanelFile::read(file, diagnostics);
}

void tst_Examples::haveNoErrors_data()
{
    QTest::addColumn<QString>("example");

    const QDir examples(NORVO_SOURCE_DIR "/examples");
    const QStringList names = examples.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QVERIFY(names.size() >= 8);
    for (const QString& name : names) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void tst_Examples::haveNoErrors()
{
    QFETCH(QString, example);

    Diagnostics diagnostics("panel.yaml");
    const PanelDescription description = read(example, diagnostics);
    QVERIFY(diagnostics.isEmpty());

    const Catalogue catalogue(m_plugins.manager());
    PanelPages pages;
    Panel panel(pages);
    panel.apply(PanelPlan::make(description, m_plugins.manager(), {}, diagnostics, {},
                                SenseCheck(catalogue)),
                diagnostics);
    for (const Diagnostic& diagnostic : diagnostics.sorted()) {
        qWarning("%s", qPrintable(diagnostic.toString()));
    }
    QVERIFY(diagnostics.isEmpty());
}

void tst_Examples::plantIsSaidInSixtyLines()
{
    QFile file(NORVO_SOURCE_DIR "/examples/plant/panel.yaml");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().count('\n') <= 60);

    Diagnostics diagnostics("panel.yaml");
    QHash<QString, int> counts;
    for (const DeviceSetting& device : read("plant", diagnostics).devices) {
        ++counts[device.type.text];
    }
    QCOMPARE(counts["qml_widget"], 6); // A tank each.
    QCOMPARE(counts["button"], 6);
    QCOMPARE(counts["indicator"], 12);
    QCOMPARE(counts["output_graph"], 4);
    QCOMPARE(counts["graph_settings"], 16);
}

void tst_Examples::plantPumpsByModbus()
{
    const QString port = freePort();
    Diagnostics diagnostics("panel.yaml");
    PanelDescription plant = read("plant", diagnostics);
    replace(plant, {{"15020", port}, {"plant.py", "plant.py " + port}});
    PanelWindow window("Plant");
    TestPanel panel(m_plugins.manager(), plant);
    panel.start(window.page());
    QSignalSpy runs(panel.device("t2-runs"), SIGNAL(output(bool)));
    for (const bool on : {true, false}) {
        QTRY_VERIFY_WITH_TIMEOUT(!runs.isEmpty() && runs.last()[0].toBool() != on, kPatience);
        QMetaObject::invokeMethod(panel.device("t2-pump"), "click");
        QTRY_VERIFY_WITH_TIMEOUT(runs.last()[0].toBool() == on, kPatience);
    }
}

void tst_Examples::brokerSharesValuesOfTwoPanels()
{
    const QString port = freePort();
    QTemporaryFile settings;
    QVERIFY(settings.open());
    settings.write(("listener " + port + " 127.0.0.1\nallow_anonymous true\n").toUtf8());
    settings.close();
    Diagnostics diagnostics("panel.yaml");
    PanelDescription inRoom = read("broker", diagnostics);
    PanelDescription atOven = read("broker", diagnostics, "machine.yaml");
    QVERIFY(diagnostics.isEmpty());
    for (PanelDescription* panel : {&inRoom, &atOven}) {
        replace(*panel, {{"18830", port}, {"mosquitto.conf", settings.fileName()}});
    }
    PanelWindow roomWindow("Room");
    TestPanel room(m_plugins.manager(), inRoom);
    room.start(roomWindow.page());
    PanelWindow ovenWindow("Oven");
    TestPanel oven(m_plugins.manager(), atOven);
    oven.start(ovenWindow.page());

    QSignalSpy there(room.device("machine"), SIGNAL(output(bool)));
    QSignalSpy temperature(room.device("temperature"), SIGNAL(output(double)));
    QSignalSpy heating(room.device("lamp"), SIGNAL(output(bool)));
    QTRY_VERIFY_WITH_TIMEOUT(!there.isEmpty() && there.last()[0].toBool(), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(temperature.count() > 3, kPatience);
    QMetaObject::invokeMethod(room.device("goal"), "input", Q_ARG(double, 69));
    QTRY_VERIFY_WITH_TIMEOUT(!heating.isEmpty() && heating.last()[0].toBool(), kPatience);
    oven.stop();
    QTRY_VERIFY_WITH_TIMEOUT(!there.last()[0].toBool(), kPatience);
}

void tst_Examples::benchHeatsToItsSetPoint()
{
    Diagnostics diagnostics("panel.yaml");
    PanelWindow window("Bench");
    TestPanel panel(m_plugins.manager(), read("bench", diagnostics));
    panel.start(window.page());
    QSignalSpy lamp(panel.device("lamp"), SIGNAL(output(bool)));
    QSignalSpy log(panel.device("log"), SIGNAL(output(QString)));
    QSignalSpy temperature(panel.device("temperature"), SIGNAL(output(double)));
    QTRY_VERIFY_WITH_TIMEOUT(temperature.count() > 3, kPatience);
    const double cold = temperature.last()[0].toDouble();

    QMetaObject::invokeMethod(panel.device("goal"), "input", Q_ARG(double, 35));
    QMetaObject::invokeMethod(panel.device("heat"), "click");
    QTRY_VERIFY_WITH_TIMEOUT(!lamp.isEmpty() && lamp.last()[0].toBool(), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(temperature.last()[0].toDouble() > cold + 1, kPatience);
    QStringList lines;
    for (const QList<QVariant>& line : log) {
        lines.append(line[0].toString());
    }
    QVERIFY2(lines.contains("set-point 35.0 °C"), qPrintable(lines.join('\n')));
}

void tst_Examples::robotDrivesByItsKeys()
{
    Diagnostics diagnostics("panel.yaml");
    PanelWindow window("Robot");
    TestPanel panel(m_plugins.manager(), read("robot", diagnostics));
    panel.start(window.page());
    QSignalSpy speed(panel.device("speed"), SIGNAL(output(double)));
    QSignalSpy heading(panel.device("heading"), SIGNAL(output(double)));
    QTRY_VERIFY_WITH_TIMEOUT(!heading.isEmpty(), kPatience);
    QCOMPARE(heading.last()[0].toDouble(), 0.0);

    QMetaObject::invokeMethod(panel.device("right"), "click");
    QTRY_VERIFY_WITH_TIMEOUT(heading.last()[0].toDouble() > 0, kPatience);
    QMetaObject::invokeMethod(panel.device("back"), "click");
    QTRY_VERIFY_WITH_TIMEOUT(speed.last()[0].toDouble() < -0.1, kPatience);
}

void tst_Examples::galleryShowsEveryTypeWithAWidget()
{
    Diagnostics diagnostics("panel.yaml");
    QStringList shown;
    for (const DeviceSetting& device : read("gallery", diagnostics).devices) {
        shown.append(device.type.text);
    }
    const auto infos = m_plugins.manager().typeInfos();
    QVERIFY(infos.size() > 17);
    for (auto info = infos.cbegin(); info != infos.cend(); ++info) {
        QVERIFY2(info->kind != DeviceTypeInfo::kWithWidget || shown.contains(info.key()),
                 qPrintable(info.key()));
    }
}

void tst_Examples::galleryRunsAValueThroughQmlAndBack()
{
    Diagnostics diagnostics("panel.yaml");
    PanelWindow window("Gallery");
    TestPanel panel(m_plugins.manager(), read("gallery", diagnostics));
    panel.start(window.page());

    QSignalSpy doubled(panel.device("doubled"), SIGNAL(output(QString)));
    QMetaObject::invokeMethod(panel.device("slide"), "input", Q_ARG(double, 21.0));
    QCOMPARE(doubled.count(), 1);
    QCOMPARE(doubled[0][0].toString(), QString("42"));
    const auto* label = panel.widget("doubled")->findChild<QLabel*>();
    QVERIFY(label);
    QCOMPARE(label->text(), QString("42"));

    QString signature;
    const QObject* provider = panel.device("doubler")->getProvider("output", signature);
    QVERIFY(provider && provider != panel.device("doubler"));
    QCOMPARE(provider->objectName(), QString("doubler"));
}

NORVO_TEST(tst_Examples)
#include "tst_Examples.moc"
