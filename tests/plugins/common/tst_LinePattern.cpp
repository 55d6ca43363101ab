// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/common/LinePattern.h"
#include "TestMain.h"

#include <QtTest>

#include <ctime>

class tst_LinePattern : public QObject
{
    Q_OBJECT

private slots:
    void firstGroupIsTheValue_data();
    void firstGroupIsTheValue();
    void expressionThatTakesForeverIsNoMatch();
};

void tst_LinePattern::firstGroupIsTheValue_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("value"); // null: no match

    QTest::newRow("group") << "T=([0-9]+) H=([0-9]+)"
                           << "at T=20 H=40"
                           << "20";
    QTest::newRow("no group") << "[0-9]+"
                              << "at 20"
                              << "20";
    QTest::newRow("group that takes no part") << "on|off(.*)"
                                              << "on"
                                              << "on";
    QTest::newRow("second group alone") << "(a+)|x(b+)"
                                        << "xb"
                                        << "xb";
    QTest::newRow("empty group") << "a(.*)"
                                 << "a"
                                 << "";
    QTest::newRow("no match") << "^T"
                              << "at T" << QString();
    QTest::newRow("beyond ASCII") << QString::fromUtf8("(\\d+) °C")
                                  << QString::fromUtf8("größer 5 °C") << "5";
}

void tst_LinePattern::firstGroupIsTheValue()
{
    QFETCH(QString, expression);
    QFETCH(QString, line);
    QFETCH(QString, value);

    norvo::LinePattern pattern;
    QCOMPARE(pattern.define(expression), QString());
    const auto found = pattern.valueIn(line);
    QCOMPARE(found.has_value(), !value.isNull());
    QCOMPARE(found.value_or(QString()), value);
}

void tst_LinePattern::expressionThatTakesForeverIsNoMatch()
{
    norvo::LinePattern pattern;
    QCOMPARE(pattern.define(QString("^(a+)+$")), QString());
    const std::clock_t before = std::clock();
    QVERIFY(!pattern.valueIn(QString(5000, 'a') + 'b'));
    QVERIFY(double(std::clock() - before) / CLOCKS_PER_SEC < 1);
    QVERIFY(pattern.valueIn(QString(20, 'a')));
}

NORVO_GUILESS_TEST(tst_LinePattern)
#include "tst_LinePattern.moc"
