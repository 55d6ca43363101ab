// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlErrors.h"

#include "host/yaml/YamlBuilder.h"
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
