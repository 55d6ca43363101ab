#include "host/panel/PanelFile.h"

#include <QtTest>

using norvo::Fault;
using norvo::Faults;
using norvo::PanelFile;

namespace {

const QString kFolder = "tests/panels/bad/";

/// What reading the file tells, each line without the file's name.
QStringList faultsOf(const QString& name)
{
    const QString file = kFolder + name + ".yaml";
    Faults faults;
    PanelFile::read(file, faults);
    QStringList lines;
    for (const Fault& fault : faults) {
        lines += fault.toString().mid(file.size() + 1);
    }
    return lines;
}

} // namespace

/// One file for each fault of form, under the file's name.
class tst_PanelFileFaults : public QObject
{
    Q_OBJECT

private slots:
    void everyFileTellsItsFaults_data()
    {
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("empty") << QStringList{
            "1:1: error: the file is empty; a panel begins with \"devices:\""};
        QTest::newRow("only-comments")
            << QStringList{"1:1: error: the file is empty; a panel begins with \"devices:\""};
        QTest::newRow("absent-value")
            << QStringList{"1:1: error: the file is empty; a panel begins with \"devices:\""};
        QTest::newRow("nul-byte") << QStringList{
            "1:9: error: a NUL byte stands here; a panel file is plain text"};
        QTest::newRow("control-character") << QStringList{
            "1:9: error: a control character (U+0004) stands here; a panel file is plain text"};
        QTest::newRow("carriage-returns")
            << QStringList{"1:13: error: a carriage return without a line feed stands here; a "
                           "panel file is plain text"};
        QTest::newRow("invalid-utf8")
            << QStringList{"1:15: error: this byte is not valid UTF-8; save the file as UTF-8"};
        QTest::newRow("tab-indentation")
            << QStringList{"3:1: error: a tab stands in the indentation; use blanks"};
        QTest::newRow("tab-after-blanks")
            << QStringList{"4:3: error: a tab stands in the indentation; use blanks"};
        QTest::newRow("tab-in-brackets")
            << QStringList{"3:1: error: a tab stands in the indentation; use blanks"};
        QTest::newRow("alias-bomb")
            << QStringList{"6:36: error: more than 100,000 values once aliases are followed"};
        QTest::newRow("alias-of-itself")
            << QStringList{"4:13: error: this alias stands inside the value that it names"};
        QTest::newRow("alias-without-anchor")
            << QStringList{"3:13: error: broken YAML: no anchor of this name stands above; a text "
                           "that begins with \"*\" needs quotes"};
        QTest::newRow("deep-nesting") << QStringList{"2:77: error: nested deeper than 64 levels"};
        QTest::newRow("second-document") << QStringList{
            "2:1: error: a second document begins here; a file holds one, without this \"---\""};
        QTest::newRow("top-level-list") << QStringList{
            "1:1: error: a panel is a map with the keys title, devices and connections"};
        QTest::newRow("top-level-text") << QStringList{
            "2:1: error: a panel is a map with the keys title, devices and connections"};
        QTest::newRow("unclosed-quotes") << QStringList{
            "5:21: error: broken YAML: the quotes that open here never close; '\"' is missing"};
        QTest::newRow("unclosed-quotes-at-end") << QStringList{
            "1:8: error: broken YAML: the quotes that open here never close; \"'\" is missing"};
        QTest::newRow("unclosed-list")
            << QStringList{"1:14: error: broken YAML: the list that opens here is not closed; "
                           "\"]\" is missing before line 3, column 6"};
        QTest::newRow("unclosed-map")
            << QStringList{"2:8: error: broken YAML: the map that opens here is not closed; \"}\" "
                           "is missing before line 3, column 7"};
        QTest::newRow("bracket-mismatch") << QStringList{
            "1:23: error: broken YAML: \"}\" is not expected here; check that brackets match"};
        QTest::newRow("colon-in-text")
            << QStringList{"1:13: error: broken YAML: no \":\" is expected here; check the "
                           "indentation, or put a text that holds \": \" in quotes"};
        QTest::newRow("param-map-under-text")
            << QStringList{"6:12: error: broken YAML: no \":\" is expected here; check the "
                           "indentation, or put a text that holds \": \" in quotes"};
        QTest::newRow("wrong-indentation")
            << QStringList{"4:3: error: broken YAML: the next key of the map that begins in line "
                           "1, column 1 is expected here; check the indentation and the quotes"};
        QTest::newRow("list-under-text")
            << QStringList{"3:1: error: broken YAML: the next key of the map that begins in line "
                           "1, column 1 is expected here; check the indentation and the quotes"};
        QTest::newRow("list-on-the-line")
            << QStringList{"1:14: error: broken YAML: no list entry is expected here; a list "
                           "begins on a line of its own, and the text \"-\" needs quotes"};
        QTest::newRow("text-after-quotes")
            << QStringList{"1:16: error: broken YAML: the next key of the map that begins in line "
                           "1, column 1 is expected here; check the indentation and the quotes"};
        QTest::newRow("reserved-character")
            << QStringList{"1:8: error: broken YAML: no text begins with \"@\"; put it in quotes"};
        QTest::newRow("unknown-escape")
            << QStringList{"1:17: error: broken YAML: no character is written like this; a "
                           "backslash in double quotes is written twice"};
        QTest::newRow("star-alone")
            << QStringList{"1:9: error: broken YAML: a name is expected after \"*\"; a text that "
                           "begins with \"*\" needs quotes"};
        QTest::newRow("document-line-in-quotes")
            << QStringList{"2:1: error: broken YAML: a text in quotes holds this line; it is not "
                           "closed, or the line needs indentation"};
        QTest::newRow("loose-text-after-list")
            << QStringList{"2:1: error: broken YAML: this belongs to nothing above it; check the "
                           "indentation and the quotes"};
        QTest::newRow("merge-key") << QStringList{
            "5:5: error: \"<<\" merges nothing here; give the alias as the value itself"};
        QTest::newRow("key-no-text") << QStringList{"2:1: error: a key must be a text"};
        QTest::newRow("key-twice-top") << QStringList{
            "3:1: error: the key \"title\" is given twice; it stands in line 1, column 1 already"};
        QTest::newRow("key-twice-in-device") << QStringList{
            "4:5: error: the key \"device\" is given twice; it stands in line 3, column 5 already"};
        QTest::newRow("key-twice-in-list") << QStringList{
            "2:5: error: an arrow is a text such as \"source.signal -> target.slot\"",
            "2:18: error: the key \"a\" is given twice; it stands in line 2, column 6 already"};
        QTest::newRow("device-twice") << QStringList{
            "5:3: error: the device \"cpu\" is given twice; it stands in line 2, column 3 already"};
        QTest::newRow("param-twice")
            << QStringList{"4:42: error: the key \"Value\" is given twice; it stands in line 4, "
                           "column 14 already"};
        QTest::newRow("param-twice-any-case")
            << QStringList{"6:7: error: the parameter \"value\" is given twice; it stands in line "
                           "5, column 7 already"};
        QTest::newRow("param-twice-joined")
            << QStringList{"6:27: error: the parameter \"widget/row\" is given twice; it stands in "
                           "line 5, column 7 already"};
        QTest::newRow("unknown-key") << QStringList{
            "1:1: error: unknown key \"devcies\"; did you mean \"devices\"?",
            "2:1: error: unknown key \"layout\"; a panel has title, devices and connections"};
        QTest::newRow("unknown-key-of-device") << QStringList{
            "4:5: error: unknown key \"parms\" of the device \"cpu\"; did you mean \"params\"?",
            "5:5: error: unknown key \"interval\" of the device \"cpu\"; a device has device, "
            "params and network"};
        QTest::newRow("title-list") << QStringList{"1:8: error: the title must be a text"};
        QTest::newRow("devices-list") << QStringList{
            "2:3: error: devices must be a map: the id of each device, and what it is"};
        QTest::newRow("devices-text") << QStringList{
            "1:10: error: devices must be a map: the id of each device, and what it is"};
        QTest::newRow("device-text")
            << QStringList{"2:8: error: the device \"cpu\" must be a map, such as {device: system}",
                           "3:9: error: the device \"text\" must be a map, such as {device: TYPE}"};
        QTest::newRow("device-list")
            << QStringList{"2:8: error: the device \"cpu\" must be a map, such as {device: TYPE}"};
        QTest::newRow("no-type") << QStringList{
            "2:3: error: the device \"cpu\" has no type; add \"device: TYPE\"",
            "4:3: error: the device \"text\" has no type; add \"device: TYPE\""};
        QTest::newRow("empty-type") << QStringList{
            "3:5: error: the type of the device \"cpu\" is empty; write \"device: TYPE\"",
            "4:18: error: the type of the device \"text\" is empty; write \"device: TYPE\""};
        QTest::newRow("type-no-text")
            << QStringList{"3:13: error: the type of a device must be a text"};
        QTest::newRow("bad-ids") << QStringList{
            "2:3: error: the device id \"a.b\" holds more than letters, digits, \"_\" and \"-\"",
            "3:3: error: the device id \"a b\" holds more than letters, digits, \"_\" and \"-\"",
            "4:3: error: the id of a device is empty"};
        QTest::newRow("params-list") << QStringList{
            "4:13: error: params must be a map: the name of each parameter, and its value"};
        QTest::newRow("params-text") << QStringList{
            "4:13: error: params must be a map: the name of each parameter, and its value"};
        QTest::newRow("param-list") << QStringList{
            "5:17: error: the parameter \"interval\" must be a text or a map, not a list",
            "6:21: error: the parameter \"widget/row\" must be a text or a map, not a list"};
        QTest::newRow("param-without-name")
            << QStringList{"4:14: error: the name of a parameter is empty"};
        QTest::newRow("network-no-bool")
            << QStringList{"2:31: error: network must be true or false, not \"yes\"",
                           "3:22: error: network must be true or false, not \"\"",
                           "4:31: error: network must be true or false"};
        QTest::newRow("connections-map")
            << QStringList{"2:3: error: connections must be a list of arrows such as "
                           "\"source.signal -> target.slot\""};
        QTest::newRow("connections-text")
            << QStringList{"1:14: error: connections must be a list of arrows such as "
                           "\"source.signal -> target.slot\""};
        QTest::newRow("arrow-no-text") << QStringList{
            "2:5: error: an arrow is a text such as \"source.signal -> target.slot\"",
            "3:5: error: an arrow is a text such as \"source.signal -> target.slot\""};
        QTest::newRow("arrow-empty") << QStringList{
            "2:3: error: the arrow is empty; write one such as \"source.signal -> target.slot\"",
            "3:5: error: the arrow is empty; write one such as \"source.signal -> target.slot\""};
        QTest::newRow("arrow-without-head")
            << QStringList{"2:5: error: \"a.x b.y\" holds no \"->\"; write an arrow such as "
                           "\"source.signal -> target.slot\"",
                           "3:5: error: \"a.x > b.y\" holds no \"->\"; write an arrow such as "
                           "\"source.signal -> target.slot\""};
        QTest::newRow("arrow-with-two-heads")
            << QStringList{"2:17: error: an arrow holds one \"->\"; write one arrow for each"};
        QTest::newRow("arrow-empty-side")
            << QStringList{"2:5: error: nothing stands before \"->\"; write a device's id and its "
                           "signal, \"id.signal\"",
                           "3:9: error: nothing stands after \"->\"; write a device's id and its "
                           "slot, \"id.slot\"",
                           "4:6: error: nothing stands before \"->\"; write a device's id and its "
                           "signal, \"id.signal\"",
                           "4:6: error: nothing stands after \"->\"; write a device's id and its "
                           "slot, \"id.slot\""};
        QTest::newRow("arrow-without-point")
            << QStringList{"2:5: error: \"a\" names no signal; write \"a.signal\"",
                           "2:10: error: \"b\" names no slot; write \"b.slot\"",
                           "3:6: error: \"a(double)\" names no signal; write \"a(double).signal\"",
                           "3:19: error: \"\"b\"\" names no slot; write \"\"b\".slot\""};
        QTest::newRow("arrow-half-endpoint")
            << QStringList{"2:5: error: the id of a device is missing before \".x\"",
                           "2:11: error: \"b.\" names no slot; write \"b.slot\""};
        QTest::newRow("much-of-everything") << QStringList{
            "14:32: error: the parameter \"widget/column\" must be a text or a map, not a list",
            "20:3: error: the arrow is empty; write one such as \"source.signal -> target.slot\"",
            "21:5: error: an arrow is a text such as \"source.signal -> target.slot\""};
        QTest::newRow("many-faults") << QStringList{
            "1:1: error: unknown key \"titel\"; did you mean \"title\"?",
            "3:3: error: the device id \"a b\" holds more than letters, digits, \"_\" and \"-\"",
            "3:32: error: params must be a map: the name of each parameter, and its value",
            "4:3: error: the device \"text\" has no type; add \"device: TYPE\"",
            "5:14: error: network must be true or false, not \"maybe\"",
            "7:5: error: \"a.x\" holds no \"->\"; write an arrow such as \"source.signal -> "
            "target.slot\"",
            "8:12: error: \"b\" names no slot; write \"b.slot\"",
            "9:1: error: the key \"devices\" is given twice; it stands in line 2, column 1 "
            "already"};
    }
    void everyFileTellsItsFaults()
    {
        QFETCH(QStringList, expected);
        const QString file = kFolder + QTest::currentDataTag() + ".yaml";
        QVERIFY2(QFile::exists(file), qPrintable(file));
        QCOMPARE(faultsOf(QTest::currentDataTag()).join('\n'), expected.join('\n'));
    }

