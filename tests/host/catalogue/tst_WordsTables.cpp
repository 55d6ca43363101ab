// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/WordsTables.h"
#include "TestMain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace norvo;

/// What a plug-in's table may say, and what is said of one that is wrong.
class tst_WordsTables : public QObject
{
    Q_OBJECT

private slots:
    void wordsAreAddedToTheType();
    void definitionsOfPortsAreDescribed();
    void problemIsReportedWithItsPlace_data();
    void problemIsReportedWithItsPlace();
    void whatIsRightBesideAProblemIsRead();
    void commentBeforeTheFirstTypeIsNoType();
    void generalWordsGiveWayToThoseOfTheType();
    void checkReadsNoTextsForPeople_data();
    void checkReadsNoTextsForPeople();
    void checkReportsAProblemAtTheSamePlace();
    void tableOfAnotherShapeIsLeftAside_data();
    void tableOfAnotherShapeIsLeftAside();

private:
    /// A type with two parameters, an output and an input, and the words of that table.
    TypeWords described(const QByteArray& table, WordsTables::Part part = WordsTables::Part::All)
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath("t.yaml"));
        file.open(QIODevice::WriteOnly);
        file.write(table);
        file.close();
        m_problems.clear();
        TypeWords type;
        type.key = "gauge";
        type.params.resize(2);
        type.params[0].name = "low";
        type.params[1].name = "high end";
        type.outputs.resize(1);
        type.outputs[0].signature = "output(double,QString)";
        type.inputs.resize(1);
        type.inputs[0].signature = "input()";
        type.takesPorts = m_takesPorts;
        WordsTables(folder.path(), m_problems).addTo(type, part, m_problems);
        m_problems.replaceInStrings(folder.path() + '/', QString());
        return type;
    }

    QStringList m_problems;
    bool m_takesPorts = false;
};

void tst_WordsTables::wordsAreAddedToTheType()
{
    const TypeWords type = described("gauge:\n"
                                     "  purpose: >-\n"
                                     "    Shows\n"
                                     "    a number.\n"
                                     "  breaksCycles: true\n"
                                     "  params:\n"
                                     "    low: {meaning: Low end., kind: number, above: -1.5, "
                                     "max: 2, unit: ms, error: true, also: 'no'}\n"
                                     "    high end: {kind: picture file}\n"
                                     "  relations: [low < high end, {relation: low <= high end, "
                                     "error: true}, {relation: low < high end, error: false}]\n"
                                     "  outputs:\n"
                                     "    output(double,QString): Both.\n"
                                     "  inputs: {input(): A push.}\n"
                                     "  example: |\n"
                                     "    devices:\n"
                                     "      a: {device: gauge}\n");
    QCOMPARE(m_problems, QStringList());
    QCOMPARE(type.purpose, QString("Shows a number."));
    QVERIFY(type.breaksCycles);
    QVERIFY(!type.startsNothing);
    const ParamWords& low = type.params[0];
    QCOMPARE(low.meaning, QString("Low end."));
    QCOMPARE(low.range(), QString("above -1.5, at most 2"));
    QCOMPARE(low.unit, QString("ms"));
    QCOMPARE(low.also, QString("no"));
    QVERIFY(low.isErrorOutside);
    QVERIFY(type.params[1].isFile());
    QCOMPARE(type.relations.size(), 3);
    QVERIFY(!type.relations[2].isError);
    QVERIFY(!type.relations[0].isError && !type.relations[0].mayBeEqual);
    QVERIFY(type.relations[1].isError && type.relations[1].mayBeEqual);
    QCOMPARE(type.outputs[0].meaning, QString("Both."));
    QCOMPARE(type.outputs[0].carries(), QString("number, text"));
    QCOMPARE(type.inputs[0].carries(), QString("pulse"));
    QCOMPARE(type.example, QString("devices:\n  a: {device: gauge}\n"));
}

