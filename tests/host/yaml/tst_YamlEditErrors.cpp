// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlEdit.h"

#include "Edits.h"
#include "TestMain.h"

#include <QtTest>

#include <functional>

using namespace norvo;
using edits::pathOf;

namespace {

using Attempt = std::function<YamlEdit::Error(YamlEdit&)>;

/// "line:column text" of the error that the attempt ends with; of the root no place is told.
QString refusal(const QByteArray& text, const Attempt& attempt)
{
    YamlEdit edit(text);
    const auto error = attempt(edit);
    const bool isUnchanged = edit.text() == text;
    return error && isUnchanged ? QString("%1:%2 %3")
                                      .arg(error->place.line)
                                      .arg(error->place.column)
                                      .arg(error->text)
                                : QString("no error, or a change");
}

Attempt set(const QString& path, const QString& text = "9")
{
    return [=](YamlEdit& edit) { return edit.setText(pathOf(path), text); };
}

Attempt removal(const QString& path)
{
    return [=](YamlEdit& edit) { return edit.remove(pathOf(path)); };
}

Attempt insert(const QString& path, const QString& key, const QString& after = {})
{
    return
        [=](YamlEdit& edit) { return edit.insert(pathOf(path), key, YamlTree::text("v"), after); };
}

Attempt add(const QString& path, int after = -1)
{
    return [=](YamlEdit& edit) { return edit.add(pathOf(path), YamlTree::text("v"), after); };
}

} // namespace

Q_DECLARE_METATYPE(Attempt)

/// What is said of an edit that is refused, and where.
class tst_YamlEditErrors : public QObject
{
    Q_OBJECT

private slots:
    void refusedEditSaysWhyAndWhere_data();
    void refusedEditSaysWhyAndWhere();
    void lastEditIsKnown();
};

void tst_YamlEditErrors::refusedEditSaysWhyAndWhere_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<Attempt>("attempt");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* text, const Attempt& attempt,
                        const char* expected) {
        QTest::newRow(name) << QByteArray(text) << attempt << expected;
    };
    const char* const shared = "a: &x {k: 1}\nb: *x\nc: [d, {e: 1}]\n";
    row("text that cannot be read", "a: [1\n", set("a"),
        "1:4 broken YAML: the list that opens here is not closed; \"]\" is missing before line 2, "
        "column 1");
    row("no such key", shared, set("z"), "0:0 there is no entry \"z\"");
    row("no such key below", shared, set("c>1>z"), "3:8 there is no entry \"z\"");
    row("no such item", shared, set("c>2"), "3:4 there is no entry \"2\"");
    row("item without number", shared, set("c>d"), "3:4 there is no entry \"d\"");
    row("entry of a text", shared, set("c>0>z"), "3:5 there is no entry \"z\"");
    row("map for a text", shared, set("c>1"), "3:8 this is a list or a map, not a text");
    row("list for a text", shared, set("c"), "3:4 this is a list or a map, not a text");
    row("root for a text", "a", set(""), "0:0 this is a list or a map, not a text");
    row("text for a map", shared, insert("c>0", "k"), "3:5 this is not a map");
    row("list for a map", shared, insert("c", "k"), "3:4 this is not a map");
    row("key twice", shared, insert("c>1", "e"), "3:8 the key \"e\" is there already");
    row("behind no key", shared, insert("c>1", "k", "z"), "3:8 there is no key \"z\"");
    row("map for a list", shared, add("c>1"), "3:8 this is not a list");
    row("text for a list", shared, add("c>0"), "3:5 this is not a list");
    row("behind no item", shared, add("c", 2), "3:4 there is no entry 2");
    row("nothing left", shared, removal(""), "0:0 the whole text cannot be removed");
    row("nothing to remove", shared, removal("c>5"), "3:4 there is no entry \"5\"");
    const char* const used = "the alias in line 2, column 4 uses this value, too; write a value "
                             "there in its place first";
    const auto at = [](const char* place, const char* text) { return QString(place) + ' ' + text; };
    QTest::newRow("removal of what an alias uses")
        << QByteArray(shared) << removal("a") << at("1:7", used);
    QTest::newRow("removal within what an alias uses")
        << QByteArray(shared) << removal("a>k") << at("1:7", used);
    QTest::newRow("new entry of what an alias uses")
        << QByteArray(shared) << insert("a", "l") << at("1:7", used);
    row("new entry of an alias", shared, insert("b", "l"),
        "2:4 this alias stands for the value in line 1, column 7; change it there, for all who use "
        "it, or write a value here in the alias's place first");
    row("removal of an anchored key", "&x a: 1\nb: *x\n", removal("a"),
        "1:7 the alias in line 2, column 4 uses this value, too; write a value there in its place "
        "first");
    row("removal around an anchored value", "a: {k: [&x 1]}\nb: *x\n", removal("a"),
        "1:4 the alias in line 2, column 4 uses this value, too; write a value there in its place "
        "first");
    row("pair without braces", "c: [a: 1]\n", insert("c>0", "k"),
        "1:5 what is written here cannot be edited without changing more than was asked for; edit "
        "it by hand");
}

void tst_YamlEditErrors::refusedEditSaysWhyAndWhere()
{
    QFETCH(QByteArray, text);
    QFETCH(Attempt, attempt);
    QTEST(refusal(text, attempt), "expected");
}

void tst_YamlEditErrors::lastEditIsKnown()
{
    YamlEdit edit("a: 1\nb: 2\n");
    QVERIFY(!edit.setText({"b"}, "twenty"));
    QCOMPARE(edit.text(), QByteArray("a: 1\nb: twenty\n"));
    QCOMPARE(edit.text().mid(edit.editBegin(), edit.editEnd() - edit.editBegin()),
             QByteArray("twenty"));
    QVERIFY(!edit.setText({"a"}, "x"));
    QCOMPARE(edit.text().mid(edit.editBegin(), edit.editEnd() - edit.editBegin()), QByteArray("x"));
}

NORVO_GUILESS_TEST(tst_YamlEditErrors)
#include "tst_YamlEditErrors.moc"
