// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/mqtt/TopicPort.h"
#include "TestMain.h"

#include <QtTest>

using norvo::TopicPort;

class tst_TopicPort : public QObject
{
    Q_OBJECT

private slots:
    void outputIsRead();
    void inputIsRead();
    void optionsSayTheSame();
    void whatDoesNotReadIsAnError_data();
    void whatDoesNotReadIsAnError();
};

void tst_TopicPort::outputIsRead()
{
    TopicPort port;
    QCOMPARE(port.defineOutput(QString("  plant/+/speed   $['a b'].c[0]  qos1 ")), QString());
    QCOMPARE(port.topic(), QByteArray("plant/+/speed"));
    QCOMPARE(port.qos(), 1);
    QVERIFY(port.path());
    QCOMPARE(norvo::writeJson(port.path()->placed(1)), QByteArray("{\"a b\":{\"c\":[1]}}"));
    QVERIFY(port.staleAfter() == std::chrono::milliseconds(0));

    TopicPort plain;
    QCOMPARE(plain.defineOutput(QString("$SYS/broker/load/#")), QString());
    QCOMPARE(plain.topic(), QByteArray("$SYS/broker/load/#"));
    QCOMPARE(plain.qos(), 0);
    QVERIFY(!plain.path());
}

void tst_TopicPort::inputIsRead()
{
    TopicPort port;
    QCOMPARE(port.defineInput(QString("\"größe of it\" retain qos2")), QString());
    QCOMPARE(port.topic(), QByteArray("größe of it"));
    QCOMPARE(port.qos(), 2);
    QVERIFY(port.isRetained());
}

void tst_TopicPort::optionsSayTheSame()
{
    TopicPort input;
    QCOMPARE(input.defineInput({"a $", {{"qos", "2"}, {"retain", "true"}}}), QString());
    QCOMPARE(input.qos(), 2);
    QVERIFY(input.isRetained());
    TopicPort output;
    QCOMPARE(output.defineOutput({"a", {{"qos", "1"}, {"stale", "1.5 s"}}}), QString());
    QCOMPARE(output.qos(), 1);
    QVERIFY(output.staleAfter() == std::chrono::milliseconds(1500));
}

void tst_TopicPort::whatDoesNotReadIsAnError_data()
{
    const QString none = "there is no topic; write one, and a JSON path where messages are JSON, "
                         "such as plant/1/speed $.value";
    const QString wildcards = " is not a topic: + stands for one level and # at the end for all "
                              "that follow, such as plant/+/speed or plant/#";
    QTest::addColumn<bool>("isInput");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("option"); ///< "name=value"
    QTest::addColumn<QString>("error");

    QTest::newRow("empty") << false << ""
                           << "" << none;
    QTest::newRow("open quotes") << true << "\"a b"
                                 << "" << none;
    QTest::newRow("wildcard in a word") << false << "a+/b"
                                        << ""
                                        << "\"a+/b\"" + wildcards;
    QTest::newRow("wildcard in the middle") << false << "#/b"
                                            << ""
                                            << "\"#/b\"" + wildcards;
    QTest::newRow("wildcard of an input")
        << true << "a/+"
        << ""
        << "\"a/+\" is written to, so it has no wildcards + and #";
    QTest::newRow("unknown word") << false << "a qos3"
                                  << ""
                                  << "\"qos3\" behind the topic is not one of: a JSON path such as "
                                     "$.value, qos0, qos1, qos2";
    QTest::newRow("retain of an output")
        << false << "a $.b retain"
        << ""
        << "\"retain\" behind the topic is not one of: one JSON path, qos0, qos1, qos2";
    QTest::newRow("unknown word of an input")
        << true << "a b"
        << ""
        << "\"b\" behind the topic is not one of: a JSON path such as $.value, qos0, qos1, qos2, "
           "retain";
    QTest::newRow("two paths") << false << "a $.b $.c"
                               << ""
                               << "\"$.c\" behind the topic is not one of: one JSON path, qos0, "
                                  "qos1, qos2";
    QTest::newRow("path") << false << "a $.b["
                          << ""
                          << "broken JSON path: expected \".name\", \"['name']\" or \"[0]\", at "
                             "character 4";
    QTest::newRow("quality") << false << "a"
                             << "qos=3"
                             << "option \"qos\": \"3\" is not one of 0, 1, 2";
    QTest::newRow("retain") << true << "a"
                            << "retain=yes"
                            << "option \"retain\": \"yes\" is neither false nor true";
    QTest::newRow("stale")
        << false << "a"
        << "stale=5"
        << "option \"stale\": \"5\" is not a time; write one such as 500 ms, 5 s "
           "or 2 min";
    QTest::newRow("long topic") << true << QString(65536, 'x') << ""
                                << "a topic has 65535 bytes at most, and no zero byte";
}

void tst_TopicPort::whatDoesNotReadIsAnError()
{
    QFETCH(bool, isInput);
    QFETCH(QString, text);
    QFETCH(QString, option);

    PortDefinition definition(text);
    if (!option.isEmpty()) {
        definition.options.insert(option.section('=', 0, 0), option.section('=', 1));
    }
    TopicPort port;
    QTEST(isInput ? port.defineInput(definition) : port.defineOutput(definition), "error");
}

NORVO_GUILESS_TEST(tst_TopicPort)
#include "tst_TopicPort.moc"
