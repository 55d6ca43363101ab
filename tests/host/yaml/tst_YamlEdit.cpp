// SPDX-License-Identifier: GPL-3.0-or-later

#include "Edits.h"
#include "TestMain.h"

#include <QtTest>

using edits::outcome;
using edits::pathOf;
using norvo::YamlEdit;
namespace YamlTree = norvo::YamlTree;

class tst_YamlEdit : public QObject
{
    Q_OBJECT

private slots:
    void entryIsInsertedInTheStyleOfItsSiblings_data();
    void entryIsInsertedInTheStyleOfItsSiblings();
    void deviceIsInsertedBehindAnother_data();
    void deviceIsInsertedBehindAnother();
    void itemIsAddedToAList_data();
    void itemIsAddedToAList();
    void entryIsRemovedWithItsLines_data();
    void entryIsRemovedWithItsLines();
    void whatAnAliasUsesIsRefused_data();
    void whatAnAliasUsesIsRefused();
    void mapInBracketsIsWrittenInLines_data();
    void mapInBracketsIsWrittenInLines();
    void lineOfAnEntryIsMeasured();
    void itemMayBeAMapOrHoldCommas();
    void mapOfTheRootIsInsertedAsABlock();
    void editsFollowOneAnother();
    void firstDeviceIsInsertedWhereNothingIs();
    void refusedEditChangesNothing();
    void textThatCannotBeReadIsNotEdited();
};

void tst_YamlEdit::entryIsInsertedInTheStyleOfItsSiblings_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char* name, const QByteArray& before, const QString& path,
                        const QByteArray& after) {
        QTest::newRow(name) << before << path << after;
    };
    row("block", "m:\n   a: 1  # one\n# end\n", "m", "m:\n   a: 1  # one\n   k: v\n# end\n");
    row("block without last line end", "m:\n  a: 1", "m", "m:\n  a: 1\n  k: v");
    row("block of CR LF", "m:\r\n  a: 1\r\nn: 2\r\n", "m", "m:\r\n  a: 1\r\n  k: v\r\nn: 2\r\n");
    row("behind a block scalar", "m:\n  a: |\n    x\n\nn: 2\n", "m",
        "m:\n  a: |\n    x\n  k: v\n\nn: 2\n");
    row("brackets", "m: {a: 1} # c\n", "m", "m: {a: 1, k: v} # c\n");
    row("spaces in brackets", "m: { a: 1 }", "m", "m: { a: 1, k: v }");
    row("empty brackets", "m: {} # none\n", "m", "m: # none\n  k: v\n");
    row("empty brackets below", "a:\n  m: {}\n", "a>m", "a:\n  m: {k: v}\n");
    row("comma at the end", "m: {a: 1,}\n", "m", "m: {a: 1, k: v,}\n");
    row("brackets over lines", "m: {\n  a: 1, # one\n  b: 2 # two\n}\n", "m",
        "m: {\n  a: 1, # one\n  b: 2, # two\n  k: v\n}\n");
    row("brackets over lines, comma at the end", "m: {\n  a: 1, # one\n}\n", "m",
        "m: {\n  a: 1, # one\n  k: v,\n}\n");
    row("absent in brackets", "m: {a: }\n", "m", "m: {a:, k: v }\n");
    row("absent map", "m:   # none\nn: 2\n", "m", "m:   # none\n  k: v\nn: 2\n");
    row("absent map at the end", "m:", "m", "m:\n  k: v");
    row("absent map below, as its neighbours", "a: {m: {x: 1}}\nb:\n  m:\n", "b>m",
        "a: {m: {x: 1}}\nb:\n  m: {k: v}\n");
    row("absent map below, as a block", "a:\n    m:\n       x: 1\nb:\n    m:\n", "b>m",
        "a:\n    m:\n       x: 1\nb:\n    m:\n       k: v\n");
    row("absent map in brackets", "a: {m: , n: 1}\n", "a>m", "a: {m: {k: v} , n: 1}\n");
    row("absent map in brackets of the root", "{m: , n: 1}\n", "m", "{m: {k: v} , n: 1}\n");
    row("question mark without value", "? m\n", "m", "? m\n: {k: v}\n");
    row("map in a list", "- a: 1\n- b: 2\n", "0", "- a: 1\n  k: v\n- b: 2\n");
    row("anchored map that nobody uses", "m: &x\n  a: 1\n", "m", "m: &x\n  a: 1\n  k: v\n");
    row("question marks", "? a\n: 1\n", "", "? a\n: 1\nk: v\n");
    row("empty text", "", "", "k: v\n");
    row("comments alone", "# nothing", "", "# nothing\nk: v\n");
    row("comments and a line end", "# nothing\n", "", "# nothing\nk: v\n");
    row("comment behind the bracket's first entry", "m: {a: 1 # one\n  }\n", "m",
        "m: {a: 1, k: v # one\n  }\n");
    row("absent map, as the last one before it",
        "a:\n  m: {x: 1}\nb:\n  m:\n     x: 1\nc:\n  m:\nd:\n  m: {x: 1}\n", "c>m",
        "a:\n  m: {x: 1}\nb:\n  m:\n     x: 1\nc:\n  m:\n     k: v\nd:\n  m: {x: 1}\n");
    row("absent map, as the first one behind it",
        "a:\n  m:\nb:\n  m: {x: 1}\nc:\n  m:\n     x: 1\n", "a>m",
        "a:\n  m: {k: v}\nb:\n  m: {x: 1}\nc:\n  m:\n     x: 1\n");
}

