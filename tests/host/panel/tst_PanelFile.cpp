#include "host/panel/PanelFile.h"

#include "PanelTexts.h"

#include <QtTest>

using norvo::Faults;
using norvo::PanelDescription;
using norvo::PanelFile;
using panels::settings;
using panels::shown;

namespace {

PanelDescription sound(const QByteArray& text)
{
    Faults faults;
    const PanelDescription panel = panels::parse(text, faults);
    return faults.isEmpty() ? panel : PanelDescription();
}

QByteArray withParams(const QByteArray& params)
{
    return "devices:\n  a:\n    device: x\n    params:\n" + params;
}

} // namespace

class tst_PanelFile : public QObject
{
    Q_OBJECT

private slots:
    void everyKeyHasItsPlace();
    void textsInQuotesAndBlocksGiveTheirContent();
    void absentValuesAreEmpty();
    void valuesAreTakenLetterByLetter_data();
    void valuesAreTakenLetterByLetter();
    void absentValueStandsAtItsKey_data();
    void absentValueStandsAtItsKey();
    void partsOfAnArrowHaveTheirPlaces_data();
    void partsOfAnArrowHaveTheirPlaces();
    void columnsCountCharacters();
    void byteOrderMarkAndLineEndsOfOtherSystems();
    void aliasesGiveWhatTheyName();
    void tagsChangeNothing();
    void sameKeyInAnotherMapIsNoRepetition();
    void idsMayHoldLettersOfAllKinds();
};

void tst_PanelFile::everyKeyHasItsPlace()
{
    Faults faults;
    const auto panel = PanelFile::read("tests/panels/good/everything.yaml", faults);
    QVERIFY(faults.isEmpty());
    QCOMPARE(panel.file, QString("tests/panels/good/everything.yaml"));
    QCOMPARE(shown(panel.title), QString("2:8 Everything"));
    QStringList devices;
    for (const auto& device : panel.devices) {
        devices += shown(device.id) + " | " + shown(device.type) + (device.network ? " net" : "");
    }
    QCOMPARE(devices, (QStringList{"4:3 first | 5:13 label", "6:3 second-2 | 8:13 Button net",
                                   "16:3 third_3 | 16:21 label"}));
    QCOMPARE(
        settings(panel),
        (QStringList{"10:7 text = 10:13 no", "11:7 mode = 11:13 toggle", "12:7 toggled = 12:16 off",
                     "14:9 widget/row = 14:14 0", "15:9 widget/column = 15:17 1",
                     "16:37 widget/row = 16:49 1", "16:52 widget/area = 16:65 Other",
                     QString::fromUtf8("16:72 Value = 16:79 %1 °C")}));
    QCOMPARE(panel.connections.size(), 2);
    QCOMPARE(shown(panel.connections[0]),
             QString("18:5 second-2 | 18:14 toggled(bool) | 18:31 first | 18:37 "
                     "inputWarning(bool)"));
    QCOMPARE(shown(panel.connections[0].whole),
             QString("18:5 second-2.toggled(bool) -> first.inputWarning(bool)"));
    QCOMPARE(shown(panel.connections[1]),
             QString("19:6 second-2 | 19:15 clicked | 19:26 first | 19:32 reset"));
    QCOMPARE(shown(panel.connections[1].whole), QString("19:5 second-2.clicked -> first.reset"));
}

void tst_PanelFile::textsInQuotesAndBlocksGiveTheirContent()
{
    Faults faults;
    const auto panel = PanelFile::read("tests/panels/good/styles.yaml", faults);
    QVERIFY(faults.isEmpty());
    QCOMPARE(shown(panel.title), QString("3:8 It's a panel"));
    QCOMPARE(shown(panel.devices[1].type), QString("9:19 label"));
    QCOMPARE(settings(panel),
             (QStringList{"7:14 Value = 7:21 plain text", "7:33 widget/row = 7:45 0",
                          QString::fromUtf8("11:7 Value = 11:16 tab\tand é"),
                          "12:7 widget/row = 12:24 1", "16:7 Value = 16:14 two\n  lines\n",
                          "20:9 widget/row = 12:24 1", "21:9 widget/column = 21:17 1",
                          "25:7 Value = 25:14 one line", "7:14 Value = 7:21 plain text",
                          "7:33 widget/row = 7:45 0", "32:7 Value = 32:14 one text on two lines"}));
}

