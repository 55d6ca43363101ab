// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Diagnostic;
using norvo::Diagnostics;
using norvo::PanelFile;

namespace {

const QString kFolder = "tests/panels/bad/";

struct FileErrors
{
    const char* name;
    QStringList lines;
};

const QVector<FileErrors> kErrors{
    {"empty", {"1:1: error: the file is empty; a panel begins with \"devices:\""}},
    {"only-comments", {"1:1: error: the file is empty; a panel begins with \"devices:\""}},
    {"absent-value", {"1:1: error: the file is empty; a panel begins with \"devices:\""}},
    {"nul-byte", {"1:9: error: NUL byte; the file must be plain text"}},
    {"control-character", {"1:9: error: control character (U+0004); the file must be plain text"}},
    {"carriage-returns",
     {"1:13: error: carriage return without a line feed; the file must be plain text"}},
    {"invalid-utf8", {"1:15: error: byte is not valid UTF-8; save the file as UTF-8"}},
    {"tab-indentation", {"3:1: error: tab in indentation; use spaces"}},
    {"tab-after-spaces", {"4:3: error: tab in indentation; use spaces"}},
    {"tab-in-brackets", {"3:1: error: tab in indentation; use spaces"}},
    {"alias-bomb", {"6:36: error: more than 100,000 values once aliases are followed"}},
    {"alias-of-itself", {"4:13: error: this alias is inside the value that it names"}},
    {"alias-without-anchor",
     {"3:13: error: broken YAML: no anchor of this name is defined above; a text "
      "that begins with \"*\" needs quotes"}},
    {"deep-nesting", {"2:77: error: nested deeper than 64 levels"}},
    {"second-document",
     {"2:1: error: a second document begins here; a file holds one, without this \"---\""}},
    {"top-level-list",
     {"1:1: error: a panel is a map with the keys title, devices and connections"}},
    {"top-level-text",
     {"2:1: error: a panel is a map with the keys title, devices and connections"}},
    {"unclosed-quotes", {"5:21: error: broken YAML: unterminated quoted string; '\"' is missing"}},
    {"unclosed-quotes-at-end",
     {"1:8: error: broken YAML: unterminated quoted string; \"'\" is missing"}},
    {"unclosed-list",
     {"1:14: error: broken YAML: the list that opens here is not closed; "
      "\"]\" is missing before line 3, column 6"}},
    {"unclosed-list-in-list",
     {"4:3: error: broken YAML: the list that opens here is not closed; "
      "\"]\" is missing before line 5, column 1"}},
    {"unclosed-map",
     {"2:8: error: broken YAML: the map that opens here is not closed; \"}\" "
      "is missing before line 3, column 7"}},
    {"bracket-mismatch",
     {"1:23: error: broken YAML: \"}\" is not expected here; check that brackets match"}},
    {"colon-in-text",
     {"1:13: error: broken YAML: no \":\" is expected here; check the "
      "indentation, or put a text that holds \": \" in quotes"}},
    {"param-map-under-text",
     {"6:12: error: broken YAML: no \":\" is expected here; check the "
      "indentation, or put a text that holds \": \" in quotes"}},
    {"wrong-indentation",
     {"4:3: error: broken YAML: the next key of the map that begins in line "
      "1, column 1 is expected here; check the indentation and the quotes"}},
    {"list-under-text",
     {"3:1: error: broken YAML: the next key of the map that begins in line "
      "1, column 1 is expected here; check the indentation and the quotes"}},
    {"list-on-the-line",
     {"1:14: error: broken YAML: no list entry is expected here; a list "
      "begins on a line of its own, and the text \"-\" needs quotes"}},
    {"text-after-quotes",
     {"1:16: error: broken YAML: the next key of the map that begins in line "
      "1, column 1 is expected here; check the indentation and the quotes"}},
    {"reserved-character",
     {"1:8: error: broken YAML: a text without quotes cannot start with \"@\"; put it in quotes"}},
    {"unknown-escape",
     {"1:17: error: broken YAML: unknown escape sequence; a "
      "backslash in double quotes is written twice"}},
    {"star-alone",
     {"1:9: error: broken YAML: a name is expected after \"*\"; a text that "
      "begins with \"*\" needs quotes"}},
    {"document-line-in-quotes",
     {"2:1: error: broken YAML: this line is inside a quoted string; the string "
      "is unterminated, or the line needs indentation"}},
    {"loose-text-after-list",
     {"2:1: error: broken YAML: this is outside of the list or map above it; check the "
      "indentation and the quotes"}},
    {"merge-key", {"5:5: error: \"<<\" merges nothing here; give the alias as the value itself"}},
    {"merge-key-in-quotes",
     {"1:1: error: unknown key \"<<\"; a panel has title, devices, connections, templates, "
      "include, access, alarms, audit, history, theme, touch, design, fit, language, pages, "
      "rows and columns"}},
    {"key-no-text", {"2:1: error: a key must be a text"}},
    {"key-twice-top",
     {"3:1: error: the key \"title\" is given twice; it is already in line 1, column 1"}},
    {"key-twice-in-device",
     {"4:5: error: the key \"device\" is given twice; it is already in line 3, column 5"}},
    {"key-twice-in-list",
     {"2:5: error: a connection is a text such as \"source.signal -> target.slot\"",
      "2:18: error: the key \"a\" is given twice; it is already in line 2, column 6"}},
    {"device-twice",
     {"5:3: error: the device \"cpu\" is given twice; it is already in line 2, column 3"}},
    {"param-twice",
     {"4:42: error: the key \"Value\" is given twice; it is already in line 4, "
      "column 14"}},
    {"param-twice-any-case",
     {"6:7: error: the parameter \"value\" is given twice; it is already in line "
      "5, column 7"}},
    {"param-twice-joined",
     {"6:27: error: the parameter \"widget/row\" is given twice; it is already in "
      "line 5, column 7"}},
    {"unknown-key",
     {"1:1: error: unknown key \"devcies\"; did you mean \"devices\"?",
      "2:1: error: unknown key \"layout\"; a panel has title, devices, connections, templates, "
      "include, access, alarms, audit, history, theme, touch, design, fit, language, pages, "
      "rows and columns"}},
    {"unknown-key-of-device",
     {"4:5: error: unknown key \"parms\" of the device \"cpu\"; did you mean \"params\"?",
      "5:5: error: unknown key \"interval\" of the device \"cpu\"; a device has device, params, "
      "outputs, inputs, network, keep, access and confirm, and its parameters stand in params"}},
    {"pages",
     {"2:15: error: the name of a page must be a text, and not empty",
      "2:19: error: the name of a page must be a text, and not empty",
      "2:35: error: the page \"Main\" is given twice"}},
    {"title-list", {"1:8: error: the title must be a text"}},
    {"devices-list",
     {"2:3: error: devices must be a map: the id of each device, and what it is, as in \"start: "
      "{device: button}\""}},
    {"devices-text",
     {"1:10: error: devices must be a map: the id of each device, and what it is, as in \"start: "
      "{device: button}\""}},
    {"device-text",
     {"2:8: error: the device \"cpu\" must be a map, such as {device: system}",
      "3:9: error: the device \"text\" must be a map, such as {device: TYPE}"}},
    {"device-list", {"2:8: error: the device \"cpu\" must be a map, such as {device: TYPE}"}},
    {"no-type",
     {"2:3: error: the device \"cpu\" has no type; add \"device: TYPE\"",
      "4:3: error: the device \"text\" has no type; add \"device: TYPE\""}},
    {"empty-type",
     {"3:5: error: the type of the device \"cpu\" is empty; write \"device: TYPE\"",
      "4:18: error: the type of the device \"text\" is empty; write \"device: TYPE\""}},
    {"type-no-text", {"3:13: error: the type of a device must be a text"}},
    {"bad-ids",
     {"2:3: error: the device id \"a.b\" may hold letters, digits, \"_\" and \"-\" only",
      "3:3: error: the device id \"a b\" may hold letters, digits, \"_\" and \"-\" only",
      "4:3: error: the id of a device is empty"}},
    {"params-list",
     {"4:13: error: params must be a map: the name of each parameter, and its value"}},
    {"params-text",
     {"4:13: error: params must be a map: the name of each parameter, and its value"}},
    {"param-list",
     {"5:17: error: the parameter \"interval\" must be a text or a map, not a list; what stands "
      "between several values in one text is said by --describe",
      "6:21: error: the parameter \"widget/row\" must be a text or a map, not a list; what stands "
      "between several values in one text is said by --describe"}},
    {"param-without-name", {"4:14: error: the name of a parameter is empty"}},
    {"network-no-bool",
     {"2:31: error: network must be true or false, not \"yes\"",
      "3:22: error: network must be true or false, not \"\"",
      "4:31: error: network must be true or false"}},
    {"alarms",
     {"2:47: error: delay lacks a unit; write \"2 ms\", \"2 s\", \"2 min\" or \"2 h\"",
      "3:47: error: an alarm has one of above, below, equals and is; this one has above already; "
      "write an alarm for each",
      "4:5: error: the alarm has no limit; add one of above, below, equals and is",
      "4:29: error: unknown key \"abvoe\" of an alarm; did you mean \"above\"?",
      "5:36: error: above must be a number",
      "5:51: error: priority must be one of high, medium, low; did you mean \"high\"?"}},
    {"keep-no-word",
     {"2:29: error: keep must be true, false, silent or send, not \"yes\"",
      "3:19: error: keep must be true, false, silent or send, not \"\"",
      "4:29: error: keep must be true, false, silent or send"}},
    {"connections-map",
     {"2:3: error: connections must be a list, with a line such as \"- source.signal -> "
      "target.slot\" for each"}},
    {"connections-text",
     {"1:14: error: connections must be a list, with a line such as \"- source.signal -> "
      "target.slot\" for each"}},
    {"arrow-no-text",
     {"2:5: error: a connection is a text such as \"source.signal -> target.slot\"",
      "3:5: error: a connection is a text such as \"source.signal -> target.slot\""}},
    {"arrow-empty",
     {"2:3: error: the connection is empty; write one such as \"source.signal -> target.slot\"",
      "3:5: error: the connection is empty; write one such as \"source.signal -> target.slot\""}},
    {"arrow-without-head",
     {"2:5: error: \"a.x b.y\" holds no \"->\"; write a connection such as "
      "\"source.signal -> target.slot\"",
      "3:5: error: \"a.x > b.y\" holds no \"->\"; write a connection such as "
      "\"source.signal -> target.slot\""}},
    {"arrow-with-two-heads",
     {"2:17: error: a connection holds one \"->\"; write one connection for each"}},
    {"arrow-empty-side",
     {"2:5: error: missing source before \"->\"; write a device's id and its "
      "signal, \"id.signal\"",
      "3:9: error: missing target after \"->\"; write a device's id and its "
      "slot, \"id.slot\"",
      "4:6: error: missing source before \"->\"; write a device's id and its "
      "signal, \"id.signal\"",
      "4:6: error: missing target after \"->\"; write a device's id and its "
      "slot, \"id.slot\""}},
    {"arrow-without-point",
     {"2:5: error: \"a\" names no signal; write \"a.signal\"",
      "2:10: error: \"b\" names no slot; write \"b.slot\"",
      "3:6: error: \"a(double)\" names no signal; write \"a(double).signal\"",
      "3:19: error: \"\"b\"\" names no slot; write \"\"b\".slot\""}},
    {"arrow-half-endpoint",
     {"2:5: error: the id of a device is missing before \".x\"",
      "2:11: error: \"b.\" names no slot; write \"b.slot\""}},
    {"much-of-everything",
     {"14:32: error: the parameter \"widget/column\" must be a text or a map, not a list; what "
      "stands between several values in one text is said by --describe",
      "20:3: error: the connection is empty; write one such as \"source.signal -> target.slot\"",
      "21:5: error: a connection is a text such as \"source.signal -> target.slot\""}},
    {"many-errors",
     {"1:1: error: unknown key \"titel\"; did you mean \"title\"?",
      "3:3: error: the device id \"a b\" may hold letters, digits, \"_\" and \"-\" only",
      "3:32: error: params must be a map: the name of each parameter, and its value",
      "4:3: error: the device \"text\" has no type; add \"device: TYPE\"",
      "5:14: error: network must be true or false, not \"maybe\"",
      "7:5: error: \"a.x\" holds no \"->\"; write a connection such as \"source.signal -> "
      "target.slot\"",
      "8:12: error: \"b\" names no slot; write \"b.slot\"",
      "9:1: error: the key \"devices\" is given twice; it is already in line 2, column 1"}}};

/// What reading the file reports, each line without the file's name.
QStringList errorsOf(const QString& name)
{
    const QString file = kFolder + name + ".yaml";
    Diagnostics diagnostics(file);
    PanelFile::read(file, diagnostics);
    QStringList lines;
    for (const Diagnostic& error : diagnostics.sorted()) {
        lines += error.toString().mid(file.size() + 1);
    }
    return lines;
}

} // namespace