    void theNameIsTheOneThatTheUserGave()
    {
        Faults faults;
        const QString file = "./tests/../tests/panels/bad/title-list.yaml";
        QCOMPARE(PanelFile::read(file, faults).file, file);
        QCOMPARE(faults.size(), 1);
        QCOMPARE(faults.first().toString(), file + ":1:8: error: the title must be a text");
        QCOMPARE(PanelFile::parse("title: x", "-", faults).file, QString("-"));
    }

    void faultsAreAppendedBehindOlderOnes()
    {
        Faults faults{{Fault::Severity::Warning, "other", {9, 9}, "older"}};
        PanelFile::parse("b: 1\na: 1\n", "new", faults);
        QCOMPARE(faults.size(), 3);
        QCOMPARE(faults[0].file, QString("other"));
        QCOMPARE(faults[1].place.line, 1);
        QCOMPARE(faults[2].place.line, 2);
    }

    void whatIsSoundBesideAFaultIsRead()
    {
        Faults faults;
        const auto panel = PanelFile::read(kFolder + "many-faults.yaml", faults);
        QCOMPARE(panel.devices.size(), 2);
        QCOMPARE(panel.devices[0].type.text, QString("label"));
        QCOMPARE(panel.devices[1].id.text, QString("text"));
        QVERIFY(panel.connections.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_PanelFileFaults)
#include "tst_PanelFileFaults.moc"