void tst_PanelFile::absentValuesAreEmpty()
{
    Faults faults;
    const auto panel = PanelFile::read("tests/panels/good/nothing.yaml", faults);
    QVERIFY(faults.isEmpty());
    QCOMPARE(shown(panel.title), QString("2:1 "));
    QVERIFY(panel.devices.isEmpty());
    QVERIFY(panel.connections.isEmpty());
    QCOMPARE(sound("devices:\n  a:\n    params:\n    device: x\n").devices.size(), 1);
}

void tst_PanelFile::valuesAreTakenLetterByLetter_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("expected");
    for (const char* text :
         {"no",       "No",    "on",   "true", "1.0",  "0x10", "010",      "1e3", ".5",
          "+1",       "1_000", "~",    "null", "Null", "NULL", "nullable", "~x",  "2001-01-01",
          "12:30:45", ".inf",  ".nan", "=",    "a b",  "a#b",  "a: b",     "%1",  "-"}) {
        const QString value = text;
        const bool needsQuotes = QStringList{"a: b", "%1", "-"}.contains(value);
        QTest::newRow(text) << (needsQuotes ? '\'' + value + '\'' : value) << value;
    }
    QTest::newRow("blanks around are no part of it") << "   1.0  # a remark"
                                                     << "1.0";
    QTest::newRow("double quotes keep blanks") << "\" 1 \""
                                               << " 1 ";
    QTest::newRow("empty quotes") << "\"\""
                                  << "";
    QTest::newRow("escapes in double quotes") << "\"a\\tb\\x41\\u00e9\"" << QString("a\tbAé");
    QTest::newRow("none in single quotes") << "'a\\tb'"
                                           << "a\\tb";
    QTest::newRow("a doubled single quote is one") << "'it''s'"
                                                   << "it's";
    QTest::newRow("a tab within") << "a\tb"
                                  << "a\tb";
    QTest::newRow("quotes within") << "say \"no\" [now]"
                                   << "say \"no\" [now]";
}

void tst_PanelFile::valuesAreTakenLetterByLetter()
{
    QFETCH(QString, written);
    const auto panel = sound(withParams("      v: " + written.toUtf8() + "\n      w: ~\n"));
    QCOMPARE(panel.devices.size(), 1);
    QCOMPARE(panel.devices[0].params.size(), 2);
    QTEST(panel.devices[0].params[0].value.text, "expected");
    QCOMPARE(panel.devices[0].params[1].value.text, QString("~"));
    if (written == written.trimmed() && !written.contains('#')) {
        const auto inBrackets =
            sound("devices: {a: {device: x, params: {v: " + written.toUtf8() + " }}}");
        if (!written.contains('[')) {
            QTEST(inBrackets.devices.value(0).params.value(0).value.text, "expected");
        }
    }
}

void tst_PanelFile::absentValueStandsAtItsKey_data()
{
    QTest::addColumn<QByteArray>("params");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("at the end") << QByteArray("      v:\n") << QStringList{"5:7 v = 5:7 "};
    QTest::newRow("before another key") << QByteArray("      v: # none\n\n      w: 1\n")
                                        << QStringList{"5:7 v = 5:7 ", "7:7 w = 7:10 1"};
    QTest::newRow("before a key that is a word for nothing")
        << QByteArray("      v:\n      ~: 1\n      w:\n      null: 2\n")
        << QStringList{"5:7 v = 5:7 ", "6:7 ~ = 6:10 1", "7:7 w = 7:7 ", "8:7 null = 8:13 2"};
    QTest::newRow("before such a key one level up")
        << QByteArray("      w:\n        v:\n      ~: 1\n")
        << QStringList{"6:9 w/v = 6:9 ", "7:7 ~ = 7:10 1"};
    QTest::newRow("before such a key with an anchor")
        << QByteArray("      v:\n      &k ~: 1\n")
        << QStringList{"5:7 v = 5:7 ", "6:10 ~ = 6:13 1"};
    QTest::newRow("with an anchor") << QByteArray("      v: &v\n      ~: *v\n")
                                    << QStringList{"5:7 v = 5:10 ", "6:7 ~ = 6:10 "};
    QTest::newRow("a word for nothing with an anchor")
        << QByteArray("      v: &v ~\n      w: *v\n")
        << QStringList{"5:7 v = 5:13 ~", "6:7 w = 5:13 ~"};
    QTest::newRow("in braces") << QByteArray("      {v, ~, w: , null: ~, x: ~}\n")
                               << QStringList{"5:8 v = 5:8 ", "5:11 ~ = 5:11 ", "5:14 w = 5:14 ",
                                              "5:19 null = 5:25 ~", "5:28 x = 5:31 ~"};
    QTest::newRow("a tag alone is an empty text") << QByteArray("      v: !!str\n      w: 1\n")
                                                  << QStringList{"5:7 v = 5:10 ", "6:7 w = 6:10 1"};
}

