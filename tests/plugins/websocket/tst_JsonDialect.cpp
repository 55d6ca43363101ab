// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/websocket/JsonDialect.h"
#include "plugins/common/JsonPath.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Dialect;
using norvo::JsonDialect;

Q_DECLARE_METATYPE(PortDefinition)

namespace {

/// What the outputs read in a message, as "0: 2.5".
QStringList readBy(
    JsonDialect& dialect, const QByteArray& message, bool* isUsed = nullptr,
    const Dialect::IsHeard& isHeard = [](int) { return true; })
{
    std::vector<Dialect::Value> values;
    QString error;
    const bool used =
        dialect.read(norvo::readJson(message).value_or(QJsonValue()), isHeard, values, error);
    if (isUsed) {
        *isUsed = used;
    }
    QStringList texts;
    for (const auto& [output, value] : values) {
        texts << QString("%1: %2").arg(output).arg(value.toString());
    }
    return texts;
}

} // namespace

class tst_JsonDialect : public QObject
{
    Q_OBJECT

private slots:
    void eachOutputReadsItsPath();
    void outputIsForTheMessagesOfItsCondition_data();
    void outputIsForTheMessagesOfItsCondition();
    void messageWithoutAValueForAnybodyIsOfNoUse();
    void onlyHeardOutputsGetValues();
    void brokenOutputIsRefused_data();
    void brokenOutputIsRefused();
    void inputFillsItsTemplate_data();
    void inputFillsItsTemplate();
    void brokenInputIsRefused_data();
    void brokenInputIsRefused();
};

void tst_JsonDialect::eachOutputReadsItsPath()
{
    JsonDialect dialect;
    QCOMPARE(dialect.defineOutput({"$.value"}), QString());
    QCOMPARE(dialect.defineOutput({" $.list[1] "}), QString());
    QCOMPARE(dialect.defineOutput({"$"}), QString());
    QCOMPARE(readBy(dialect, R"({"value":2.5,"list":[1,"two"]})"),
             (QStringList{"0: 2.5", "1: two", R"(2: {"list":[1,"two"],"value":2.5})"}));
}

void tst_JsonDialect::outputIsForTheMessagesOfItsCondition_data()
{
    QTest::addColumn<QString>("condition");
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<bool>("isFor");

    const QByteArray temp = R"({"type":"temp","value":1})";
    QTest::newRow("text") << "$.type == temp" << temp << true;
    QTest::newRow("no spaces") << "$.type==temp" << temp << true;
    QTest::newRow("quoted text") << R"($.type == "temp")" << temp << true;
    QTest::newRow("other text") << "$.type == speed" << temp << false;
    QTest::newRow("part of the text") << "$.type == tem" << temp << false;
    QTest::newRow("missing") << "$.kind == temp" << temp << false;
    QTest::newRow("number") << "$.id == 7" << QByteArray(R"({"id":7.0,"value":1})") << true;
    QTest::newRow("other number") << "$.id == 7" << QByteArray(R"({"id":7.5,"value":1})") << false;
    QTest::newRow("number for a text")
        << R"($.id == "7")" << QByteArray(R"({"id":7,"value":1})") << false;
    QTest::newRow("text of a number")
        << "$.id == 7" << QByteArray(R"({"id":"7","value":1})") << true;
    QTest::newRow("yes") << "$.ok == true" << QByteArray(R"({"ok":true,"value":1})") << true;
    QTest::newRow("no") << "$.ok == true" << QByteArray(R"({"ok":false,"value":1})") << false;
    QTest::newRow("equals in the text")
        << R"($.type == "a == b")" << QByteArray(R"({"type":"a == b","value":1})") << true;
    QTest::newRow("no object") << "$.type == temp" << QByteArray("5") << false;
}

void tst_JsonDialect::outputIsForTheMessagesOfItsCondition()
{
    QFETCH(QString, condition);
    QFETCH(QByteArray, message);
    QFETCH(bool, isFor);

    JsonDialect dialect;
    QCOMPARE(dialect.defineOutput({"$.value", {{"where", condition}}}), QString());
    bool isUsed = false;
    QCOMPARE(readBy(dialect, message, &isUsed), isFor ? QStringList{"0: 1"} : QStringList());
    QCOMPARE(isUsed, isFor);
}

void tst_JsonDialect::messageWithoutAValueForAnybodyIsOfNoUse()
{
    JsonDialect dialect;
    QCOMPARE(dialect.defineOutput({"$.value"}), QString());
    for (const char* message : {"{}", R"({"value":null})", "[1]", "3", R"("value")"}) {
        bool isUsed = true;
        QCOMPARE(readBy(dialect, message, &isUsed), QStringList());
        QVERIFY2(!isUsed, message);
    }
}

void tst_JsonDialect::onlyHeardOutputsGetValues()
{
    JsonDialect dialect;
    QCOMPARE(dialect.defineOutput({"$.a"}), QString());
    QCOMPARE(dialect.defineOutput({"$.b"}), QString());
    const auto second = [](int output) { return output == 1; };
    bool isUsed = false;
    QCOMPARE(readBy(dialect, R"({"a":1,"b":2})", &isUsed, second), QStringList{"1: 2"});
    QCOMPARE(readBy(dialect, R"({"a":1})", &isUsed, second), QStringList());
    QVERIFY(isUsed);
}

