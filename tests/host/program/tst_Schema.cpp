// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "host/catalogue/Catalogue.h"
#include "host/program/PluginSet.h"
#include "TestMain.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTemporaryDir>
#include <QtTest>

using namespace norvo;

/// The schema that editors check panel files with, asked through python3-jsonschema.
class tst_Schema : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyParameterIsDescribed();
    void soundPanelIsValid_data();
    void soundPanelIsValid();
    void everyErrorOfFormIsSeen();
    void panelIsJudged_data();
    void panelIsJudged();

private:
    static QStringList panelsIn(const QString& folder)
    {
        QStringList files;
        QDirIterator panels(NORVO_SOURCE_DIR "/" + folder, {"*.yaml"}, QDir::Files,
                            QDirIterator::Subdirectories);
        while (panels.hasNext()) {
            files.append(panels.next());
        }
        return files;
    }

    /// File to "valid", "invalid" or "unreadable".
    QMap<QString, QString> verdicts(const QString& kind, const QStringList& files) const
    {
        QProcess python;
        python.start("/usr/bin/python3",
                     QStringList{NORVO_SOURCE_DIR "/tests/host/program/validate-panels.py",
                                 m_schemaFile, kind} +
                         files);
        python.waitForFinished(PanelProcess::kPatience);
        QMap<QString, QString> found;
        if (python.exitCode() != 0) {
            qWarning().noquote() << python.readAllStandardError();
            return found;
        }
        for (const QString& line :
             QString::fromUtf8(python.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts)) {
            found.insert(line.section(' ', 1), line.section(' ', 0, 0));
        }
        return found;
    }

    QTemporaryDir m_folder;
    QString m_schemaFile;
    QJsonObject m_schema;
};

void tst_Schema::initTestCase()
{
    PanelProcess program({"--schema"});
    program.takeDisplayAway();
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(program.errorLines(), QStringList());
    const QByteArray text = program.readAllStandardOutput();
    m_schema = QJsonDocument::fromJson(text).object();
    m_schemaFile = m_folder.filePath("schema.json");
    QFile file(m_schemaFile);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), qint64(text.size()));
}

void tst_Schema::everyParameterIsDescribed()
{
    PluginSet plugins;
    plugins.load(NORVO_BUILD_DIR "/plugins");
    const Catalogue catalogue(plugins.manager());
    const QJsonObject device = m_schema.value("definitions").toObject().value("device").toObject();
    const QJsonArray types = device.value("allOf").toArray();
    QCOMPARE(types.size(), catalogue.keys().size());
    for (int i = 0; i < types.size(); ++i) {
        const QJsonObject params = types[i]
                                       .toObject()
                                       .value("then")["properties"]["params"]
                                       .toObject()
                                       .value("properties")
                                       .toObject();
        for (const ParamWords& param : catalogue.words(catalogue.keys().at(i))->params) {
            const QJsonObject schema = params.value(param.name).toObject();
            QVERIFY2(schema.value("description").toString().startsWith(param.meaning),
                     qPrintable(param.name));
            QCOMPARE(schema.value("default").toString(), param.defaultValue);
            QVERIFY2(param.unit.isEmpty() || !param.options.isEmpty() ||
                         schema.value("description").toString().contains(" in " + param.unit),
                     qPrintable(param.name));
            const QString below = param.name.section('/', 1);
            if (!below.isEmpty()) {
                const QJsonValue nested = params.value(param.name.section('/', 0, 0));
                QCOMPARE(nested["properties"][below].toObject(), schema);
            }
        }
    }
}

void tst_Schema::soundPanelIsValid_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("as editors read it") << "values";
    QTest::newRow("as the program reads it") << "texts";
}

void tst_Schema::soundPanelIsValid()
{
    QFETCH(QString, kind);
    const QStringList files = panelsIn("examples") + panelsIn("tests/panels/good");
    const auto found = verdicts(kind, files);
    QVERIFY(files.size() >= 7);
    for (const QString& file : files) {
        QVERIFY2(found.value(file) == "valid", qPrintable(file));
    }
}

void tst_Schema::everyErrorOfFormIsSeen()
{
    const QString sameKey = "a YAML reader keeps one of two keys that are the same";
    const QString twice = "two spellings of one parameter are two keys";
    const QString reference = "it depends on the connections' devices";
    const QString cells = "it depends on the cells of other devices";
    const QMap<QString, QString> unseen{
        {"carriage-returns", "other YAML readers take a carriage return alone for a line end"},
        {"key-twice-in-device", sameKey},
        {"key-twice-top", sameKey},
        {"device-twice", sameKey},
        {"param-twice", sameKey},
        {"param-twice-any-case", twice},
        {"param-twice-joined", twice},
        {"missing-device", reference},
        {"unknown-signal", reference},
        {"alarm-signals", reference},
        {"unknown-slot", reference},
        {"unknown-overload", reference},
        {"types-do-not-fit", reference},
        {"several-pairs-fit", reference},
        {"duplicate-arrow", reference},
        {"cycle", reference},
        {"cycle-of-one", reference},
        {"overlapping-cells", cells},
        {"overlapping-cells-of-an-area", cells},
        {"sense-curves", "it depends on the connections to the graph"},
        {"sense-files", "it depends on the files beside the panel"},
        {"sense-relations", "it depends on the value of another parameter"},
        {"sense-texts", "colours and time formats are texts like any other"}};
    const QStringList files = panelsIn("tests/panels/bad");
    const auto found = verdicts("values", files);
    for (const QString& file : files) {
        const QString reason = unseen.value(QFileInfo(file).baseName());
        const QString verdict = found.value(file);
        const bool isSeen = verdict == "invalid" || verdict == "unreadable";
        QVERIFY2(!verdict.isEmpty() && isSeen == reason.isEmpty(),
                 qPrintable(QString("%1 is %2; %3").arg(file, verdict, reason)));
    }
}

