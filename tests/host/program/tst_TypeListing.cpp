// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "host/catalogue/Catalogue.h"
#include "host/panel/TestPanel.h"
#include "host/panel/file/PanelFile.h"
#include "host/program/PluginSet.h"
#include "host/window/PanelWindow.h"
#include "norvo/BaseDevice.h"
#include "TestMain.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <memory>

using namespace norvo;

/// What the program says of the device types, and the page that is made of it.
class tst_TypeListing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typesAreNamedInALineEach();
    void typeIsDescribedInAnyCaseAndWithoutADisplay();
    void unknownTypeIsWrongUsage_data();
    void unknownTypeIsWrongUsage();
    void typesOfAStrangerAreDescribedToo();
    void allFormsSayTheSame();
    void devicesPageIsWhatTheProgramPrints();
    void everyTypeHasAPicture_data() { everyType(); }
    void everyTypeHasAPicture();
    void smallestPanelRuns_data() { everyType(); }
    void smallestPanelRuns();

private:
    void everyType() const
    {
        QTest::addColumn<QString>("type");
        for (const QString& type : m_catalogue->keys()) {
            QTest::newRow(qPrintable(type)) << type;
        }
    }
    static QByteArray printed(const QStringList& arguments)
    {
        PanelProcess program(arguments);
        const int status = program.runToEnd();
        const QStringList errors = program.errorLines();
        return status == 0 && errors.isEmpty() ? program.readAllStandardOutput()
                                               : errors.join('\n').toUtf8();
    }

    PluginSet m_plugins;
    std::unique_ptr<Catalogue> m_catalogue;
};

void tst_TypeListing::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    m_catalogue = std::make_unique<Catalogue>(m_plugins.manager());
}

void tst_TypeListing::typesAreNamedInALineEach()
{
    const QStringList lines =
        QString::fromUtf8(printed({"--types"})).split('\n', Qt::SkipEmptyParts);
    const QStringList keys = m_catalogue->keys();
    QCOMPARE(lines.size(), keys.size());
    for (int i = 0; i < keys.size(); ++i) {
        QVERIFY2(lines[i].startsWith(keys[i] + ' '), qPrintable(lines[i]));
        QVERIFY2(lines[i].endsWith(m_catalogue->words(keys[i])->purpose), qPrintable(lines[i]));
    }
}

void tst_TypeListing::typeIsDescribedInAnyCaseAndWithoutADisplay()
{
    PanelProcess program({"--describe", "Slider"});
    program.takeDisplayAway();
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(program.errorLines(), QStringList());
    const QString text = program.outputLines().join('\n');
    for (const char* part :
         {"slider: A whole number", "widget/orientation", "horizontal or vertical",
          "whole number, at least 1; default 1", "widget/minValue < widget/maxValue",
          "output(double): number", "Place on the panel", "widget/colspan", "device: slider"}) {
        QVERIFY2(text.contains(part), part);
    }
    QVERIFY(!text.contains("wgOutput"));
}

void tst_TypeListing::unknownTypeIsWrongUsage_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("error");
    QTest::newRow("near") << "buton"
                          << "norvo-panel: unknown device type \"buton\"; did you mean \"button\"?";
    QTest::newRow("far") << "thermostat"
                         << "norvo-panel: unknown device type \"thermostat\"; valid names: "
                            "button, calc, checkbox, ";
}

void tst_TypeListing::unknownTypeIsWrongUsage()
{
    QFETCH(QString, type);
    QFETCH(QString, error);
    PanelProcess program({"--describe", type});
    QCOMPARE(program.runToEnd(), 2);
    QCOMPARE(program.outputLines(), QStringList());
    const QStringList lines = program.errorLines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith(error), qPrintable(lines[0]));
}

void tst_TypeListing::typesOfAStrangerAreDescribedToo()
{
    const QByteArray text =
        printed({"--plugins", fixture("probes"), "--describe", "patch", "--format", "text"});
    QVERIFY2(text.startsWith("patch:\n"), text.constData());
}

void tst_TypeListing::allFormsSayTheSame()
{
    const QString text = QString::fromUtf8(printed({"--describe-all"})).simplified();
    const QString page = QString::fromUtf8(printed({"--describe-all", "--format", "markdown"}));
    QJsonParseError error;
    const QJsonDocument json =
        QJsonDocument::fromJson(printed({"--describe-all", "--format", "json"}), &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
    const QJsonArray types = json.object().value("types").toArray();
    QCOMPARE(types.size(), m_catalogue->keys().size());
    for (const auto& type : types) {
        const QJsonObject object = type.toObject();
        QVERIFY(text.contains(object.value("purpose").toString()));
        QVERIFY(page.contains("\n## " + object.value("type").toString() + "\n"));
        for (const char* list : {"parameters", "outputs", "inputs"}) {
            for (const auto& entry : object.value(list).toArray()) {
                const QJsonObject part = entry.toObject();
                const QString name =
                    part.value(part.contains("signature") ? "signature" : "name").toString();
                if (!part.value("forWidget").toBool()) {
                    QVERIFY2(text.contains(name), qPrintable(name));
                    QVERIFY2(page.contains("`" + name + "`"), qPrintable(name));
                    QVERIFY2(text.contains(part.value("meaning").toString()), qPrintable(name));
                }
            }
        }
        const TypeWords* const words = m_catalogue->words(object.value("type").toString());
        QCOMPARE(object.value("parameters").toArray().size(), words->params.size());
        QCOMPARE(object.value("outputs").toArray().size(), words->outputs.size());
        QCOMPARE(object.value("inputs").toArray().size(), words->inputs.size());
        QCOMPARE(object.value("example").toString(), words->example);
    }
}

void tst_TypeListing::devicesPageIsWhatTheProgramPrints()
{
    QFile page(NORVO_SOURCE_DIR "/docs/devices.md");
    QVERIFY(page.open(QIODevice::ReadOnly));
    QVERIFY2(printed({"--describe-all", "--format", "markdown"}) == page.readAll(),
             "docs/devices.md is not current; ./docs/make-devices writes it");
}

void tst_TypeListing::everyTypeHasAPicture()
{
    QFETCH(QString, type);
    const QImage picture(NORVO_SOURCE_DIR "/docs/pictures/devices/" + type + ".png");
    QVERIFY(!picture.isNull());
    QVERIFY(picture.width() <= 640 && picture.height() <= 480);
}

void tst_TypeListing::smallestPanelRuns()
{
    QFETCH(QString, type);
    Diagnostics diagnostics("panel.yaml");
    const PanelDescription description =
        PanelFile::parse(m_catalogue->words(type)->example.toUtf8(), "panel.yaml", diagnostics);
    QVERIFY2(diagnostics.isEmpty(), qPrintable(diagnostics.sorted().value(0).toString()));
    PanelWindow window("Example");
    TestPanel panel(m_plugins.manager(), description);
    panel.start(window.page());
    QVERIFY2(panel.diagnostics().isEmpty(),
             qPrintable(panel.diagnostics().sorted().value(0).toString()));
    for (const DeviceSetting& device : description.devices) {
        QVERIFY2(panel.device(device.id.text)->isRunning(), qPrintable(device.id.text));
    }
}

NORVO_TEST(tst_TypeListing)
#include "tst_TypeListing.moc"
