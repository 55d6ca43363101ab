// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "TestMain.h"
#include "host/panel/file/PanelFile.h"
#include "host/yaml/YamlTree.h"

#include <QDirIterator>
#include <QImage>
#include <QtTest>

#include <variant>

using namespace norvo;

namespace {

const QString kDocuments = NORVO_SOURCE_DIR "/docs/";
constexpr int kOpeningLines = 70; ///< Of a document: who reads it, and an example.

QString textOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The first block of that language; empty: none.
QString firstBlock(const QString& document, const QString& language)
{
    const QString fence = "\n```" + language + '\n';
    const int begin = document.indexOf(fence);
    const int end = document.indexOf("\n```\n", begin + 1);
    return begin < 0 ? QString()
                     : document.mid(begin + fence.size(), end + 1 - begin - fence.size());
}

/// The part of devices.md under that heading.
QString section(const QString& heading)
{
    static const QString page = textOf(kDocuments + "devices.md") + "\n## ";
    const int begin = page.indexOf("\n## " + heading + '\n');
    return begin < 0 ? QString() : page.mid(begin, page.indexOf("\n## ", begin + 1) - begin);
}

/// The keys of a panel's own form; parameters, ids and other names of the author's are none.
void collectKeys(const YamlNode& node, const QString& parent, QSet<QString>& keys)
{
    static const QSet<QString> named{"devices", "templates", "params", "outputs", "inputs"};
    for (const YamlEntry& entry : node.entries) {
        const QString key = entry.key ? entry.key->text : QString();
        const bool isName = named.contains(parent);
        if (entry.key && !isName) {
            keys.insert(key);
        }
        const bool isOfAuthor =
            key == "with" || key == "params" || key == "outputs" || key == "inputs";
        if (entry.key && !(isOfAuthor && !isName)) {
            collectKeys(*entry.value, isName ? QString() : key, keys);
        }
    }
}

} // namespace

/// What the documents say, held against the program.
class tst_Documents : public QObject
{
    Q_OBJECT

private slots:
    void documentBeginsWithItsReader_data();
    void documentBeginsWithItsReader();
    void documentBeginsWithAnExampleThatRuns_data();
    void documentBeginsWithAnExampleThatRuns();
    void everyNameOfAnExampleIsDescribed_data();
    void everyNameOfAnExampleIsDescribed();
    void everyKeyOfAnExampleIsDescribed_data();
    void everyKeyOfAnExampleIsDescribed();

private:
    static void addExamples();
    static void addDocuments();
};

void tst_Documents::addDocuments()
{
    QTest::addColumn<QString>("document");
    for (const char* name : {"alarms.md", "panel-files.md", "devices.md", "host-contract.md"}) {
        QTest::newRow(name) << name;
    }
}

void tst_Documents::documentBeginsWithItsReader_data()
{
    addDocuments();
}

void tst_Documents::documentBeginsWithItsReader()
{
    QFETCH(QString, document);
    const QStringList lines = textOf(kDocuments + document).split('\n');
    QVERIFY2(lines.value(2).startsWith("For those who "), qPrintable(lines.value(2)));
}

void tst_Documents::documentBeginsWithAnExampleThatRuns_data()
{
    addDocuments();
}

/// With the plug-in of host-contract.md, which is built from that document.
void tst_Documents::documentBeginsWithAnExampleThatRuns()
{
    QFETCH(QString, document);
    const QString text = textOf(kDocuments + document);
    const QString panel = firstBlock(text, "yaml");
    QVERIFY(!panel.isEmpty());
    QVERIFY(text.left(text.indexOf(panel)).count('\n') < kOpeningLines);

    const PanelFolder folder(panel.toUtf8());
    PanelProcess program({"--plugins", fixture("document"), "--no-state", "--screenshot",
                          folder.filePath("picture.png"), folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(program.errorLines(), QStringList());
    QVERIFY(!QImage(folder.filePath("picture.png")).isNull());
}

void tst_Documents::addExamples()
{
    QTest::addColumn<QString>("file");
    QDirIterator panels(NORVO_SOURCE_DIR "/examples", {"panel.yaml"}, QDir::Files,
                        QDirIterator::Subdirectories);
    while (panels.hasNext()) {
        const QString file = panels.next();
        QTest::newRow(qPrintable(QFileInfo(file).dir().dirName())) << file;
    }
}

void tst_Documents::everyNameOfAnExampleIsDescribed_data()
{
    addExamples();
}

/// Types, parameters, outputs and inputs, each in the section of its type.
void tst_Documents::everyNameOfAnExampleIsDescribed()
{
    QFETCH(QString, file);
    Diagnostics diagnostics(file);
    const PanelDescription panel = PanelFile::read(file, diagnostics);
    const QString place = section("Place on the panel");
    QVERIFY(!place.isEmpty());
    QSet<QString> missing;
    QMap<QString, DeviceSetting> devices;
    for (const DeviceSetting& device : panel.devices) {
        devices.insert(device.id.text, device);
        const QString described = section(device.type.text);
        for (const ParamSetting& param : device.params) {
            if (!(described + place).contains("\n| `" + param.name.text + "` |")) {
                missing.insert(device.type.text + ": " + param.name.text);
            }
        }
    }
    for (const ConnectionSetting& connection : panel.connections) {
        for (const Endpoint& end : {connection.from, connection.to}) {
            const DeviceSetting device = devices.value(end.device.text);
            const QString name = end.method.text.section('(', 0, 0);
            const bool isOfAuthor =
                device.type.text == "qml_widget" || // Its document has its own.
                std::any_of(device.ports.cbegin(), device.ports.cend(),
                            [&name](const PortSetting& port) { return port.name.text == name; });
            if (!isOfAuthor && !section(device.type.text).contains("\n| `" + name + '(')) {
                missing.insert(device.type.text + ": " + name);
            }
        }
    }
    QCOMPARE(missing.values(), QStringList());
}

void tst_Documents::everyKeyOfAnExampleIsDescribed_data()
{
    addExamples();
}

void tst_Documents::everyKeyOfAnExampleIsDescribed()
{
    QFETCH(QString, file);
    const auto tree = YamlTree::read(SourceText(textOf(file).toUtf8()));
    QVERIFY(std::holds_alternative<YamlNodePtr>(tree));
    QSet<QString> keys;
    collectKeys(*std::get<YamlNodePtr>(tree), {}, keys);
    QVERIFY(keys.contains("devices") && keys.contains("device"));
    const QString page = textOf(kDocuments + "panel-files.md");
    QSet<QString> missing;
    for (const QString& key : keys) {
        if (!page.contains(QRegularExpression("\n\\|.*`" + key + "`"))) {
            missing.insert(key);
        }
    }
    QCOMPARE(missing.values(), QStringList());
}

NORVO_TEST(tst_Documents)
#include "tst_Documents.moc"
