// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlErrors.h"

#include "host/yaml/YamlBuilder.h"
#include "host/yaml/YamlTree.h"
#include "TestMain.h"

#include <QtTest>

/// Texts that the versions of the parser word differently.
class tst_YamlErrors : public QObject
{
    Q_OBJECT

private slots:
    void nameBehindTheParsersTextIsLeftOut()
    {
        const norvo::SourceText source("a: *type\n");
        const norvo::YamlBuilder builder(source);
        YAML::Mark mark;
        mark.pos = 3;
        for (const char* end : {"", ": type"}) {
            const YAML::ParserException exception(
                mark, std::string("the referenced anchor is not defined") + end);
            const auto error = norvo::toError(exception, source, builder);
            QCOMPARE(error.place.line, 1);
            QCOMPARE(error.place.column, 4);
            QCOMPARE(error.text,
                     QString("broken YAML: no anchor of this name is defined above; a text that "
                             "begins with \"*\" needs quotes"));
        }
    }

    void errorOfTheParserHasAPlaceAndAdvice_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected");
        const QString escape("unknown escape sequence; a backslash in double quotes is written "
                             "twice");
        QTest::newRow("unknown escape") << QByteArray("a: \"b\\qc\"\n") << "1:6 " + escape;
        QTest::newRow("no hexadecimal digit") << QByteArray("a: \"b\\xzz\"\n") << "1:6 " + escape;
        QTest::newRow("half of a pair") << QByteArray("a: \"\\ud800\"\n") << "1:5 " + escape;
        QTest::newRow("behind an item")
            << QByteArray("a:\n  - 'b' 'c'\n")
            << "2:9 the next \"- \" of the list that begins in line 2, column 3 is expected here; "
               "check the indentation and the quotes";
        QTest::newRow("behind a map") << QByteArray("a:\n  b: c\n  - d\n")
                                      << "3:3 the next key of the map that begins in line 2, "
                                         "column 3 is expected here; check "
                                         "the indentation and the quotes";
        QTest::newRow("backslash before a closing quote")
            << QByteArray("a: \"\\n \\q\"\n") << "1:8 " + escape;
        QTest::newRow("tab in front of the error")
            << QByteArray("a:\n  b: 1\n \t @x\n") << "3:2 tab in indentation; use spaces";
        QTest::newRow("tab behind a text is none")
            << QByteArray("a: 'x'\t@y\n")
            << "1:8 a text without quotes cannot start with \"@\"; put it in quotes";
        QTest::newRow("character of two bytes")
            << QByteArray("\xc3\xa4: @x\n")
            << "1:4 a text without quotes cannot start with \"@\"; put it in quotes";
    }
    void errorOfTheParserHasAPlaceAndAdvice()
    {
        QFETCH(QByteArray, text);
        const auto tree = norvo::YamlTree::read(norvo::SourceText(text));
        const auto* const error = std::get_if<norvo::TextError>(&tree);
        QVERIFY(error);
        QString line = error->text;
        line.remove("broken YAML: ");
        QTEST(QString("%1:%2 %3").arg(error->place.line).arg(error->place.column).arg(line),
              "expected");
    }

    void keysAreNoValues()
    {
        // The root, the anchored text, the list, and two for each map in it.
        QByteArray text("a: &x k\nb:\n");
        text += QByteArray("  - *x : 1\n").repeated(25000);
        text += QByteArray("  - ~: 1\n").repeated(24998);
        const auto atTheLimit = norvo::YamlTree::read(norvo::SourceText(text + "c: 1\n"));
        QVERIFY(std::get_if<norvo::YamlNodePtr>(&atTheLimit));
        const auto beyond = norvo::YamlTree::read(norvo::SourceText(text + "c: 1\nd: 1\n"));
        const auto* const error = std::get_if<norvo::TextError>(&beyond);
        QVERIFY(error);
        QCOMPARE(error->place.line, 50002);
        QCOMPARE(error->text, QString("more than 100,000 values once aliases are followed"));
    }

    void unknownTextIsPassedOn()
    {
        const norvo::SourceText source("a");
        const norvo::YamlBuilder builder(source);
        const YAML::ParserException exception(YAML::Mark::null_mark(), "no %1 left");
        const auto error = norvo::toError(exception, source, builder);
        QCOMPARE(error.place.line, 0);
        QCOMPARE(error.text, QString("broken YAML: no %1 left"));
    }
};

NORVO_APPLESS_TEST(tst_YamlErrors)
#include "tst_YamlErrors.moc"