/// One file for each error of form, under the file's name.
class tst_PanelFileErrors : public QObject
{
    Q_OBJECT

private slots:
    void everyFileReportsItsErrors_data()
    {
        QTest::addColumn<QStringList>("expected");
        for (const FileErrors& file : kErrors) {
            QTest::newRow(file.name) << file.lines;
        }
    }
    void everyFileReportsItsErrors()
    {
        QFETCH(QStringList, expected);
        const QString file = kFolder + QTest::currentDataTag() + ".yaml";
        QVERIFY2(QFile::exists(file), qPrintable(file));
        QCOMPARE(errorsOf(QTest::currentDataTag()).join('\n'), expected.join('\n'));
    }

    void allOtherFilesAreSoundInForm()
    {
        const QStringList files = QDir(kFolder).entryList({"*.yaml"});
        QVERIFY(files.size() >= kErrors.size());
        for (const QString& file : files) {
            const QString name = QFileInfo(file).baseName();
            const bool isListed =
                std::any_of(kErrors.cbegin(), kErrors.cend(),
                            [&name](const FileErrors& known) { return name == known.name; });
            QVERIFY2(isListed || errorsOf(name).isEmpty(), qPrintable(file));
        }
    }

    void idMayHoldLettersAndMarksOfAnyLanguage()
    {
        for (const char* id : {"W\xc3\xa4rme", "\xe0\xa4\x95\xe0\xa4\xbf", "\xe6\xb8\xa9-1_a"}) {
            Diagnostics diagnostics("p");
            PanelFile::parse("devices: {" + QByteArray(id) + ": {device: x}}\n", "p", diagnostics);
            QVERIFY2(diagnostics.isEmpty(), id);
        }
    }

