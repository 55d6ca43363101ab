// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlText.h"

#include "host/yaml/YamlTree.h"
#include "TestMain.h"

#include <QtTest>

using namespace norvo;

/// The very characters that texts are written in.
class tst_YamlText : public QObject
{
    Q_OBJECT

private slots:
    void doubleQuotesEscapeWhatAnEditorMayNotShow_data();
    void doubleQuotesEscapeWhatAnEditorMayNotShow();
    void byteOrderMarksOfAValueAreRead();
    void halfAPairBecomesTheReplacementCharacter();
    void singleQuotesHoldNoEscapes_data();
    void singleQuotesHoldNoEscapes();
    void quotesAreWrittenWhereTheyAreNeeded_data();
    void quotesAreWrittenWhereTheyAreNeeded();
    void keysAreQuotedWhereTheyAreNoKeys_data();
    void keysAreQuotedWhereTheyAreNoKeys();
    void blockScalarKeepsSignAndComment_data();
    void blockScalarKeepsSignAndComment();
    void treeIsWrittenOnOneLine();
    void treesAreTheSameWhateverTheirStyle_data();
    void treesAreTheSameWhateverTheirStyle();
};

void tst_YamlText::doubleQuotesEscapeWhatAnEditorMayNotShow_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");
    const auto row = [](const char* name, const QString& text, const QString& written) {
        QTest::newRow(name) << text << written;
    };
    const auto character = [](uint code) { return QString::fromUcs4(&code, 1); };
    row("nothing", "", "\"\"");
    row("quotes and backslashes", R"(a"b\c)", R"("a\"b\\c")");
    row("lines", "a\nb\n", R"("a\nb\n")");
    row("tab", "a\tb", R"("a\u0009b")");
    row("first control character", character(0), R"("\u0000")");
    row("last control character", character(0x1f), R"("\u001f")");
    row("space", " ", "\" \"");
    row("tilde", "~", "\"~\"");
    row("delete", character(0x7f), R"("\u007f")");
    row("space that does not break", character(0xa0), R"("\u00a0")");
    row("behind it", character(0xa1), "\"" + character(0xa1) + "\"");
    row("before the separators", character(0x2027), "\"" + character(0x2027) + "\"");
    row("line separator", character(0x2028), R"("\u2028")");
    row("paragraph separator", character(0x2029), R"("\u2029")");
    row("behind the separators", character(0x202a), "\"" + character(0x202a) + "\"");
    row("byte order mark", QString(QChar(0xfeff)), R"("\ufeff")");
    row("replacement character", character(0xfffd), "\"" + character(0xfffd) + "\"");
    row("no character", character(0xfffe), R"("\ufffe")");
    row("the other one", character(0xffff), R"("\uffff")");
    row("no character of a higher plane", character(0x1fffe), R"("\U0001fffe")");
    row("beyond 16 bits", character(0x1f600), "\"" + character(0x1f600) + "\"");
}

void tst_YamlText::doubleQuotesEscapeWhatAnEditorMayNotShow()
{
    QFETCH(QString, text);
    QTEST(YamlText::doubleQuoted(text), "written");
}

void tst_YamlText::byteOrderMarksOfAValueAreRead()
{
    const QChar mark(QChar::ByteOrderMark);
    for (const QString& text : {QString(mark), QString(2, mark) + 'a', QString('a') + mark}) {
        const auto tree = YamlTree::read(SourceText(YamlText::doubleQuoted(text).toUtf8()));
        QCOMPARE(std::get<YamlNodePtr>(tree)->text, text);
    }
}

void tst_YamlText::halfAPairBecomesTheReplacementCharacter()
{
    const QString half = QString("a") + QChar(0xd83d) + 'b';
    QCOMPARE(YamlText::doubleQuoted(half), QString("\"a") + QChar(0xfffd) + "b\"");
}

void tst_YamlText::singleQuotesHoldNoEscapes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");
    QTest::newRow("nothing") << ""
                             << "''";
    QTest::newRow("quotes") << "it's 'so'"
                            << "'it''s ''so'''";
    QTest::newRow("backslash") << "\\n"
                               << "'\\n'";
    QTest::newRow("line end") << "a\n"
                              << "";
    QTest::newRow("tab") << "a\tb"
                         << "";
}

void tst_YamlText::singleQuotesHoldNoEscapes()
{
    QFETCH(QString, text);
    QTEST(YamlText::singleQuoted(text).value_or(QString()), "written");
}

void tst_YamlText::quotesAreWrittenWhereTheyAreNeeded_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("block");
    QTest::addColumn<QString>("flow");
    const auto row = [](const char* text, const char* block, const char* flow) {
        QTest::newRow(text) << text << block << flow;
    };
    row("a b", "a b", "a b");
    row("", "\"\"", "\"\"");
    row("a, b", "a, b", "\"a, b\"");
    row("a]", "a]", "\"a]\"");
    row("a}", "a}", "\"a}\"");
    row("[a]", "\"[a]\"", "\"[a]\"");
    row("a: b", "\"a: b\"", "\"a: b\"");
    row("a #b", "\"a #b\"", "\"a #b\"");
    row("a#b", "a#b", "a#b");
    row("-", "\"-\"", "\"-\"");
    row("-a", "-a", "-a");
    row("- a", "\"- a\"", "\"- a\"");
    row(" a", "\" a\"", "\" a\"");
    row("*a", "\"*a\"", "\"*a\"");
    row("&a", "\"&a\"", "\"&a\"");
    row("null", "null", "null");
    row("\"a\"", "'\"a\"'", "'\"a\"'");
    row("- \\d", "'- \\d'", "'- \\d'");
    row("- it's", "\"- it's\"", "\"- it's\"");
    row("- it's \"a\"", "\"- it's \\\"a\\\"\"", "\"- it's \\\"a\\\"\"");
    row("\"\t\"", "\"\\\"\\u0009\\\"\"", "\"\\\"\\u0009\\\"\"");
}

