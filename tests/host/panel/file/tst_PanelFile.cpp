// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"

#include "PanelTexts.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Diagnostics;
using norvo::PanelFile;
using panels::settings;
using panels::shown;
using panels::sound;

class tst_PanelFile : public QObject
{
    Q_OBJECT

private slots:
    void everyKeyHasItsPlace();
    void whatIsKeptIsSaidInFourWords();
    void partsOfAConnectionHaveTheirPlaces_data();
    void partsOfAConnectionHaveTheirPlaces();
    void columnsCountCharacters();
    void byteOrderMarkAndLineEndsOfOtherSystems();
    void aliasesGiveWhatTheyName();
    void sameKeyInAnotherMapIsNoRepetition();
    void idsMayHoldLettersOfAllKinds();
};

void tst_PanelFile::whatIsKeptIsSaidInFourWords()
{
    Diagnostics diagnostics("panel.yaml");
    const auto panel = PanelFile::parse("devices:\n"
                                        "  a: {device: x}\n"
                                        "  b: {device: x, keep: false}\n"
                                        "  c: {device: x, keep: true}\n"
                                        "  d: {device: x, keep: silent}\n"
                                        "  e: {device: x, keep: send}\n",
                                        "panel.yaml", diagnostics);
    QVERIFY(diagnostics.isEmpty());
    using norvo::Keep;
    QVector<Keep> kept;
    for (const auto& device : panel.devices) {
        kept.append(device.keep);
    }
    QCOMPARE(kept, (QVector<Keep>{Keep::Unsaid, Keep::No, Keep::Silently, Keep::Silently,
                                  Keep::Sending}));
    QCOMPARE(panel.devices[4].keepPlace.line, 6);
    QCOMPARE(panel.devices[4].keepPlace.column, 18);
}

void tst_PanelFile::everyKeyHasItsPlace()
{
    Diagnostics diagnostics("panel.yaml");
    const auto panel = PanelFile::read("tests/panels/good/everything.yaml", diagnostics);
    QVERIFY(diagnostics.isEmpty());
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

void tst_PanelFile::partsOfAConnectionHaveTheirPlaces_data()
{
    QTest::addColumn<QByteArray>("arrow");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << QByteArray("a.x(double) -> b.y(QString)")
                           << "2:3 a | 2:5 x(double) | 2:18 b | 2:20 y(QString)";
    QTest::newRow("without spaces") << QByteArray("a.x->b.y") << "2:3 a | 2:5 x | 2:8 b | 2:10 y";
    QTest::newRow("with many spaces")
        << QByteArray("a . x   ->   b.  y") << "2:3 a | 2:7 x | 2:16 b | 2:20 y";
    QTest::newRow("second point") << QByteArray("a.x.z -> b.y")
                                  << "2:3 a | 2:5 x.z | 2:12 b | 2:14 y";
    QTest::newRow("same letters again")
        << QByteArray("aa.a -> a.aa") << "2:3 aa | 2:6 a | 2:11 a | 2:13 aa";
    QTest::newRow("double quotes")
        << QByteArray("\"a.x -> b.y\"") << "2:4 a | 2:6 x | 2:11 b | 2:13 y";
    QTest::newRow("spaces in quotes")
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

void tst_PanelFile::partsOfAConnectionHaveTheirPlaces()
{
    QFETCH(QByteArray, arrow);
    const QByteArray text = "connections:\n- " + arrow + "\n";
    QCOMPARE(panels::errorsOf(text), QString());
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
    QCOMPARE(
        panels::errorsOf("\xef\xbb\xbfx: 1"),
        QString("1:1: error: unknown key \"x\"; a panel has title, devices, connections, "
                "templates, include, access, alarms, audit, history, theme, touch, design, fit, "
                "language, pages, rows and "
                "columns"));
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

NORVO_GUILESS_TEST(tst_PanelFile)
#include "tst_PanelFile.moc"
