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

namespace {

QByteArray withParams(const QByteArray& params)
{
    return "devices:\n  a:\n    device: x\n    params:\n" + params;
}

} // namespace

class tst_PanelFileValues : public QObject
{
    Q_OBJECT

private slots:
    void textsInQuotesAndBlocksGiveTheirContent();
    void absentValuesAreEmpty();
    void valuesAreTakenLetterByLetter_data();
    void valuesAreTakenLetterByLetter();
    void absentValueStandsAtItsKey_data();
    void absentValueStandsAtItsKey();
    void tagsChangeNothing();
};

void tst_PanelFileValues::textsInQuotesAndBlocksGiveTheirContent()
{
    Diagnostics diagnostics("panel.yaml");
    const auto panel = PanelFile::read("tests/panels/good/styles.yaml", diagnostics);
    QVERIFY(diagnostics.isEmpty());
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

void tst_PanelFileValues::absentValuesAreEmpty()
{
    Diagnostics diagnostics("panel.yaml");
    const auto panel = PanelFile::read("tests/panels/good/nothing.yaml", diagnostics);
    QVERIFY(diagnostics.isEmpty());
    QCOMPARE(shown(panel.title), QString("2:1 "));
    QVERIFY(panel.devices.isEmpty());
    QVERIFY(panel.connections.isEmpty());
    QCOMPARE(sound("devices:\n  a:\n    params:\n    device: x\n").devices.size(), 1);
}

void tst_PanelFileValues::valuesAreTakenLetterByLetter_data()
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
    QTest::newRow("spaces around are no part of it") << "   1.0  # a comment"
                                                     << "1.0";
    QTest::newRow("double quotes keep spaces") << "\" 1 \""
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

void tst_PanelFileValues::valuesAreTakenLetterByLetter()
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

void tst_PanelFileValues::absentValueStandsAtItsKey_data()
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

void tst_PanelFileValues::absentValueStandsAtItsKey()
{
    QFETCH(QByteArray, params);
    QCOMPARE(panels::errorsOf(withParams(params)), QString());
    QTEST(settings(sound(withParams(params))), "expected");
}

void tst_PanelFileValues::tagsChangeNothing()
{
    const auto panel = sound(withParams("      a: !!int 010\n      b: !own c\n      ? !!str d\n"
                                        "      : !<tag:x,1> [e, f]"));
    QVERIFY(panel.devices.isEmpty()); // A list stays a list.
    QCOMPARE(
        settings(sound(withParams("      a: !!int 010\n      b: !own c\n      !!str d: ! e\n"))),
        (QStringList{"5:7 a = 5:16 010", "6:7 b = 6:15 c", "7:13 d = 7:18 e"}));
}

NORVO_GUILESS_TEST(tst_PanelFileValues)
#include "tst_PanelFileValues.moc"
