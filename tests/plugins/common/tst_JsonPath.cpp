// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/common/JsonPath.h"
#include "TestMain.h"

#include <QJsonArray>
#include <QtTest>

#include <limits>

using norvo::JsonPath;
using norvo::readJson;
using norvo::variantOf;
using norvo::writeJson;

class tst_JsonPath : public QObject
{
    Q_OBJECT

private slots:
    void pathFindsItsValue_data();
    void pathFindsItsValue();
    void pathThatDoesNotReadIsAnError_data();
    void pathThatDoesNotReadIsAnError();
    void errorLeavesThePathAsItWas();
    void stepsAndIndexesAreBounded();
    void valueIsPlaced_data();
    void valueIsPlaced();
    void valuesAreReadAsWhatTheyAre_data();
    void valuesAreReadAsWhatTheyAre();
    void whatIsNotJsonIsNotRead_data();
    void whatIsNotJsonIsNotRead();
    void numberThatJsonCannotHoldIsNull();
};

void tst_JsonPath::pathFindsItsValue_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("value"); ///< As JSON; empty: there is none.

    QTest::newRow("whole") << "$"
                           << R"({"a-1":[10,{"b c":"x"}],"a.b":2,"ä":{"_n":true}})";
    QTest::newRow("member") << "$.a-1"
                            << R"([10,{"b c":"x"}])";
    QTest::newRow("element") << "$.a-1[0]"
                             << "10";
    QTest::newRow("name in quotes") << "$.a-1[1]['b c']"
                                    << R"("x")";
    QTest::newRow("name in double quotes") << R"($["a.b"])"
                                           << "2";
    QTest::newRow("other letters") << "$.ä._n"
                                   << "true";
    QTest::newRow("missing member") << "$.b.c"
                                    << "";
    QTest::newRow("beyond the end") << "$.a-1[2]"
                                    << "";
    QTest::newRow("element of an object") << "$[0]"
                                          << "";
    QTest::newRow("member of a number") << "$['a.b'].x"
                                        << "";
}

void tst_JsonPath::pathFindsItsValue()
{
    QFETCH(QString, path);
    QFETCH(QString, value);

    const auto root = readJson(R"({"a-1":[10,{"b c":"x"}],"a.b":2,"ä":{"_n":true}})");
    QVERIFY(root);
    JsonPath subject;
    QCOMPARE(subject.define(path), QString());
    const QJsonValue found = subject.valueIn(*root);
    QCOMPARE(found.isUndefined(), value.isEmpty());
    if (!value.isEmpty()) {
        QCOMPARE(found, *readJson(value.toUtf8()));
    }
}

void tst_JsonPath::pathThatDoesNotReadIsAnError_data()
{
    const QString steps = R"(expected ".name", "['name']" or "[0]", at character )";
    const QString start = R"(it begins with "$", such as "$.value" or "$.list[0]", at character 1)";
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("error");

    QTest::newRow("empty") << "" << start;
    QTest::newRow("no root") << "value" << start;
    QTest::newRow("no dot") << "$value" << steps + "2";
    QTest::newRow("dot alone") << "$." << steps + "2";
    QTest::newRow("space") << "$.a b" << steps + "4";
    QTest::newRow("wildcard") << "$.a[*]" << steps + "4";
    QTest::newRow("deep search") << "$..a" << steps + "2";
    QTest::newRow("negative index") << "$[-1]" << steps + "2";
    QTest::newRow("open bracket") << "$.a[1" << steps + "4";
    QTest::newRow("open quote") << "$['a]" << steps + "2";
    QTest::newRow("empty name") << "$['']" << steps + "2";
}

void tst_JsonPath::pathThatDoesNotReadIsAnError()
{
    QFETCH(QString, path);
    QFETCH(QString, error);

    QCOMPARE(JsonPath().define(path), "broken JSON path: " + error);
}

void tst_JsonPath::errorLeavesThePathAsItWas()
{
    JsonPath path;
    QCOMPARE(path.define("$[1]"), QString());
    QVERIFY(!path.define("$[0][").isEmpty());
    QCOMPARE(path.valueIn(*readJson("[1,2]")).toInt(), 2);
}

