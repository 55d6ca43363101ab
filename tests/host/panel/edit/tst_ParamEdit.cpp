// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/ParamEdit.h"
#include "TestMain.h"

#include <QtTest>

using norvo::YamlEdit;
using norvo::ParamEdit::setParam;

class tst_ParamEdit : public QObject
{
    Q_OBJECT

private slots:
    void parameterIsFoundOrSpelledAsItsSiblings_data();
    void parameterIsFoundOrSpelledAsItsSiblings();
    void lineThatBecomesTooLongIsBroken_data();
    void lineThatBecomesTooLongIsBroken();
    void unknownDeviceComesWithTheNearestName();
    void brokenPanelsAreRefused_data();
    void brokenPanelsAreRefused();
};

void tst_ParamEdit::parameterIsFoundOrSpelledAsItsSiblings_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char* name, const QByteArray& before, const QString& param,
                        const QByteArray& after) {
        QTest::newRow(name) << "devices:\n" + before << param << "devices:\n" + after;
    };
    row("there", "  a: {device: x, params: {text: Stop}}\n", "text",
        "  a: {device: x, params: {text: 7}}\n");
    row("in any case", "  a: {device: x, params: {Text: Stop}}\n", "tEXT",
        "  a: {device: x, params: {Text: 7}}\n");
    row("nested", "  a: {device: x, params: {Widget: {row: 1}}}\n", "widget/ROW",
        "  a: {device: x, params: {Widget: {row: 7}}}\n");
    row("joined", "  a: {device: x, params: {Widget/Row: 1}}\n", "widget/row",
        "  a: {device: x, params: {Widget/Row: 7}}\n");
    row("joined beside nested", "  a: {device: x, params: {widget: {column: 1}, widget/row: 1}}\n",
        "widget/row", "  a: {device: x, params: {widget: {column: 1}, widget/row: 7}}\n");
    row("joined inside nested", "  a: {device: x, params: {a: {b/c: 1}}}\n", "a/b/c",
        "  a: {device: x, params: {a: {b/c: 7}}}\n");
    row("key in quotes", "  \"a\": {\"device\": x, \"params\": {\"text\": Stop}}\n", "text",
        "  \"a\": {\"device\": x, \"params\": {\"text\": 7}}\n");
    row("new beside nested", "  a:\n    device: x\n    params:\n      widget: {row: 1}\n",
        "widget/column", "  a:\n    device: x\n    params:\n      widget: {row: 1, column: 7}\n");
    row("new beside nested in a block",
        "  a:\n    device: x\n    params:\n      widget:\n        row: 1\n", "widget/column",
        "  a:\n    device: x\n    params:\n      widget:\n        row: 1\n        column: 7\n");
    row("new beside joined", "  a:\n    device: x\n    params:\n      widget/row: 1 # r\n",
        "widget/column",
        "  a:\n    device: x\n    params:\n      widget/row: 1 # r\n      widget/column: 7\n");
    row("new beside joined where others nest",
        "  a: {device: x, params: {widget/row: 1}}\n"
        "  b: {device: x, params: {widget: {row: 1}}}\n",
        "widget/column",
        "  a: {device: x, params: {widget/row: 1, widget/column: 7}}\n"
        "  b: {device: x, params: {widget: {row: 1}}}\n");
    row("joined as most others",
        "  a: {device: x, params: {t: 1}}\n  b: {device: x, params: {widget: {row: 1}}}\n"
        "  c: {device: x, params: {widget/row: 1}}\n  d: {device: x, params: {widget/row: 1}}\n",
        "widget/row",
        "  a: {device: x, params: {t: 1, widget/row: 7}}\n"
        "  b: {device: x, params: {widget: {row: 1}}}\n"
        "  c: {device: x, params: {widget/row: 1}}\n  d: {device: x, params: {widget/row: 1}}\n");
    row("joined where as many others nest",
        "  a: {device: x, params: {t: 1}}\n  b: {device: x, params: {widget: {row: 1}}}\n"
        "  c: {device: x, params: {Widget/row: 1}}\n",
        "widget/row",
        "  a: {device: x, params: {t: 1, widget/row: 7}}\n"
        "  b: {device: x, params: {widget: {row: 1}}}\n"
        "  c: {device: x, params: {Widget/row: 1}}\n");
    row("nested as in another device",
        "  a: {device: x, params: {text: Go}}\n  b: {device: x, params: {widget: {row: 1}}}\n",
        "widget/row",
        "  a: {device: x, params: {text: Go, widget: {row: 7}}}\n"
        "  b: {device: x, params: {widget: {row: 1}}}\n");
    row("joined as in another device",
        "  a: {device: x, params: {text: Go}}\n  b: {device: x, params: {widget/row: 1}}\n",
        "widget/row",
        "  a: {device: x, params: {text: Go, widget/row: 7}}\n"
        "  b: {device: x, params: {widget/row: 1}}\n");
    row("nested as the only other one with params",
        "  a: {device: x}\n  b: {device: x}\n  c: {device: x, params: {widget: {row: 1}}}\n",
        "widget/row",
        "  a: {device: x, params: {widget: {row: 7}}}\n  b: {device: x}\n"
        "  c: {device: x, params: {widget: {row: 1}}}\n");
    row("nested as most others",
        "  a:\n    device: x\n    params:\n      text: Go\n"
        "  b: {device: x, params: {widget: {row: 1}}}\n",
        "widget/row",
        "  a:\n    device: x\n    params:\n      text: Go\n      widget: {row: 7}\n"
        "  b: {device: x, params: {widget: {row: 1}}}\n");
    row("no params, neighbours in brackets",
        "  a:\n    device: x\n    network: true\n  b:\n    device: x\n    params: {text: Go}\n",
        "text",
        "  a:\n    device: x\n    params: {text: 7}\n    network: true\n"
        "  b:\n    device: x\n    params: {text: Go}\n");
    row("no params, neighbours in blocks",
        "  b:\n    device: x\n    params:\n       text: Go\n  a:\n    device: x\n", "text",
        "  b:\n    device: x\n    params:\n       text: Go\n"
        "  a:\n    device: x\n    params:\n       text: 7\n");
    row("no params in brackets", "  a: {device: x}\n", "text",
        "  a: {device: x, params: {text: 7}}\n");
    row("params with nothing behind", "  a:\n    device: x\n    params:\n", "text",
        "  a:\n    device: x\n    params: {text: 7}\n");
    row("empty params", "  a:\n    device: x\n    params: {}\n", "text",
        "  a:\n    device: x\n    params: {text: 7}\n");
    row("group with nothing behind", "  a: {device: x, params: {widget: }}\n", "widget/row",
        "  a: {device: x, params: {widget: {row: 7} }}\n");
}