void tst_WordsTables::definitionsOfPortsAreDescribed()
{
    const QByteArray table = "gauge:\n  ports: {outputs: A register., inputs: Likewise.}\n";
    m_takesPorts = true;
    const TypeWords type = described(table);
    QCOMPARE(m_problems, QStringList());
    QCOMPARE(type.outputDefinition, QString("A register."));
    QCOMPARE(type.inputDefinition, QString("Likewise."));
    described("gauge: {ports: {output: x}}\n");
    QCOMPARE(m_problems, QStringList("t.yaml:1:17: unknown key \"output\""));
    m_takesPorts = false;
    described(table);
    QCOMPARE(m_problems,
             QStringList("t.yaml:2:10: gauge takes no outputs and inputs of its author's"));
}

void tst_WordsTables::problemIsReportedWithItsPlace_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QString>("problem");
    QTest::newRow("parameter") << QByteArray("gauge:\n  params: {lwo: {meaning: x}}\n")
                               << "t.yaml:2:12: gauge has no parameter \"lwo\"";
    QTest::newRow("output") << QByteArray("gauge: {outputs: {output(double): x}}\n")
                            << "t.yaml:1:19: gauge has no output \"output(double)\"";
    QTest::newRow("input") << QByteArray("gauge: {inputs: {input(int): x}}\n")
                           << "t.yaml:1:18: gauge has no input \"input(int)\"";
    QTest::newRow("relation") << QByteArray("gauge: {relations: [low < up]}\n")
                              << "t.yaml:1:21: \"low < up\" is not a relation of two parameters "
                                 "of gauge";
    QTest::newRow("operator") << QByteArray("gauge: {relations: [low = high end]}\n")
                              << "t.yaml:1:21: \"low = high end\" is not a relation of two "
                                 "parameters of gauge";
    QTest::newRow("kind") << QByteArray("gauge: {params: {low: {kind: nummer}}}\n")
                          << "t.yaml:1:30: unknown kind \"nummer\"";
    QTest::newRow("minimum") << QByteArray("gauge: {params: {low: {min: one}}}\n")
                             << "t.yaml:1:29: \"one\" is not a number";
    QTest::newRow("text that is no YAML")
        << QByteArray("lamp: {}\n\n# A comment.\ngauge: {purpose: [x}\n")
        << "t.yaml:4:20: broken YAML: \"}\" is not expected here; check that brackets "
           "match";
    QTest::newRow("behind other types") << QByteArray("lamp:\n  purpos: x\n'gauge':\n  purpos: x\n")
                                        << "t.yaml:4:3: unknown key \"purpos\"";
    QTest::newRow("key of a type")
        << QByteArray("gauge: {purpos: x}\n") << "t.yaml:1:9: unknown key \"purpos\"";
    QTest::newRow("key of a parameter") << QByteArray("gauge: {params: {low: {units: x}}}\n")
                                        << "t.yaml:1:24: unknown key \"units\"";
}

void tst_WordsTables::problemIsReportedWithItsPlace()
{
    QFETCH(QByteArray, table);
    described(table);
    QTEST(m_problems.join('|'), "problem");
}

void tst_WordsTables::whatIsRightBesideAProblemIsRead()
{
    const TypeWords type = described("gauge: {purpos: x, params: {low: {meaning: Low end.}}}\n");
    QCOMPARE(m_problems.size(), 1);
    QCOMPARE(type.params[0].meaning, QString("Low end."));
}

void tst_WordsTables::commentBeforeTheFirstTypeIsNoType()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("t.yaml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("# Of a type: its words.\n\n'gauge': {}\nlamp:\n  purpose: x\n");
    file.close();
    QStringList problems;
    QCOMPARE(WordsTables(folder.path(), problems).types(), QStringList({"gauge", "lamp"}));
    QCOMPARE(problems, QStringList());
}