void tst_Schema::panelIsJudged_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("verdict");
    const auto row = [](const char* name, const QByteArray& text, bool isValid) {
        QTest::newRow(name) << text << (isValid ? "valid" : "invalid");
    };
    const auto button = [](const QByteArray& params) {
        return "devices: {a: {device: button, params: {" + params + "}}}\n";
    };
    row("type in any case", "devices: {a: {device: BuTTon}}\n", true);
    row("parameter of another type", button("widget/precision: 2"), false);
    row("parameter of another type, in a map", button("widget: {precision: 2}"), false);
    row("parameter in any case", button("TEXT: a, Widget/Row: 1"), true);
    row("map in any case", button("Widget: {Row: 1}"), true);
    row("number in range", button("widget/fontSize: 500"), true);
    row("number out of range", button("widget/fontSize: 501"), false);
    row("number out of range, in a map", button("widget: {fontSize: 0}"), false);
    row("number in quotes", button("widget/fontSize: '12'"), true);
    row("text for a number", button("widget/fontSize: large"), false);
    row("number for a text", button("text: 12.5"), true);
    row("nothing for a text", button("text: "), true);
    row("yes", button("toggled: Yes"), true);
    row("one", button("toggled: 1"), true);
    row("two", button("toggled: 2"), false);
    row("option", button("mode: click"), true);
    row("no option", button("mode: press"), false);
    const auto process = [](const QByteArray& ports) {
        return "devices: {a: {device: process, " + ports + "}}\n";
    };
    row("named outputs", process("outputs: {t: 'T (.*)', u-2: {as: U, decimal: comma}}"), true);
    row("named inputs", process("inputs: {set: {as: 'set %1', resend: true}, 3: 5}"), true);
    row("no named inputs", process("inputs: "), true);
    row("definition, a list", process("inputs: {set: [a]}"), false);
    row("option, a map", process("inputs: {set: {as: {a: b}}}"), false);
    row("name with a point", process("outputs: {a.b: x}"), false);
    row("name from a placeholder",
        "templates: {t: {with: {n: }, devices: {a: {device: process, "
        "outputs: {x-$(n): y}}}}}\n",
        true);
    row("named outputs of a button", "devices: {a: {device: button, outputs: {x: y}}}\n", false);
    row("list for a text", button("text: [a]"), false);
    row("file of templates", "templates: {t: {devices: {a: {device: label}}}}\n", true);
    row("placeholders",
        "templates:\n  t:\n    with: {n: , size: 3, mode: }\n    devices:\n"
        "      x$(n): {device: button, network: $(n), params: {widget/fontSize: $(size),\n"
        "              toggled: $(n), mode: $(mode), widget: {row: $(n)}, $(n): 1}}\n"
        "      b: {device: $(n)}\n"
        "    connections: ['$(n) -> b.input', '$(n).$(mode) -> x$(n).click']\n",
        true);
    row("type in a template", "templates: {t: {devices: {a: {device: buton}}}}\n", false);
    row("key of a template", "templates: {t: {device: {}}}\n", false);
    row("default of a placeholder", "templates: {t: {with: {n: [1]}}}\n", false);
    row("use", "include: [a.yaml]\ndevices: {u: {use: t, with: {n: 1}, at: {row: 2, area: b}}}\n",
        true);
    row("key of a use", "devices: {u: {use: t, params: {}}}\n", false);
    row("position of a use", "devices: {u: {use: t, at: {row: -1}}}\n", false);
    row("key of a position", "devices: {u: {use: t, at: {rows: 1}}}\n", false);
    row("include of a text", "include: a.yaml\n", false);
    const auto access = [&](const QByteArray& roles) {
        return button("text: a") + "access: {roles: {" + roles + "}}\n";
    };
    row("PINs", access("operate: $argon2id$a, engineer: $argon2id$b"), true);
    row("PIN of a role that there is not", access("operate: $argon2id$a, guest: $argon2id$b"),
        false);
    row("PIN that is no hash", access("operate: 1234"), false);
    row("include of nothing", "include: ['']\n", false);
}

void tst_Schema::panelIsJudged()
{
    QFETCH(QByteArray, text);
    const QString name = m_folder.filePath("panel.yaml");
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    QTEST(verdicts("values", {name}).value(name), "verdict");
}

NORVO_TEST(tst_Schema)
#include "tst_Schema.moc"
