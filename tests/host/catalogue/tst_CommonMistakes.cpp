// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/program/PluginSet.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

using namespace norvo;

/// What people write who are new to panel files, and what the check says to help them.
class tst_CommonMistakes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void form_data();
    void form();
    void values_data();
    void values();
    void names_data();
    void names();

private:
    QString check(const QByteArray& text) const;

    PluginSet m_plugins;
    std::unique_ptr<Catalogue> m_catalogue;
};

void tst_CommonMistakes::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    m_catalogue = std::make_unique<Catalogue>(m_plugins.manager());
}

/// The errors and warnings in a line each, without the file's name.
QString tst_CommonMistakes::check(const QByteArray& text) const
{
    Diagnostics diagnostics("p");
    const PanelDescription description = PanelFile::parse(text, "p", diagnostics);
    PanelPlan::make(description, m_plugins.manager(), {}, diagnostics, {},
                    SenseCheck(*m_catalogue));
    QStringList lines;
    for (const Diagnostic& diagnostic : diagnostics.sorted()) {
        lines.append(diagnostic.toString().mid(2));
    }
    return lines.join('\n');
}

void tst_CommonMistakes::form_data()
{
    QTest::addColumn<QByteArray>("panel");
    QTest::addColumn<QString>("expected");

    QTest::newRow("text without quotes")
        << QByteArray("devices: {a: {device: label, params: {Value: %1 degrees}}}\n")
        << "1:46: error: broken YAML: a text without quotes cannot start with \"%\"; put it in "
           "quotes";
    QTest::newRow("colour in brackets without quotes")
        << QByteArray("devices:\n  a: {device: graph_settings, params: {color: #ff0000}}\n")
        << "2:39: error: broken YAML: the map that opens here is not closed, because \" #\" begins "
           "a comment; put \"#ff0000\" in quotes";
    QTest::newRow("colour in a block without quotes")
        << QByteArray("devices:\n  a:\n    device: graph_settings\n    params:\n"
                      "      color: #f00 # red\n      name: # none\n")
        << "5:7: warning: \"color\" has no value, because \" #\" begins a comment; put \"#f00\" in "
           "quotes";
    QTest::newRow("quotes of a word processor")
        << QByteArray("devices: {a: {device: label, params: {Value: \u201cStop: now\u201d}}}\n")
        << "1:38: error: broken YAML: the map that opens here is not closed; \"}\" is missing "
           "before line 1, column 51; only \" and ' count as quotes, not \u201c";
    QTest::newRow("apostrophe in single quotes")
        << QByteArray("devices: {a: {device: label, params: {Value: 'Don't stop'}}}\n")
        << "1:38: error: broken YAML: the map that opens here is not closed; \"}\" is missing "
           "before line 1, column 51; within single quotes a ' is written twice";
    QTest::newRow("devices without indentation")
        << QByteArray("devices:\na:\n  device: slider\n")
        << "2:1: error: unknown key \"a\"; a device stands below \"devices:\" and is indented";
    QTest::newRow("devices as a list")
        << QByteArray("devices:\n  - a: {device: button}\n")
        << "2:3: error: devices must be a map: the id of each device, and what it is, as in "
           "\"start: {device: button}\"";
    QTest::newRow("connections without dashes")
        << QByteArray("devices: {a: {device: button}}\nconnections:\n  a.toggled -> a.toggle\n")
        << "3:3: error: connections must be a list, with a line such as \"- source.signal -> "
           "target.slot\" for each";
    QTest::newRow("no space behind the colon, in brackets")
        << QByteArray("devices:\n  a: {device:button}\n")
        << "2:3: error: the device \"a\" has no type; add \"device: TYPE\"\n"
           "2:7: error: unknown key \"device:button\" of the device \"a\"; a space is missing "
           "after \"device:\"";
    QTest::newRow("no space behind the colon, in a block")
        << QByteArray("devices:\n  a:\n    device:button\n")
        << "3:5: error: the device \"a\" must be a map; a space is missing after \"device:\"";
    QTest::newRow("parameter beside the type")
        << QByteArray("devices: {a: {device: button, text: Go}}\n")
        << "1:31: error: unknown key \"text\" of the device \"a\"; a device has device, params, "
           "outputs, inputs, network, keep, access and confirm, and its parameters stand in params";
    QTest::newRow("choices as a list")
        << QByteArray("devices: {a: {device: dropdownlist, params: {options: [slow, fast]}}}\n")
        << "1:55: error: the parameter \"options\" must be a text or a map, not a list; what "
           "stands between several values in one text is said by --describe";
}

