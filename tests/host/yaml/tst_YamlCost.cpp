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

QString errorOf(const QByteArray& text)
{
    const auto tree = read(SourceText(text));
    const auto* error = std::get_if<norvo::TextError>(&tree);
    return error ? toString(error->place) + ": " + error->text : QString();
}

/// As many times as fit into the largest file.
QByteArray filledWith(const QByteArray& start, const QByteArray& piece)
{
    return start + piece.repeated((kMaxSize - start.size()) / piece.size());
}

/// What a process of its own needs to read the largest file that begins so and goes on so.
Cost costOf(const QByteArray& start, const QByteArray& piece)
{
    const pid_t child = fork();
    if (child == 0) {
        read(SourceText(filledWith(start, piece)));
        _exit(0);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const timeval& time = usage.ru_utime;
    return {double(time.tv_sec) + double(time.tv_usec) / 1e6, usage.ru_maxrss};
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
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("piece");
    QTest::newRow("brackets") << QByteArray("") << QByteArray("[");
    QTest::newRow("braces") << QByteArray("") << QByteArray("{");
    QTest::newRow("brackets of a value") << QByteArray("title: ") << QByteArray("[");
    QTest::newRow("brackets on lines") << QByteArray("title:\n  ") << QByteArray("[\n  ");
    QTest::newRow("texts in brackets") << QByteArray("[a") << QByteArray(",a");
    QTest::newRow("commas in brackets") << QByteArray("[") << QByteArray(",");
    QTest::newRow("lists in brackets") << QByteArray("[") << QByteArray("[],");
    QTest::newRow("lists on a line") << QByteArray("") << QByteArray("[]");
    QTest::newRow("lists without a list") << QByteArray("- x\n- ") << QByteArray("[],");
    QTest::newRow("lists behind a list") << QByteArray("- [a]\n- ") << QByteArray("[[],");
    QTest::newRow("lists behind lists") << QByteArray("title: [[a, [b]], ") << QByteArray("[],");
    QTest::newRow("lists behind a text in a block")
        << QByteArray("- |\n  x ] y\n\n- [") << QByteArray("[],");
    QTest::newRow("lists behind a folded text")
        << QByteArray("- x\n  x [ y\n- [") << QByteArray("[],");
    QTest::newRow("lists behind an alias") << QByteArray("- &a x\n- *a\n- [") << QByteArray("[],");
    QTest::newRow("lists behind nothing") << QByteArray("- ~\n-\n- [") << QByteArray("[],");
    QTest::newRow("lists behind a null") << QByteArray("- ~\n- [") << QByteArray("[],");
    QTest::newRow("lists of a document") << QByteArray("%YAML 1.2\n---\n[") << QByteArray("[],");
    QTest::newRow("lists behind a document") << QByteArray("a\n...\n[") << QByteArray("[],");
    QTest::newRow("lists behind a directive") << QByteArray("%x y\n[") << QByteArray("[],");
    QTest::newRow("lists behind quotes") << QByteArray("- \"]\\n\"\n- [") << QByteArray("[],");
    QTest::newRow("lists behind a comment") << QByteArray("- x # [\n#\n- [") << QByteArray("[],");
    QTest::newRow("texts on a line") << QByteArray("") << QByteArray("\"\" ");
    QTest::newRow("quotes") << QByteArray("") << QByteArray("\"");
    QTest::newRow("tags") << QByteArray("") << QByteArray("!a ");
    QTest::newRow("tags in brackets") << QByteArray("[") << QByteArray("!a ");
    QTest::newRow("anchors in brackets") << QByteArray("[") << QByteArray("&a ");
    QTest::newRow("aliases in brackets") << QByteArray("[") << QByteArray("*a ");
    QTest::newRow("colons in brackets") << QByteArray("[") << QByteArray(": ");
    QTest::newRow("question marks in brackets") << QByteArray("[") << QByteArray("? ");
    QTest::newRow("verbatim tags") << QByteArray("- [") << QByteArray("!<x> a, ");
    QTest::newRow("verbatim tags without end") << QByteArray("[") << QByteArray("!<a, ");
    QTest::newRow("plain text") << QByteArray("title: ") << QByteArray("a ");
}

void tst_YamlCost::costIsBounded()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer needs time and memory of its own");
#endif
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, piece);
    const Cost cost = costOf(start, piece);
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
    QTest::newRow("texts") << filledWith("[a", ",a") << "line 1, column 199998" + many;
    QTest::newRow("marks of a text")
        << filledWith("- [a]\n- \"", "[]")
        << "line 1, column 4: more than 600,000 brackets, commas and other marks in the list, map "
           "or text that begins here";
    QTest::newRow("aliases in brackets that are not closed")
        << filledWith("- &a x\n- [", "*a ")
        << "line 1, column 3: more than 600,000 brackets, commas and other marks in the list, map "
           "or text that begins here";
    QTest::newRow("comments in brackets that are not closed")
        << filledWith("[", "a #\n ")
        << "line 1, column 1: more than 600,000 brackets, commas and other marks in the list, map "
           "or text that begins here";
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