void tst_JsonPath::stepsAndIndexesAreBounded()
{
    JsonPath path;
    QCOMPARE(path.define("$[99999]"), QString());
    QCOMPARE(path.placed(true).toArray().size(), 100000);
    QCOMPARE(path.define("$[100000]"),
             QString("broken JSON path: an index is at most 99999, at character 2"));
    QCOMPARE(path.define("$" + QString("[0]").repeated(64)), QString());
    QCOMPARE(path.define("$" + QString("[0]").repeated(65)),
             QString("broken JSON path: it has more than 64 steps, at character 194"));
}

void tst_JsonPath::valueIsPlaced_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("root");
    QTest::addColumn<QByteArray>("whole");

    QTest::newRow("whole") << "$" << QByteArray("null") << QByteArray("2.5");
    QTest::newRow("new") << "$.a[1].b" << QByteArray("null")
                         << QByteArray(R"({"a":[null,{"b":2.5}]})");
    QTest::newRow("beside others") << "$.a.b" << QByteArray(R"({"a":{"b":1,"c":2},"d":3})")
                                   << QByteArray(R"({"a":{"b":2.5,"c":2},"d":3})");
    QTest::newRow("in place of another kind")
        << "$.a.b" << QByteArray(R"({"a":1})") << QByteArray(R"({"a":{"b":2.5}})");
}

void tst_JsonPath::valueIsPlaced()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, root);

    JsonPath subject;
    QCOMPARE(subject.define(path), QString());
    QTEST(writeJson(subject.placed(2.5, *readJson(root))), "whole");
}

void tst_JsonPath::valuesAreReadAsWhatTheyAre_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("number") << QByteArray("-2.5e1") << QVariant(-25.0);
    QTest::newRow("whole number") << QByteArray(" 7\n") << QVariant(7.0);
    QTest::newRow("text") << QByteArray(R"("a\"b")") << QVariant(QString("a\"b"));
    QTest::newRow("yes") << QByteArray("true") << QVariant(true);
    QTest::newRow("null") << QByteArray("null") << QVariant();
    QTest::newRow("array") << QByteArray("[1, 2]") << QVariant(QString("[1,2]"));
    QTest::newRow("object") << QByteArray(R"({"a": [ ]})") << QVariant(QString(R"({"a":[]})"));
    QTest::newRow("the same name in two objects")
        << QByteArray(R"([{"a":"a","b":{"a":"\\\"}:{"}},{"a":[]}])")
        << QVariant(QString(R"([{"a":"a","b":{"a":"\\\"}:{"}},{"a":[]}])"));
}

void tst_JsonPath::valuesAreReadAsWhatTheyAre()
{
    QFETCH(QByteArray, text);
    QFETCH(QVariant, value);

    const auto read = readJson(text);
    QVERIFY(read);
    const QVariant found = variantOf(*read);
    QCOMPARE(found.userType(), value.userType());
    QCOMPARE(found, value);
    QCOMPARE(variantOf(QJsonValue::Undefined), QVariant());
}

void tst_JsonPath::whatIsNotJsonIsNotRead_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("word") << QByteArray("on");
    QTest::newRow("two values") << QByteArray("1,2");
    QTest::newRow("brackets the wrong way") << QByteArray("1],[2");
    QTest::newRow("cut") << QByteArray(R"({"a":)");
    QTest::newRow("bytes") << QByteArray("\"\xff\xfe\"");
    QTest::newRow("zero byte") << QByteArray("1\0", 2);
    QTest::newRow("deep") << QByteArray(100000, '[') + QByteArray(100000, ']');
    QTest::newRow("a member twice") << QByteArray(R"([{"a":{"b":[1]},"c":"a","a" :{}}])");
    QTest::newRow("a member twice, escaped") << QByteArray(R"({"x":{"\u0061":1,"a":2}})");
}

void tst_JsonPath::whatIsNotJsonIsNotRead()
{
    QFETCH(QByteArray, text);

    QVERIFY(!readJson(text));
}

void tst_JsonPath::numberThatJsonCannotHoldIsNull()
{
    QCOMPARE(writeJson(std::numeric_limits<double>::quiet_NaN()), QByteArray("null"));
    QCOMPARE(writeJson(0.1), QByteArray("0.1"));
    QCOMPARE(writeJson(QString("a\nb")), QByteArray(R"("a\nb")"));
}

NORVO_GUILESS_TEST(tst_JsonPath)
#include "tst_JsonPath.moc"