void tst_YamlEdit::entryIsInsertedInTheStyleOfItsSiblings()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, path);
    YamlEdit edit(before);
    const auto error = edit.insert(pathOf(path), "k", YamlTree::text("v"));
    QTEST(outcome(edit, error), "after");
}

void tst_YamlEdit::deviceIsInsertedBehindAnother_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("blocks") << QByteArray("devices:\n  a: # A\n    device: x\n    params:\n"
                                          "        v: 1 # end of a\n\n  # About b\n  b:\n"
                                          "    device: y\n")
                            << QByteArray("devices:\n  a: # A\n    device: x\n    params:\n"
                                          "        v: 1 # end of a\n  new:\n    device: label\n"
                                          "    params:\n        Value: \"%1\"\n\n  # About b\n"
                                          "  b:\n    device: y\n");
    QTest::newRow("maps in brackets")
        << QByteArray("devices:\n  a: {device: x}\n  b: {device: y}\n")
        << QByteArray("devices:\n  a: {device: x}\n  new: {device: label, params: {Value: \"%1\"}}"
                      "\n  b: {device: y}\n");
    QTest::newRow("all in brackets")
        << QByteArray("devices: {a: {device: x}, b: {device: y}}\n")
        << QByteArray("devices: {a: {device: x}, new: {device: label, params: {Value: \"%1\"}}, "
                      "b: {device: y}}\n");
}

void tst_YamlEdit::deviceIsInsertedBehindAnother()
{
    QFETCH(QByteArray, before);
    YamlEdit edit(before);
    const auto device =
        YamlTree::map({{"device", YamlTree::text("label")},
                       {"params", YamlTree::map({{"Value", YamlTree::text("%1")}})}});
    const auto error = edit.insert({"devices"}, "new", device, "a");
    QTEST(outcome(edit, error), "after");
}

void tst_YamlEdit::itemIsAddedToAList_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<QByteArray>("result");
    const auto row = [](const char* name, const QByteArray& before, int after,
                        const QByteArray& result) {
        QTest::newRow(name) << before << after << result;
    };
    row("last", "c:\n  - a # A\n  - b # B\n# end\n", -1,
        "c:\n  - a # A\n  - b # B\n  - x.y -> z\n# end\n");
    row("behind the first", "c:\n  - a # A\n  - b\n", 0, "c:\n  - a # A\n  - x.y -> z\n  - b\n");
    row("compact", "c:\n- a\nd: 1\n", -1, "c:\n- a\n- x.y -> z\nd: 1\n");
    row("brackets", "c: [a, b]\n", -1, "c: [a, b, x.y -> z]\n");
    row("empty brackets", "c: []\n", -1, "c:\n  - x.y -> z\n");
    row("absent", "c:\nd: 1\n", -1, "c:\n  - x.y -> z\nd: 1\n");
    row("absent, beside a compact list", "b:\n- 1\nc:\n", -1, "b:\n- 1\nc:\n- x.y -> z\n");
    row("no last line end", "c:\n  - a", -1, "c:\n  - a\n  - x.y -> z");
}