void tst_WordsTables::generalWordsGiveWayToThoseOfTheType()
{
    const TypeWords type = described("'*': {params: {low: {meaning: Any.}, high end: {meaning: "
                                     "Any., max: 9}, other: {meaning: x}}}\n"
                                     "gauge: {params: {low: {meaning: Own.}}}\n");
    QCOMPARE(m_problems, QStringList());
    QCOMPARE(type.params[0].meaning, QString("Own."));
    QVERIFY(!type.params[0].isOfEveryType);
    QCOMPARE(type.params[1].meaning, QString("Any."));
    QCOMPARE(type.params[1].range(), QString("at most 9"));
    QVERIFY(type.params[1].isOfEveryType);
}

void tst_WordsTables::checkReadsNoTextsForPeople_data()
{
    QTest::addColumn<QByteArray>("table");
    const QByteArray table = "gauge:\n"
                             "  purpose: It shows.\n"
                             "  notes: >-\n"
                             "    params: a word\n"
                             "\n"
                             "    of a text.\n"
                             "  # A comment.\n"
                             "  control: asks\n"
                             "  example: |\n"
                             "    devices: {}\n"
                             "  params:\n"
                             "    low: {max: 2}\n"
                             "    high end:\n"
                             "      min: 1\n"
                             "  outputs:\n"
                             "    output(double,QString): Both.\n"
                             "  relations: [low < high end]";
    QTest::newRow("two blanks") << table;
    QTest::newRow("four blanks") << QByteArray(table).replace("  ", "    ");
    QTest::newRow("ends of lines as of DOS") << QByteArray(table).replace("\n", "\r\n");
    QTest::newRow("parameter named like a key")
        << QByteArray(table).replace("    low:", "    notes: {max: 5}\n    low:");
}

void tst_WordsTables::checkReadsNoTextsForPeople()
{
    QFETCH(QByteArray, table);
    const TypeWords type = described(table, WordsTables::Part::ForCheck);
    QCOMPARE(type.purpose, QString("It shows."));
    QCOMPARE(type.control, norvo::Control::Asks);
    QCOMPARE(type.params[0].range(), QString("at most 2"));
    QCOMPARE(type.params[1].range(), QString("at least 1"));
    QCOMPARE(type.relations.size(), 1);
    QCOMPARE(type.notes, QString());
    QCOMPARE(type.example, QString());
    QCOMPARE(type.outputs[0].meaning, QString());
    QCOMPARE(described(table).outputs[0].meaning, QString("Both."));
    QVERIFY(described(table).notes.contains("of a text"));
}

void tst_WordsTables::checkReportsAProblemAtTheSamePlace()
{
    const QByteArray table = "gauge:\n  notes: >-\n    a\n    b\n  colour: red\n";
    described(table);
    const QStringList problems = m_problems;
    QCOMPARE(problems, QStringList("t.yaml:5:3: unknown key \"colour\""));
    described(table, WordsTables::Part::ForCheck);
    QCOMPARE(m_problems, problems);
}

void tst_WordsTables::tableOfAnotherShapeIsLeftAside_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::newRow("list") << QByteArray("- gauge\n");
    QTest::newRow("text") << QByteArray("gauge\n");
    QTest::newRow("entry is a text") << QByteArray("gauge: x\n");
    QTest::newRow("entry is a list") << QByteArray("gauge: [params]\n");
    QTest::newRow("parameters are a list") << QByteArray("gauge: {params: [low]}\n");
    QTest::newRow("outputs are a text") << QByteArray("gauge: {outputs: x}\n");
    QTest::newRow("relations are a text") << QByteArray("gauge: {relations: x}\n");
}

void tst_WordsTables::tableOfAnotherShapeIsLeftAside()
{
    QFETCH(QByteArray, table);
    const TypeWords type = described(table);
    QCOMPARE(type.params.size(), 2);
    QVERIFY(type.relations.isEmpty());
    QVERIFY(type.purpose.isEmpty());
}

NORVO_APPLESS_TEST(tst_WordsTables)
#include "tst_WordsTables.moc"