void tst_JsonDialect::brokenOutputIsRefused_data()
{
    QTest::addColumn<PortDefinition>("definition");
    QTest::addColumn<QString>("error");

    QTest::newRow("no path") << PortDefinition("value") << "broken JSON path: it begins with";
    QTest::newRow("broken path") << PortDefinition("$..a") << "broken JSON path: expected";
    const auto where = [](const QString& condition) {
        return PortDefinition("$.a", {{"where", condition}});
    };
    QTest::newRow("no condition") << where("$.type") << "\"$.type\" is not a condition";
    QTest::newRow("nothing to compare") << where("$.type ==") << "is not a condition";
    QTest::newRow("path of the condition")
        << where("type == a") << "option \"where\": broken JSON path";
    QTest::newRow("open quote") << where("$.type == \"a") << "is not a text in double quotes";
}

void tst_JsonDialect::brokenOutputIsRefused()
{
    QFETCH(PortDefinition, definition);
    QFETCH(QString, error);

    JsonDialect dialect;
    const QString actual = dialect.defineOutput(definition);
    QVERIFY2(actual.contains(error), qPrintable(actual));
    QCOMPARE(dialect.defineOutput({"$.b"}), QString());
    QCOMPARE(readBy(dialect, R"({"a":1,"b":2})"), QStringList{"0: 2"});
}

void tst_JsonDialect::inputFillsItsTemplate_data()
{
    QTest::addColumn<QString>("definition");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("message");

    const QString set = R"({"set":%1})";
    QTest::newRow("number") << set << QVariant(2.5) << R"({"set":2.5})";
    QTest::newRow("whole number") << set << QVariant(3.0) << R"({"set":3})";
    QTest::newRow("yes") << set << QVariant(true) << R"({"set":true})";
    QTest::newRow("text") << set << QVariant(R"(a "b" \)") << R"({"set":"a \"b\" \\"})";
    QTest::newRow("number as text") << set << QVariant("5") << R"({"set":"5"})";
    QTest::newRow("pulse") << set << QVariant() << R"({"set":null})";
    QTest::newRow("spaces stay") << R"( {"set": %1 } )" << QVariant(1) << R"({"set": 1 })";
    QTest::newRow("in a text") << R"({"set":"to %1!"})" << QVariant(2.5) << R"({"set":"to 2.5!"})";
    QTest::newRow("text in a text")
        << R"({"set":"to %1"})" << QVariant("\"x\"") << R"({"set":"to \"x\""})";
    QTest::newRow("behind an escape")
        << R"({"a":"\"","set":%1})" << QVariant("x") << R"({"a":"\"","set":"x"})";
    QTest::newRow("behind a backslash")
        << R"({"set":"a\\%1"})" << QVariant("x") << R"({"set":"a\\x"})";
    QTest::newRow("behind a number of a character")
        << R"({"set":"\u00b5%1"})" << QVariant("x") << R"({"set":"\u00b5x"})";
    QTest::newRow("twice") << "[%1,%1]" << QVariant("x") << R"(["x","x"])";
    QTest::newRow("value is no place") << "[%1,%1]" << QVariant("%1") << R"(["%1","%1"])";
    QTest::newRow("no place") << R"("go")" << QVariant(5) << R"("go")";
    QTest::newRow("path") << "$.a.b" << QVariant(5) << R"({"a":{"b":5}})";
    QTest::newRow("path, text") << "$.a" << QVariant("x") << R"({"a":"x"})";
    QTest::newRow("whole message") << "$" << QVariant(5) << "5";
}

void tst_JsonDialect::inputFillsItsTemplate()
{
    QFETCH(QString, definition);
    QFETCH(QVariant, value);
    QFETCH(QString, message);

    JsonDialect dialect;
    QCOMPARE(dialect.defineInput({definition}), QString());
    QCOMPARE(dialect.write(0, QJsonValue::fromVariant(value), value.toString()), message);
}

void tst_JsonDialect::brokenInputIsRefused_data()
{
    QTest::addColumn<QString>("definition");
    QTest::addColumn<QString>("error");

    QTest::newRow("empty") << ""
                           << "is not JSON";
    QTest::newRow("no JSON") << "set %1"
                             << "is not JSON";
    QTest::newRow("two values") << "1,%1"
                                << "is not JSON";
    QTest::newRow("as a name") << "{%1:1}"
                               << "is not JSON";
    QTest::newRow("open quote") << R"({"set":"%1})"
                                << "is not JSON";
    QTest::newRow("cut escape") << R"({"set":"\%1 "})"
                                << "a backslash stands directly before %1";
    QTest::newRow("cut number of a character") << R"({"set":"\u00%100ab"})"
                                               << "a backslash stands directly before %1";
    QTest::newRow("cut escape behind the place") << R"({"set":"%1\u"})"
                                                 << "is not JSON";
    QTest::newRow("broken path") << "$."
                                 << "broken JSON path";
}

void tst_JsonDialect::brokenInputIsRefused()
{
    QFETCH(QString, definition);
    QFETCH(QString, error);

    JsonDialect dialect;
    const QString actual = dialect.defineInput({definition});
    QVERIFY2(actual.contains(error), qPrintable(actual));
}

NORVO_GUILESS_TEST(tst_JsonDialect)
#include "tst_JsonDialect.moc"