void tst_YamlEdit::itemIsAddedToAList()
{
    QFETCH(QByteArray, before);
    QFETCH(int, after);
    YamlEdit edit(before);
    const auto error = edit.add({"c"}, YamlTree::text("x.y -> z"), after);
    QTEST(outcome(edit, error), "result");
}

void tst_YamlEdit::entryIsRemovedWithItsLines_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char* name, const QByteArray& before, const QString& path,
                        const QByteArray& after) {
        QTest::newRow(name) << before << path << after;
    };
    row("block", "# A\na: 1 # one\n# B\nb: 2\n", "a", "# A\n# B\nb: 2\n");
    row("map", "d:\n  a:\n    x: 1\n\n  # About b\n  b: 2\n", "d>a", "d:\n\n  # About b\n  b: 2\n");
    row("last of a text without last line end", "a: 1\r\nb: 2", "b", "a: 1");
    row("block scalar", "a: |+\n  x\n\nb: 2\n", "a", "b: 2\n");
    row("only one", "d: # map\n  a: 1 # one\ne: 2\n", "d>a", "d: # map\n  {} # one\ne: 2\n");
    row("only one, no comment", "d:\n  a: 1\ne: 2\n", "d>a", "d: {}\ne: 2\n");
    row("only one in a list", "c:\n  - a\n", "c>0", "c: []\n");
    row("only one in brackets", "c: {a: 1, }\n", "c>a", "c: { }\n");
    row("first in brackets", "c: {a: 1, b: 2}\n", "c>a", "c: {b: 2}\n");
    row("last in brackets", "c: {a: 1, b: 2}\n", "c>b", "c: {a: 1}\n");
    row("line in brackets", "c: {\n  a: 1, # one\n  b: 2 # two\n}\n", "c>a",
        "c: {\n  b: 2 # two\n}\n");
    row("last line in brackets", "c: {\n  a: 1, # one\n  b: 2 # two\n}\n", "c>b",
        "c: {\n  a: 1, # one\n   # two\n}\n");
    row("one of two on a line in brackets", "c: {\n  a: 1, b: 2,\n  d: 3\n}\n", "c>a",
        "c: {\n  b: 2,\n  d: 3\n}\n");
    row("the other one", "c: {\n  a: 1, b: 2,\n  d: 3\n}\n", "c>b", "c: {\n  a: 1, \n  d: 3\n}\n");
    row("comma without a space", "c: {a: 1,b: 2}\n", "c>a", "c: {b: 2}\n");
    row("item", "c:\n  - a # A\n  - b\n", "c>0", "c:\n  - b\n");
    row("first of a map in a list", "- a: 1\n  b: 2\n", "0>a", "- b: 2\n");
    row("first of a map in a list before a comment", "- a: 1\n  # B\n  b: 2\n", "0>a",
        "- \n  # B\n  b: 2\n");
    row("question mark", "? a\n: 1\n? b\n: 2\n", "a", "? b\n: 2\n");
    row("absent item", "- a\n-\n- c\n", "1", "- a\n- c\n");
    row("alias", "a: &x 1\nb: *x\nc: 3\n", "b", "a: &x 1\nc: 3\n");
    row("alias in braces", "{a: &x 1, b: *x}\n", "b", "{a: &x 1}\n");
    row("alias in brackets", "[&x 1, *x]\n", "1", "[&x 1]\n");
    row("alias at the end", "a: &x 1\nb: *x", "b", "a: &x 1");
    row("only one of all", "a: 1\n", "a", "{}\n");
    row("block that keeps a line of spaces", "a: |+\n  x\n \nb: 2\n", "a", "b: 2\n");
    row("anchor together with its use", "a:\n  - &x 1\n  - *x\nb: 2\n", "a", "b: 2\n");
}

