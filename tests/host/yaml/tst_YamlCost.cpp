// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlTree.h"
#include "TestMain.h"

#include <QtTest>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using norvo::SourceText;
using norvo::YamlTree::read;

namespace {

constexpr int kMaxSize = 4 * 1024 * 1024;
constexpr double kMaxSeconds = 6; // Of the processor, in a build without optimisation.
constexpr long kMaxKilobytes = 300 * 1024;

struct Cost
{
    double seconds = 0;
    long kilobytes = 0;
};

/// What a process of its own needs to read the text.
Cost costOf(const QByteArray& text)
{
    const pid_t child = fork();
    if (child == 0) {
        read(SourceText(text));
        _exit(0);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const timeval& time = usage.ru_utime;
    return {double(time.tv_sec) + double(time.tv_usec) / 1e6, usage.ru_maxrss};
}

QString errorOf(const QByteArray& text)
{
    const auto tree = read(SourceText(text));
    const auto* error = std::get_if<norvo::TextError>(&tree);
    return error ? toString(error->place) + ": " + error->text : QString();
}

/// As many times as fit into the largest file.
QByteArray filledWith(const QByteArray& start, const QByteArray& piece, const QByteArray& end = {})
{
    return start + piece.repeated((kMaxSize - start.size() - end.size()) / piece.size()) + end;
}

/// Enough for the parser's reports to lag behind.
QByteArray partlyFilledWith(const QByteArray& start, const QByteArray& piece,
                            const QByteArray& end = {})
{
    return start + piece.repeated(kMaxSize / 8 / piece.size()) + end;
}

} // namespace

/// Any text of up to 4 MiB is read, or refused, within bounds of time and memory.
class tst_YamlCost : public QObject
{
    Q_OBJECT

private slots:
    void costIsBounded_data();
    void costIsBounded();
    void limitInBracketsIsReportedAtItsPlace_data();
    void limitInBracketsIsReportedAtItsPlace();
    void manyMarksInATextAreRead_data();
    void manyMarksInATextAreRead();
    void fullListInBracketsIsRead();
};

void tst_YamlCost::costIsBounded_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("brackets") << filledWith("", "[");
    QTest::newRow("braces") << filledWith("", "{");
    QTest::newRow("brackets of a value") << filledWith("title: ", "[");
    QTest::newRow("brackets on lines") << filledWith("title:\n  ", "[\n  ");
    QTest::newRow("texts in brackets") << filledWith("[a", ",a");
    QTest::newRow("commas in brackets") << filledWith("[", ",");
    QTest::newRow("lists in brackets") << filledWith("[", "[],");
    QTest::newRow("lists on a line") << filledWith("", "[]");
    QTest::newRow("lists without a list") << filledWith("- x\n- ", "[],");
    QTest::newRow("lists behind a list") << filledWith("- [a]\n- ", "[[],");
    QTest::newRow("lists behind lists") << filledWith("title: [[a, [b]], ", "[],");
    QTest::newRow("lists behind a text in a block") << filledWith("- |\n  x ] y\n\n- [", "[],");
    QTest::newRow("lists behind a folded text") << filledWith("- x\n  x [ y\n- [", "[],");
    QTest::newRow("lists behind an alias") << filledWith("- &a x\n- *a\n- [", "[],");
    QTest::newRow("lists behind nothing") << filledWith("- ~\n-\n- [", "[],");
    QTest::newRow("lists behind a null") << filledWith("- ~\n- [", "[],");
    QTest::newRow("lists of a document") << filledWith("%YAML 1.2\n---\n[", "[],");
    QTest::newRow("lists behind a document") << filledWith("a\n...\n[", "[],");
    QTest::newRow("lists behind a directive") << filledWith("%x y\n[", "[],");
    QTest::newRow("lists behind quotes") << filledWith("- \"]\\n\"\n- [", "[],");
    QTest::newRow("lists behind a comment") << filledWith("- x # [\n#\n- [", "[],");
    QTest::newRow("texts on a line") << filledWith("", "\"\" ");
    QTest::newRow("quotes") << filledWith("", "\"");
    QTest::newRow("tags") << filledWith("", "!a ");
    QTest::newRow("tags in brackets") << filledWith("[", "!a ");
    QTest::newRow("anchors in brackets") << filledWith("[", "&a ");
    QTest::newRow("aliases in brackets") << filledWith("[", "*a ");
    QTest::newRow("colons in brackets") << filledWith("[", ": ");
    QTest::newRow("question marks in brackets") << filledWith("[", "? ");
    QTest::newRow("verbatim tags") << "- [" + QByteArray("!<x> a, ").repeated(90000) + "]";
    QTest::newRow("verbatim tags without end") << filledWith("[", "!<a, ");
    QTest::newRow("plain text") << filledWith("title: ", "a ");
}