void tst_YamlText::quotesAreWrittenWhereTheyAreNeeded()
{
    QFETCH(QString, text);
    QTEST(YamlText::leastQuoted(text, false), "block");
    QTEST(YamlText::leastQuoted(text, true), "flow");
}

void tst_YamlText::keysAreQuotedWhereTheyAreNoKeys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("written");
    QTest::newRow("plain") << "widget/row"
                           << "widget/row";
    QTest::newRow("empty") << ""
                           << "\"\"";
    QTest::newRow("merge key") << "<<"
                               << "\"<<\"";
    QTest::newRow("colon") << "a: b"
                           << "\"a: b\"";
    QTest::newRow("comma") << "a, b"
                           << "\"a, b\"";
    QTest::newRow("line end") << "a\nb"
                              << R"("a\nb")";
    QTest::newRow("question mark") << "? a"
                                   << "\"? a\"";
}

void tst_YamlText::keysAreQuotedWhereTheyAreNoKeys()
{
    QFETCH(QString, key);
    QTEST(YamlText::leastQuotedKey(key), "written");
}

void tst_YamlText::blockScalarKeepsSignAndComment_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("written");
    const auto row = [](const char* name, const char* text, const char* header,
                        const char* written) { QTest::newRow(name) << text << header << written; };
    row("literal", "a\nb\n", "|", "|\n  a\n  b");
    row("without last line end", "a\nb", "|", "|-\n  a\n  b");
    row("comment", "a\n", "| # c", "| # c\n  a");
    row("comment behind a changed sign", "a", "| # c", "|- # c\n  a");
    row("folded text of one line", "a\n", ">", ">\n  a");
    row("folded text of several lines", "a\nb\n", "> # c", "| # c\n  a\n  b");
    row("empty line within", "a\n\nb\n", "|", "|\n  a\n\n  b");
    row("space within", "a\n  b\n", "|", "|\n  a\n    b");
    row("space at its start", " a\n", "|", "");
    row("line end at its start", "\na\n", "|", "");
    row("two line ends at its end", "a\n\n", "|", "");
    row("nothing", "", "|", "");
    row("line end alone", "\n", "|", "");
    row("escape", "a\tb\n", "|", "");
}

void tst_YamlText::blockScalarKeepsSignAndComment()
{
    QFETCH(QString, text);
    QFETCH(QString, header);
    QTEST(YamlText::block(text, header, "  ", "\n").value_or(QString()), "written");
}

void tst_YamlText::treeIsWrittenOnOneLine()
{
    YamlNode list;
    list.kind = YamlNode::Kind::List;
    for (const char* text : {"a, b", "c"}) {
        YamlEntry entry;
        entry.value = YamlTree::text(text);
        list.entries.push_back(entry);
    }
    const auto tree = YamlTree::map({{"k", std::make_shared<const YamlNode>(list)},
                                     {"l: m", YamlTree::map({})},
                                     {"n", std::make_shared<const YamlNode>()}});
    QCOMPARE(YamlText::flow(*tree), QString("{k: [\"a, b\", c], \"l: m\": {}, n: \"\"}"));
}

void tst_YamlText::treesAreTheSameWhateverTheirStyle_data()
{
    QTest::addColumn<QByteArray>("a");
    QTest::addColumn<QByteArray>("b");
    QTest::addColumn<bool>("isSame");
    const auto row = [](const char* name, const char* a, const char* b, bool isSame) {
        QTest::newRow(name) << QByteArray(a) << QByteArray(b) << isSame;
    };
    row("other style", "a: [1, {b: x}]\n", "{\"a\": ['1', b: x]}", true);
    row("other text", "a: 1\n", "a: 2\n", false);
    row("other key", "a: 1\n", "b: 1\n", false);
    row("other order", "{a: 1, b: 2}", "{b: 2, a: 1}", false);
    row("one more", "[1]", "[1, 2]", false);
    row("one less", "[1, 2]", "[1]", false);
    row("list for a map", "[a: 1]", "{a: 1}", false);
    row("nothing for an empty text", "a:\n", "a: ''\n", false);
    row("alias for the value that it names", "[&x 1, *x]", "[&x 1, 1]", false);
}

void tst_YamlText::treesAreTheSameWhateverTheirStyle()
{
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    QFETCH(bool, isSame);
    const SourceText sourceA(a);
    const SourceText sourceB(b);
    const auto treeA = std::get<YamlNodePtr>(YamlTree::read(sourceA));
    const auto treeB = std::get<YamlNodePtr>(YamlTree::read(sourceB));
    QCOMPARE(YamlTree::isSame(*treeA, *treeB), isSame);
}

NORVO_APPLESS_TEST(tst_YamlText)
#include "tst_YamlText.moc"