void tst_CommonMistakes::form()
{
    QFETCH(QByteArray, panel);
    QTEST(check(panel), "expected");
}

void tst_CommonMistakes::values_data()
{
    QTest::addColumn<QByteArray>("params"); // of an output_with_progress
    QTest::addColumn<QString>("expected");

    const QString is = ": error: parameter ";
    QTest::newRow("decimal comma") << QByteArray("minThreshold: '0,5'")
                                   << "1:68" + is +
                                          "\"minThreshold\": \"0,5\" is not a number; write it "
                                          "with a point, 0.5";
    QTest::newRow("decimal comma in brackets")
        << QByteArray("minThreshold: -0,5")
        << "1:71: error: \"5\" has no value; a comma separates "
           "entries here, so write a number with a point, and "
           "put a text that holds a comma in quotes";
    QTest::newRow("decimal comma where the default is no number")
        << QByteArray("maxValue: '1,5'")
        << "1:64: warning: parameter \"maxValue\": \"1,5\" is not "
           "a number; write it with a point, 1.5";
    QTest::newRow("unit") << QByteArray("timeout: 2 s")
                          << "1:63" + is +
                                 "\"timeout\": \"2 s\" is not a number; write it without the unit";
    QTest::newRow("thousands") << QByteArray("timeout: '1,000,000'")
                               << "1:63" + is + "\"timeout\": \"1,000,000\" is not a number";
    QTest::newRow("another language")
        << QByteArray("alarm: ja") << "1:61" + is + "\"alarm\": \"ja\" is neither true nor false";
}

void tst_CommonMistakes::values()
{
    QFETCH(QByteArray, params);
    QTEST(check("devices: {a: {device: output_with_progress, params: {" + params + "}}}\n"),
          "expected");
}

void tst_CommonMistakes::names_data()
{
    QTest::addColumn<QByteArray>("panel");
    QTest::addColumn<QString>("expected");

    QTest::newRow("group left out")
        << QByteArray("devices: {a: {device: slider, params: {minvalue: 0}}}\n")
        << "1:40: error: a device of type \"slider\" has no parameter \"minvalue\"; did you mean "
           "\"widget/minValue\"?";
    QTest::newRow("group too many")
        << QByteArray("devices: {a: {device: input, params: {widget: {min: 0}}}}\n")
        << "1:48: error: a device of type \"input\" has no parameter \"widget/min\"; did you mean "
           "\"min\"?";
    QTest::newRow("id with a space") << QByteArray("devices: {lamp 1: {device: indicator}}\n")
                                     << "1:11: error: the device id \"lamp 1\" may hold letters, "
                                        "digits, \"_\" and \"-\" only";
    const QByteArray use = "templates: {pump: {devices: {start: {device: button}}}}\n"
                           "devices: {p1: {use: pump}}\nconnections:\n";
    QTest::newRow("use in place of its device")
        << use + "  - p1.clicked -> p1-start.toggle\n"
        << "4:5: error: there is no device \"p1\"; did you mean \"p1-start\"?";
    QTest::newRow("placeholder misspelt")
        << QByteArray("templates: {t: {with: {name: x}, devices: {a: {device: label, params: "
                      "{Value: $(nam) $(name)}}}}}\ndevices: {p: {use: t}}\n")
        << "1:79: error: the template \"t\" has no placeholder \"nam\"; did you mean \"name\"? "
           "\"$$(\" stands for the text \"$(\"";
}

void tst_CommonMistakes::names()
{
    QFETCH(QByteArray, panel);
    QTEST(check(panel), "expected");
}

NORVO_TEST(tst_CommonMistakes)
#include "tst_CommonMistakes.moc"