void tst_YamlCost::costIsBounded()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer needs time and memory of its own");
#endif
    QFETCH(QByteArray, text);
    const Cost cost = costOf(text);
    QVERIFY2(cost.seconds < kMaxSeconds, qPrintable(QString("%1 s").arg(cost.seconds)));
    QVERIFY2(cost.kilobytes < kMaxKilobytes, qPrintable(QString("%1 KB").arg(cost.kilobytes)));
}

void tst_YamlCost::limitInBracketsIsReportedAtItsPlace_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const QString deep = ": nested deeper than 64 levels";
    const QString many = ": more than 100,000 values once aliases are followed";
    QTest::newRow("brackets") << filledWith("", "[") << "line 1, column 65" + deep;
    QTest::newRow("of a value") << filledWith("title: ", "[") << "line 1, column 71" + deep;
    QTest::newRow("on lines") << filledWith("title:\n ", "[\n ") << "line 65, column 2" + deep;
    QTest::newRow("behind a list") << filledWith("- [a]\n- ", "[") << "line 2, column 66" + deep;
    QTest::newRow("texts") << filledWith("[a", ",a") << "line 1, column 200001" + many;
    QTest::newRow("tags") << filledWith("[", "!a ")
                          << "line 1, column 2999999: more than 1,000,000 tokens in one list, map "
                             "or line";
}

void tst_YamlCost::limitInBracketsIsReportedAtItsPlace()
{
    QFETCH(QByteArray, text);
    QTEST(errorOf(text), "error");
}

void tst_YamlCost::manyMarksInATextAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("in double quotes") << partlyFilledWith("title: \"", "[{,", "\"");
    QTest::newRow("in single quotes") << partlyFilledWith("title: '", "[{,", "'");
    QTest::newRow("in quotes in brackets") << partlyFilledWith("title: [a, \"", "[{,", "\"]");
    QTest::newRow("plain") << partlyFilledWith("title: x", "[{, ");
    QTest::newRow("in a block") << partlyFilledWith("title: |\n", "  [{,&a *a\n");
    QTest::newRow("folded") << partlyFilledWith("title: >-\n  ", "[{,");
    QTest::newRow("in a comment") << partlyFilledWith("title: x #", "[{,");
}

void tst_YamlCost::manyMarksInATextAreRead()
{
    QFETCH(QByteArray, text);
    QCOMPARE(errorOf(text), QString());
}

void tst_YamlCost::fullListInBracketsIsRead()
{
    // A map, and lists in it that hold the rest: 100,000 values, each with all that it can have.
    const QByteArray list = "[" + QByteArray("&a !t \"x, y\", ").repeated(999) + "[]]";
    QByteArray text = "{? &k !t \"k\" : [";
    text += (list + ", ").repeated(98);
    text += QByteArray("{k: {}}, ").repeated(899) + "{}]}";
    QVERIFY(text.size() > 1000000);
    QCOMPARE(errorOf(text), QString());
    const int values = 2 + 98 * 1001 + 899 * 2 + 1;
    QCOMPARE(errorOf(QByteArray(text).replace("{}]}", QByteArray("[], ").repeated(100000 - values) +
                                                          "{}]}")),
             QString());
    QVERIFY(errorOf(QByteArray(text).replace("{}]}",
                                             QByteArray("[], ").repeated(100001 - values) + "{}]}"))
                .contains("more than 100,000 values"));
}

NORVO_APPLESS_TEST(tst_YamlCost)
#include "tst_YamlCost.moc"