void tst_ParamEdit::parameterIsFoundOrSpelledAsItsSiblings()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, name);
    YamlEdit edit(before);
    const auto error = setParam(edit, "a", name, "7");
    QVERIFY2(!error, error ? qPrintable(error->text) : "");
    QTEST(edit.text(), "after");
}

void tst_ParamEdit::lineThatBecomesTooLongIsBroken_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    const QByteArray words(53, 'w');
    const QByteArray fewer(47, 'w');
    const auto row = [](const char* name, const QByteArray& before, const QByteArray& after) {
        QTest::newRow(name) << "devices:\n" + before << "devices:\n" + after;
    };
    row("of 100 characters it stays", "  a: {device: x, params: {t: " + words + ", u: 1}}\n",
        "  a: {device: x, params: {t: " + words + ", u: 1, text: 77}}\n");
    row("of a device", "  a: {device: x, params: {t: w" + words + ", u: 1}}\n",
        "  a:\n    device: x\n    params: {t: w" + words + ", u: 1, text: 77}\n");
    row("with a comment", "  a: {device: x, params: {t: \"" + fewer + "   #  \", u: 1}} # c\n",
        "  a: # c\n    device: x\n    params: {t: \"" + fewer + "   #  \", u: 1, text: 77}\n");
    row("of parameters",
        "  a:\n    device: x\n    params: {t: " + words + ", u: " + QByteArray(16, 'v') + "}\n",
        "  a:\n    device: x\n    params:\n      t: " + words +
            "\n      u: " + QByteArray(16, 'v') + "\n      text: 77\n");
    row("that was long before it stays",
        "  a: {device: x, params: {t: " + words + ", u: w}} # " + words + "\n",
        "  a: {device: x, params: {t: " + words + ", u: w, text: 77}} # " + words + "\n");
}

void tst_ParamEdit::lineThatBecomesTooLongIsBroken()
{
    QFETCH(QByteArray, before);
    YamlEdit edit(before);
    const auto error = setParam(edit, "a", "text", "77");
    QVERIFY2(!error, error ? qPrintable(error->text) : "");
    QTEST(edit.text(), "after");
}

void tst_ParamEdit::unknownDeviceComesWithTheNearestName()
{
    const QByteArray panel("devices: {start: {device: x}}\n");
    YamlEdit edit(panel);
    const auto error = setParam(edit, "strat", "text", "7");
    QVERIFY(error);
    QCOMPARE(error->text, QString("there is no device \"strat\"; did you mean \"start\"?"));
    QVERIFY(setParam(edit, "START", "text", "7")); // Ids are case-sensitive.
    QCOMPARE(edit.text(), panel);
}

void tst_ParamEdit::brokenPanelsAreRefused_data()
{
    QTest::addColumn<QByteArray>("panel");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no YAML") << QByteArray("devices: {\n");
    QTest::newRow("a list of devices") << QByteArray("devices: [a, {a: 1}]\n");
    QTest::newRow("a text for devices") << QByteArray("devices: a\n");
    QTest::newRow("a list at the top") << QByteArray("- devices\n");
    QTest::newRow("a text for the device") << QByteArray("devices: {a: x}\n");
    QTest::newRow("a list for the device") << QByteArray("devices: {a: [device, x]}\n");
    QTest::newRow("a list of parameters")
        << QByteArray("devices: {a: {device: x, params: [text]}}\n");
    QTest::newRow("a text for the parameters")
        << QByteArray("devices: {a: {device: x, params: text}}\n");
    QTest::newRow("a map for the parameter")
        << QByteArray("devices: {a: {device: x, params: {text: {row: 1}}}}\n");
    QTest::newRow("a list as a key")
        << QByteArray("devices: {a: {device: x, params: {[text]: 1, text: [2]}}}\n");
    QTest::newRow("params by an alias")
        << QByteArray("devices: {b: {params: &p {text: 1}}, a: {device: x, params: *p}}\n");
    QTest::newRow("params with an alias elsewhere")
        << QByteArray("devices: {a: {params: &p {x: 1}}, b: {device: x, params: *p}}\n");
}

void tst_ParamEdit::brokenPanelsAreRefused()
{
    QFETCH(QByteArray, panel);
    YamlEdit edit(panel);
    const auto error = setParam(edit, "a", "text", "7");
    QVERIFY(error && !error->text.isEmpty());
    QCOMPARE(error->text.startsWith("broken YAML"), edit.error().has_value());
    QCOMPARE(edit.text(), panel);
}

NORVO_GUILESS_TEST(tst_ParamEdit)
#include "tst_ParamEdit.moc"