void tst_PanelFile::absentValueStandsAtItsKey()
{
    QFETCH(QByteArray, params);
    QCOMPARE(panels::faultsOf(withParams(params)), QString());
    QTEST(settings(sound(withParams(params))), "expected");
}

void tst_PanelFile::partsOfAnArrowHaveTheirPlaces_data()
{
    QTest::addColumn<QByteArray>("arrow");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << QByteArray("a.x(double) -> b.y(QString)")
                           << "2:3 a | 2:5 x(double) | 2:18 b | 2:20 y(QString)";
    QTest::newRow("without blanks") << QByteArray("a.x->b.y") << "2:3 a | 2:5 x | 2:8 b | 2:10 y";
    QTest::newRow("with many blanks")
        << QByteArray("a . x   ->   b.  y") << "2:3 a | 2:7 x | 2:16 b | 2:20 y";
    QTest::newRow("second point") << QByteArray("a.x.z -> b.y")
                                  << "2:3 a | 2:5 x.z | 2:12 b | 2:14 y";
    QTest::newRow("same letters again")
        << QByteArray("aa.a -> a.aa") << "2:3 aa | 2:6 a | 2:11 a | 2:13 aa";
    QTest::newRow("double quotes")
        << QByteArray("\"a.x -> b.y\"") << "2:4 a | 2:6 x | 2:11 b | 2:13 y";
    QTest::newRow("blanks in quotes")
        << QByteArray("'  a.x -> b.y'") << "2:6 a | 2:8 x | 2:13 b | 2:15 y";
    QTest::newRow("doubled quotes count two")
        << QByteArray("'a.''x -> b.y'") << "2:4 a | 2:6 'x | 2:13 b | 2:15 y";
    QTest::newRow("escapes: the start")
        << QByteArray("\"a.x\\x20-> b.y\"") << "2:3 a | 2:3 x | 2:3 b | 2:3 y";
    QTest::newRow("a block: the start")
        << QByteArray("|\n  a.x -> b.y") << "2:3 a | 2:3 x | 2:3 b | 2:3 y";
    QTest::newRow("two lines") << QByteArray("a.x ->\n    b.y") << "2:3 a | 2:5 x | 3:5 b | 3:7 y";
    QTest::newRow("two lines in quotes")
        << QByteArray("\"a.x\n\n   -> b.y\"") << "2:4 a | 2:6 x | 4:7 b | 4:9 y";
    QTest::newRow("characters of several bytes")
        << QByteArray("ä.é(\xf0\x9f\x98\x80) -> ö.y")
        << QString::fromUtf8("2:3 ä | 2:5 é(\xf0\x9f\x98\x80) | 2:13 ö | 2:15 y");
    QTest::newRow("with an anchor and a tag")
        << QByteArray("&arrow !!str 'a.x -> b.y'") << "2:17 a | 2:19 x | 2:24 b | 2:26 y";
}

void tst_PanelFile::partsOfAnArrowHaveTheirPlaces()
{
    QFETCH(QByteArray, arrow);
    const QByteArray text = "connections:\n- " + arrow + "\n";
    QCOMPARE(panels::faultsOf(text), QString());
    QTEST(shown(sound(text).connections.value(0)), "expected");
}

