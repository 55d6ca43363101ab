// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/LenientNumber.h"
#include "TestMain.h"

#include <QtTest>

class tst_LenientNumber : public QObject
{
    Q_OBJECT

private slots:
    void readsOrNot_data();
    void readsOrNot();
};

void tst_LenientNumber::readsOrNot_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("reads");
    QTest::addColumn<double>("number");
    QTest::newRow("as given") << "3.75" << true << 3.75;
    QTest::newRow("comma for point") << "3,75" << true << 3.75;
    QTest::newRow("whole") << "-12" << true << -12.0;
    QTest::newRow("exponent") << "1,5e3" << true << 1500.0;
    QTest::newRow("spaces around") << " 2,5 " << true << 2.5;
    QTest::newRow("comma and point") << "1,234.5" << false << 0.0;
    QTest::newRow("two commas") << "1,2,3" << false << 0.0;
    QTest::newRow("empty") << "" << false << 0.0;
    QTest::newRow("letters") << "abc" << false << 0.0;
    QTest::newRow("number with a unit") << "5 V" << false << 0.0;
}

void tst_LenientNumber::readsOrNot()
{
    QFETCH(QString, text);
    QFETCH(bool, reads);
    const std::optional<double> number = parseNumber(text);
    QCOMPARE(number.has_value(), reads);
    QTEST(number.value_or(0), "number");
}

NORVO_GUILESS_TEST(tst_LenientNumber)
#include "tst_LenientNumber.moc"