    void theNameIsTheOneThatTheUserGave()
    {
        const QString file = "./tests/../tests/panels/bad/title-list.yaml";
        Diagnostics diagnostics(file);
        QCOMPARE(PanelFile::read(file, diagnostics).file, file);
        QCOMPARE(diagnostics.sorted().size(), 1);
        QCOMPARE(diagnostics.sorted().first().toString(),
                 file + ":1:8: error: the title must be a text");
        QCOMPARE(PanelFile::parse("title: x", "-", diagnostics).file, QString("-"));
    }

    void secondSignOrNameIsFoundWhereverItStands_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("signs side by side")
            << QByteArray("connections: [a.x ->-> b.y]\n")
            << "p:1:21: error: a connection holds one \"->\"; write one connection for each";
        QTest::newRow("capitals come second")
            << QByteArray("devices: {a: {device: x, params: {text: 1, TEXT: 2}}}\n")
            << "p:1:44: error: the parameter \"TEXT\" is given twice; it is already in line 1, "
               "column 35";
        QTest::newRow("no type but spaces")
            << QByteArray("devices: {a: {device: \" \"}}\n")
            << "p:1:23: error: the type of the device \"a\" is empty; write \"device: TYPE\"";
    }
    void secondSignOrNameIsFoundWhereverItStands()
    {
        QFETCH(QByteArray, text);
        Diagnostics diagnostics("p");
        PanelFile::parse(text, "p", diagnostics);
        QCOMPARE(diagnostics.sorted().size(), 1);
        QTEST(diagnostics.sorted().first().toString(), "expected");
    }

    void errorsOfASharedValueAreReportedOnce()
    {
        Diagnostics diagnostics("p");
        PanelFile::parse("devices:\n  a: &a {device: x, network: 1, params: {v: [1], w: 1, w: 2}}\n"
                         "  b: *a\n  c: *a\n",
                         "p", diagnostics);
        QStringList lines;
        for (const Diagnostic& error : diagnostics.sorted()) {
            lines += error.toString();
        }
        QCOMPARE(lines,
                 (QStringList{"p:2:30: error: network must be true or false, not \"1\"",
                              "p:2:45: error: the parameter \"v\" must be a text or a map, "
                              "not a list; what stands between several values in one text is "
                              "said by --describe",
                              "p:2:56: error: the key \"w\" is given twice; it is already in "
                              "line 2, column 50"}));
    }

    void whatIsSoundBesideAnErrorIsRead()
    {
        Diagnostics diagnostics("panel.yaml");
        const auto panel = PanelFile::read(kFolder + "many-errors.yaml", diagnostics);
        QCOMPARE(panel.devices.size(), 2);
        QCOMPARE(panel.devices[0].type.text, QString("label"));
        QCOMPARE(panel.devices[1].id.text, QString("text"));
        QVERIFY(panel.connections.isEmpty());
        const auto texts = PanelFile::read(kFolder + "device-text.yaml", diagnostics);
        QCOMPARE(texts.devices.size(), 2);
        QCOMPARE(texts.devices[0].id.text, QString("cpu"));
        QCOMPARE(texts.devices[0].type.text, QString());
    }
};

NORVO_GUILESS_TEST(tst_PanelFileErrors)
#include "tst_PanelFileErrors.moc"
