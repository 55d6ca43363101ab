// SPDX-License-Identifier: GPL-3.0-or-later

#include "Edits.h"
#include "TestMain.h"

#include <QtTest>

#include <algorithm>

using edits::outcome;
using edits::pathOf;
using norvo::YamlEdit;
namespace YamlTree = norvo::YamlTree;

namespace {

/// The text at this key of the root; null without one.
QString textAt(const YamlEdit& edit, const QString& key)
{
    const auto& entries = edit.root().entries;
    const auto found =
        std::find_if(entries.cbegin(), entries.cend(),
                     [&key](const norvo::YamlEntry& entry) { return entry.key->text == key; });
    return found == entries.cend() ? QString() : found->value->text;
}

} // namespace

/// Texts that are written over old ones, and as new ones.
class tst_YamlEditTexts : public QObject
{
    Q_OBJECT

private slots:
    void textTakesTheStyleOfTheOldOne_data();
    void textTakesTheStyleOfTheOldOne();
    void everyTextReadsBack_data();
    void everyTextReadsBack();
};

void tst_YamlEditTexts::textTakesTheStyleOfTheOldOne_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char* name, const QByteArray& before, const QString& path,
                        const QString& value, const QByteArray& after) {
        QTest::newRow(name) << before << path << value << after;
    };
    row("plain", "a: 1  # one\nb: 2\n", "a", "no", "a: no  # one\nb: 2\n");
    row("plain to quotes", "a: 1 # one\n", "a", "a: b", "a: \"a: b\" # one\n");
    row("plain in brackets", "{a: 1, b: 2}\n", "a", "x, y", "{a: \"x, y\", b: 2}\n");
    row("comma outside brackets", "a: 1\n", "a", "x, y", "a: x, y\n");
    row("plain on two lines", "a: one\n  two # c\nb: 2", "a", "x", "a: x # c\nb: 2");
    row("double quotes", "a: \"1\" # one\n", "a", "no", "a: \"no\" # one\n");
    row("single quotes", "a: 'it''s'\n", "a", "it's ok", "a: 'it''s ok'\n");
    row("single quotes with a line feed", "a: '1'\n", "a", "x\ny", "a: \"x\\ny\"\n");
    row("backslash to single quotes", "a: 1\n", "a", "\"\\d\": x", "a: '\"\\d\": x'\n");
    row("absent", "a:\nb: 2\n", "a", "x", "a: x\nb: 2\n");
    row("absent before a comment", "a:   # none\nb: 2\n", "a", "x", "a: x   # none\nb: 2\n");
    row("absent at the end", "a:", "a", "x", "a: x");
    row("absent in brackets", "{a: , b}", "a", "x", "{a: x , b}");
    row("key alone in brackets", "{a: , b}", "b", "x", "{a: , b: x}");
    row("absent with an anchor", "a: &x\nb: 2\n", "a", "y", "a: &x y\nb: 2\n");
    row("anchor that nobody uses", "a: &x 1\n", "a", "2", "a: &x 2\n");
    row("tag", "a: !!str 1\n", "a", "2", "a: !!str 2\n");
    row("null word", "a: ~\n", "a", "null", "a: null\n");
    row("empty", "a: 1\n", "a", "", "a: \"\"\n");
    row("CR LF and byte order mark",
        "\xef\xbb\xbf"
        "a: 1\r\nb: 2\r\n",
        "b", "x",
        "\xef\xbb\xbf"
        "a: 1\r\nb: x\r\n");
    row("literal block", "a: | # text\n    one\n    two\nb: 2\n", "a", "x\n\ny\n",
        "a: | # text\n    x\n\n    y\nb: 2\n");
    row("literal block with a hash in its text", "a: |\n  one # two\nb: 2\n", "a", "x\n",
        "a: |\n  x\nb: 2\n");
    row("literal block without last line end", "a: |\n  one\nb: 2\n", "a", "x\ny",
        "a: |-\n  x\n  y\nb: 2\n");
    row("literal block of CR LF", "a: |\r\n  one\r\nb: 2\r\n", "a", "x\ny\n",
        "a: |\r\n  x\r\n  y\r\nb: 2\r\n");
    row("folded block", "a: >-\n  one\n  two\nb: 2\n", "a", "no", "a: >-\n  no\nb: 2\n");
    row("folded block to lines", "a: >-\n  one\nb: 2\n", "a", "x\ny", "a: |-\n  x\n  y\nb: 2\n");
    row("block to a text that it cannot hold", "a: |  # c\n  one\n\nb: 2\n", "a", " lead",
        "a: \" lead\"  # c\n\nb: 2\n");
    row("block that keeps blank lines", "a: |+\n  one\n\nb: 2\n", "a", "x", "a: |-\n  x\nb: 2\n");
    row("key in quotes", "{\"a\":1}", "a", "x", "{\"a\":x}");
    row("question mark", "? a\n: 1\n? b\n: 2\n", "b", "x", "? a\n: 1\n? b\n: x\n");
    row("question mark without value", "? a\n? b\n", "a", "x", "? a\n: x\n? b\n");
    row("item of a compact list", "a:\n- 1\n- k: 2\n  l: 3\n", "a>1>l", "x",
        "a:\n- 1\n- k: 2\n  l: x\n");
    row("first of two absent items", "-\n-\n- c\n", "0", "x", "- x\n-\n- c\n");
    row("second of two absent items", "-\n-\n- c\n", "1", "x", "-\n- x\n- c\n");
    row("absent item behind a text", "- a\n-\n-\n", "2", "x", "- a\n-\n- x\n");
    row("absent item", "-\n- b\n", "0", "x", "- x\n- b\n");
}

