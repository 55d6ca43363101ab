// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/CommandWords.h"
#include "TestMain.h"

#include <QtTest>

class tst_CommandWords : public QObject
{
    Q_OBJECT

private slots:
    void splits_data();
    void splits();
    void refuses_data();
    void refuses();
};

void tst_CommandWords::splits_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("words");

    QTest::newRow("oneWord") << "date" << QStringList{"date"};
    QTest::newRow("spacesSeparate") << "  a \t b\nc " << QStringList{"a", "b", "c"};
    QTest::newRow("doubleQuotesKeepBlanks") << "sh -c \"a  b\"" << QStringList{"sh", "-c", "a  b"};
    QTest::newRow("singleQuotesKeepBlanks") << "sh -c 'a  b'" << QStringList{"sh", "-c", "a  b"};
    QTest::newRow("quotesWithinAWord") << "--a='b c'd" << QStringList{"--a=b cd"};
    QTest::newRow("otherQuoteInside") << "\"it's\" 'a \"b\"'" << QStringList{"it's", "a \"b\""};
    QTest::newRow("emptyWord") << "a '' \"\" b" << QStringList{"a", "", "", "b"};
    QTest::newRow("backslashOutsideQuotes") << "a\\ b \\\"c" << QStringList{"a b", "\"c"};
    QTest::newRow("backslashInDoubleQuotes")
        << R"("a\"b" "c\\" "d\n")" << QStringList{"a\"b", "c\\", "d\\n"};
    QTest::newRow("backslashInSingleQuotes") << R"('a\' b)" << QStringList{"a\\", "b"};
    QTest::newRow("backslashesInSingleQuotes") << R"('a\\b\"c')" << QStringList{R"(a\\b\"c)"};
    QTest::newRow("noShell") << "echo $HOME *.txt | cat > f; ls &"
                             << QStringList{"echo", "$HOME", "*.txt", "|", "cat",
                                            ">",    "f;",    "ls",    "&"};
    QTest::newRow("otherLetters") << QString::fromUtf8("écho “ß”")
                                  << QStringList{QString::fromUtf8("écho"),
                                                 QString::fromUtf8("“ß”")};
}

void tst_CommandWords::splits()
{
    QFETCH(QString, command);

    const norvo::CommandWords read = norvo::splitCommand(command);
    QCOMPARE(read.error, QString());
    QTEST(read.words, "words");
}

void tst_CommandWords::refuses_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("expected");

    QTest::newRow("empty") << ""
                           << "it names no program";
    QTest::newRow("spacesOnly") << " \t\n"
                                << "it names no program";
    QTest::newRow("openDoubleQuote") << "a \"b c"
                                     << "the quote at character 3 is not closed";
    QTest::newRow("openSingleQuote") << "'"
                                     << "the quote at character 1 is not closed";
    QTest::newRow("lastBackslash") << "a \\"
                                   << "nothing follows its last backslash";
}

void tst_CommandWords::refuses()
{
    QFETCH(QString, command);

    const norvo::CommandWords read = norvo::splitCommand(command);
    QVERIFY(read.words.isEmpty());
    QTEST(read.error, "expected");
}

NORVO_APPLESS_TEST(tst_CommandWords)
#include "tst_CommandWords.moc"