void tst_YamlEdit::entryIsRemovedWithItsLines()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, path);
    YamlEdit edit(before);
    const auto error = edit.remove(pathOf(path));
    QTEST(outcome(edit, error), "after");
}

void tst_YamlEdit::whatAnAliasUsesIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("wayOut");
    const QByteArray shared("a: &x {k: 1, l: {m: 2}}\nb: *x\n&y c: 3\nd: *y\n");
    const QString there("the alias in line 2, column 4 uses this value, too");
    const QString here("this alias stands for the value in line 1, column 7");
    QTest::newRow("in an anchored map") << shared << "a>k" << there;
    QTest::newRow("deeper") << shared << "a>l>m" << there;
    QTest::newRow("through the alias") << shared << "b>k" << here;
    QTest::newRow("the alias itself") << QByteArray("a: &x 1\nb: *x\n") << "b"
                                      << "this alias stands for the value in line 1, column 7";
    QTest::newRow("the anchored text") << QByteArray("a: &x 1\nb: {c: [*x]}\n") << "a"
                                       << "the alias in line 2, column 9 uses this value, too";
    QTest::newRow("an alias as a key") << QByteArray("a: &x 1\n*x : 2\n") << "a"
                                       << "the alias in line 2, column 1 uses this value, too";
}

void tst_YamlEdit::whatAnAliasUsesIsRefused()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, path);
    QFETCH(QString, wayOut);
    YamlEdit edit(text);
    const auto error = edit.setText(pathOf(path), "9");
    QVERIFY(error);
    QVERIFY2(error->text.startsWith(wayOut), qPrintable(error->text));
    QCOMPARE(edit.text(), text);
}

void tst_YamlEdit::mapInBracketsIsWrittenInLines_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char* name, const QByteArray& before, const QString& path,
                        const QByteArray& after) {
        QTest::newRow(name) << before << path << after;
    };
    row("at the top", "m: {a: 1, \"b\": {c: 'x, y'}} # one\nn: 2\n", "m",
        "m: # one\n  a: 1\n  \"b\": {c: 'x, y'}\nn: 2\n");
    row("below", "m:\n  a: {b: 1, c: 2}\n  d: 1\n", "m>a",
        "m:\n  a:\n    b: 1\n    c: 2\n  d: 1\n");
    row("as deep as its neighbours", "m:\n   x:\n       y: 1\n   a: {b: 1}\n", "m>a",
        "m:\n   x:\n       y: 1\n   a:\n       b: 1\n");
    row("without the last line end", "m: {a: 1}", "m", "m:\n  a: 1");
    row("CR LF", "m: {a: 1, b: 2}\r\n", "m", "m:\r\n  a: 1\r\n  b: 2\r\n");
    row("a comma at the end", "m: {a: 1, b: 2,}\n", "m", "m:\n  a: 1\n  b: 2\n");
    row("spaces", "m:   { a: 1 , b: 2 }\n", "m", "m:  \n  a: 1\n  b: 2\n");
    row("what is absent", "m: {a: , b: 1}\n", "m", "m:\n  a:\n  b: 1\n");
    row("keys without a colon", "m: {a: , b}\n", "m", "m:\n  a:\n  b\n");
    row("within brackets it stays", "m: {a: {b: 1}}\n", "m>a", "m: {a: {b: 1}}\n");
    row("on several lines it stays", "m: {a: 1,\n  b: 2}\n", "m", "m: {a: 1,\n  b: 2}\n");
    row("in lines it stays", "m:\n  a: 1\n", "m", "m:\n  a: 1\n");
    row("a list stays", "m: [a, b]\n", "m", "m: [a, b]\n");
    row("nothing in it", "m: {}\n", "m", "m: {}\n");
    row("there is none", "m: {a: 1}\n", "n", "error: there is no entry \"n\"");
}

void tst_YamlEdit::mapInBracketsIsWrittenInLines()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, path);
    YamlEdit edit(before);
    const auto error = edit.unfold(pathOf(path));
    QTEST(outcome(edit, error), "after");
    QVERIFY(YamlTree::isSame(YamlEdit(edit.text()).root(), YamlEdit(before).root()));
}