void tst_PanelFile::columnsCountCharacters()
{
    const QByteArray text = "{title: \"Größe \xf0\x9f\x98\x80\", devices: {é: {device: x}}}";
    const auto panel = sound(text);
    QCOMPARE(shown(panel.title), QString::fromUtf8("1:9 Größe \xf0\x9f\x98\x80"));
    QCOMPARE(shown(panel.devices.value(0).id), QString::fromUtf8("1:30 é"));
    QCOMPARE(shown(panel.devices.value(0).type), QString("1:42 x"));
}

void tst_PanelFile::byteOrderMarkAndLineEndsOfOtherSystems()
{
    const auto panel = sound("\xef\xbb\xbftitle: Größe\r\ndevices:\r\n  a: {device: \"x\r\n"
                             "    y\"}\r\n  b:\r\n    device: |\r\n      u\r\n      v\r\n");
    QCOMPARE(shown(panel.title), QString::fromUtf8("1:8 Größe"));
    QCOMPARE(panel.devices.size(), 2);
    QCOMPARE(shown(panel.devices[0].id), QString("3:3 a"));
    QCOMPARE(shown(panel.devices[0].type), QString("3:15 x y"));
    QCOMPARE(shown(panel.devices[1].type), QString("6:13 u\nv\n"));
    QCOMPARE(panels::faultsOf("\xef\xbb\xbfx: 1"),
             QString("1:1: error: unknown key \"x\"; a panel has title, devices and connections"));
}

void tst_PanelFile::aliasesGiveWhatTheyName()
{
    const auto panel =
        sound("title: &t x\ndevices:\n  a: &a\n    device: *t\n    params: &p {v: 1}\n"
              "  b: *a\n  c: {device: y, params: {w: *t, u: *p}}\n"
              "connections: [&c a.x -> b.y, *c]\n");
    QCOMPARE(panel.devices.size(), 3);
    QCOMPARE(shown(panel.devices[1].id), QString("6:3 b"));
    QCOMPARE(shown(panel.devices[1].type), QString("1:11 x"));
    QCOMPARE(settings(panel), (QStringList{"5:17 v = 5:20 1", "5:17 v = 5:20 1", "7:27 w = 1:11 x",
                                           "5:17 u/v = 5:20 1"}));
    QCOMPARE(panel.connections.size(), 2);
    QCOMPARE(shown(panel.connections[1]), QString("8:18 a | 8:20 x | 8:25 b | 8:27 y"));
}

void tst_PanelFile::tagsChangeNothing()
{
    const auto panel = sound(withParams("      a: !!int 010\n      b: !own c\n      ? !!str d\n"
                                        "      : !<tag:x,1> [e, f]"));
    QVERIFY(panel.devices.isEmpty()); // A list stays a list.
    QCOMPARE(
        settings(sound(withParams("      a: !!int 010\n      b: !own c\n      !!str d: ! e\n"))),
        (QStringList{"5:7 a = 5:16 010", "6:7 b = 6:15 c", "7:13 d = 7:18 e"}));
}

void tst_PanelFile::sameKeyInAnotherMapIsNoRepetition()
{
    const auto panel = sound("title: a\ndevices:\n  title: {device: x, params: {device: a, v: b}}\n"
                             "  devices: {device: x, params: {v: b, u: {v: c}, w: {v: c}}}\n"
                             "  Title: {device: x}\n");
    QCOMPARE(panel.devices.size(), 3);
    QCOMPARE(panel.devices[1].params.size(), 3);
}

void tst_PanelFile::idsMayHoldLettersOfAllKinds()
{
    const auto panel =
        sound("devices: {Größe_1-a: {device: x}, 温度: {device: x}, -_9: {device: x}}");
    QCOMPARE(panel.devices.size(), 3);
    QCOMPARE(panel.devices[1].id.text, QString::fromUtf8("温度"));
}

QTEST_GUILESS_MAIN(tst_PanelFile)
#include "tst_PanelFile.moc"