void tst_YamlEditTexts::textTakesTheStyleOfTheOldOne()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, path);
    QFETCH(QString, value);
    YamlEdit edit(before);
    const auto error = edit.setText(pathOf(path), value);
    QTEST(outcome(edit, error), "after");
}

void tst_YamlEditTexts::everyTextReadsBack_data()
{
    QTest::addColumn<QString>("value");
    for (const char* value : {"",
                              "no",
                              "1.0",
                              "~",
                              "null",
                              " lead",
                              "trail ",
                              "a: b",
                              "a:",
                              ":a",
                              "# x",
                              "x # y",
                              "#x",
                              "x#y",
                              "%1",
                              "- x",
                              "-",
                              "-1",
                              "? x",
                              "* x",
                              "*x",
                              "&x",
                              "!x",
                              "|",
                              ">",
                              "@x",
                              "`x`",
                              "[a",
                              "{a}",
                              "a]",
                              "a, b",
                              "'",
                              "''",
                              "\"",
                              "\\",
                              "C:\\x",
                              "it's \"so\"",
                              "\t",
                              "a\tb",
                              "one\ntwo",
                              "one\n\n two\n",
                              "\n",
                              "\n\n",
                              "a\r\nb",
                              "---",
                              "...",
                              "--- x",
                              "<<",
                              "=",
                              "\xf0\x9f\x98\x80",
                              "\xc2\xa0",
                              "\xe2\x80\xa8",
                              "\xef\xbb\xbf",
                              "\x07",
                              "\x7f",
                              "W\xc3\xa4rme \xc2\xb0"
                              "C",
                              "0x10",
                              "yes",
                              "{k: v}",
                              "a  b",
                              "  ",
                              "one\n  \ntwo",
                              "trailing \nspace"}) {
        QTest::newRow(
            qPrintable(QString("%1").arg(norvo::SourceText(value).bytes().toHex().data())))
            << QString::fromUtf8(value);
    }
}

/// Over an old text in each style, and as a new entry of a block and of brackets.
void tst_YamlEditTexts::everyTextReadsBack()
{
    QFETCH(QString, value);
    for (const char* old :
         {"a: 1\nb: 2\n", "a: 'x'\nb: 2\n", "a: \"x\"\nb: 2\n", "a: |\n  x\nb: 2\n",
          "a: >-\n  x\nb: 2\n", "a: |+\n  x\n\n\nb: 2\n", "a:\nb: 2\n", "{a: 1, b: 2}",
          "{\"a\":\"1\",b: 2}", "{a, b: 2}", "a: |\n  x", "b: 2\na: one\n  two"}) {
        YamlEdit edit(old);
        const auto error = edit.setText({"a"}, value);
        QVERIFY2(!error, old);
        const YamlEdit again(edit.text());
        QCOMPARE(textAt(again, "a"), value);
        QCOMPARE(textAt(again, "b"), QString(strchr(old, 'b') ? "2" : ""));
    }
    for (const char* old : {"b: 2\n", "{b: 2}", "b: 2", ""}) {
        YamlEdit edit(old);
        const auto error = edit.insert({}, "a", YamlTree::text(value));
        QVERIFY2(!error, old);
        QCOMPARE(textAt(YamlEdit(edit.text()), "a"), value);
    }
}

NORVO_GUILESS_TEST(tst_YamlEditTexts)
#include "tst_YamlEditTexts.moc"