void tst_YamlEdit::lineOfAnEntryIsMeasured()
{
    const YamlEdit edit("m: {a: 1}\nlong: 22222 # c\nlast:\n  x: 1");
    QCOMPARE(edit.lineLength({"m"}), 9);
    QCOMPARE(edit.lineLength({"m", "a"}), 9);
    QCOMPARE(edit.lineLength({"long"}), 15);
    QCOMPARE(edit.lineLength({"last", "x"}), 6);
    QCOMPARE(edit.lineLength({"none"}), 0);
}

void tst_YamlEdit::itemMayBeAMapOrHoldCommas()
{
    YamlEdit edit("c:\n  - a\n");
    QVERIFY(!edit.add({"c"}, YamlTree::text("x, y")));
    QVERIFY(!edit.add({"c"}, YamlTree::map({{"k", YamlTree::text("v")}})));
    QCOMPARE(edit.text(), QByteArray("c:\n  - a\n  - x, y\n  - {k: v}\n"));
}

void tst_YamlEdit::mapOfTheRootIsInsertedAsABlock()
{
    YamlEdit edit("title: x\n");
    QVERIFY(!edit.insert({}, "m", YamlTree::map({{"k", YamlTree::text("v")}})));
    QCOMPARE(edit.text(), QByteArray("title: x\nm:\n  k: v\n"));
}

void tst_YamlEdit::editsFollowOneAnother()
{
    YamlEdit edit("");
    QVERIFY(!edit.insert({}, "a", YamlTree::text("1")));
    QVERIFY(!edit.insert({}, "b", YamlTree::text("2")));
    QVERIFY(!edit.setText({"a"}, "3"));
    QVERIFY(!edit.remove({"b"}));
    QCOMPARE(edit.text(), QByteArray("a: 3\n"));
}

void tst_YamlEdit::firstDeviceIsInsertedWhereNothingIs()
{
    YamlEdit edit("devices:\nconnections: []\n");
    const auto device = YamlTree::map({{"device", YamlTree::text("label")}});
    const auto error = edit.insert({"devices"}, "a", device);
    QCOMPARE(outcome(edit, error), QByteArray("devices:\n  a: {device: label}\nconnections: []\n"));
}

void tst_YamlEdit::refusedEditChangesNothing()
{
    const QByteArray text("a: &x {k: 1}\nb: *x\nc: [a: 1]\n");
    YamlEdit edit(text);
    QVERIFY(edit.remove({"a"}));                                // The alias would lose its anchor.
    QVERIFY(edit.remove({"a", "k"}));                           // The alias's map would change.
    QVERIFY(edit.remove({"z"}));                                // There is none.
    QVERIFY(edit.remove({}));                                   // Nothing would be left.
    QVERIFY(edit.setText({"c"}, "1"));                          // A list.
    QVERIFY(edit.setText({"c", "5"}, "1"));                     // Beyond it.
    QVERIFY(edit.insert({"a"}, "l", YamlTree::text("1")));      // Shared.
    QVERIFY(edit.insert({}, "a", YamlTree::text("1")));         // There already.
    QVERIFY(edit.insert({}, "n", YamlTree::text("1"), "z"));    // Behind none.
    QVERIFY(edit.insert({"c"}, "n", YamlTree::text("1")));      // A list.
    QVERIFY(edit.insert({"c", "0"}, "n", YamlTree::text("1"))); // Has no brackets of its own.
    QVERIFY(edit.add({"a"}, YamlTree::text("1")));              // A map.
    QVERIFY(edit.add({"c"}, YamlTree::text("1"), 4));           // Behind none.
    QCOMPARE(edit.text(), text);
}

void tst_YamlEdit::textThatCannotBeReadIsNotEdited()
{
    YamlEdit edit("a: [1\n");
    QVERIFY(edit.error());
    QVERIFY(edit.setText({"a"}, "1"));
    QVERIFY(edit.insert({}, "b", YamlTree::text("1")));
    QVERIFY(edit.add({}, YamlTree::text("1")));
    QVERIFY(edit.remove({"a"}));
    QCOMPARE(edit.text(), QByteArray("a: [1\n"));
}

NORVO_GUILESS_TEST(tst_YamlEdit)
#include "tst_YamlEdit.moc"
