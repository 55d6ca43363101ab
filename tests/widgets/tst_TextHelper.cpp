// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/TextHelper.h"
#include "TestMain.h"

#include <QtTest>

#include <limits>
#include <locale>

class tst_TextHelper : public QObject
{
    Q_OBJECT

private slots:
    void writesFixedPoint_data();
    void writesFixedPoint();
    void hugePrecisionEndsWithTheNumber();
    void followsTheGlobalCppLocaleAlone();
};

void tst_TextHelper::writesFixedPoint_data()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

    QTest::addColumn<double>("value");
    QTest::addColumn<int>("precision");
    QTest::addColumn<QString>("text");

    QTest::newRow("cuts to the precision") << 3.14159 << 2 << "3.14";
    QTest::newRow("exact half goes to even") << 2.5 << 0 << "2";
    QTest::newRow("odd half goes to even") << 3.5 << 0 << "4";
    QTest::newRow("keeps trailing zeros") << 1.0 << 3 << "1.000";
    QTest::newRow("no point without decimals") << 7.0 << 0 << "7";
    QTest::newRow("zero from below keeps its sign") << -0.0001 << 2 << "-0.00";
    QTest::newRow("negative") << -12.345 << 1 << "-12.3";
    QTest::newRow("no grouping") << 1234567.891 << 1 << "1234567.9";
    QTest::newRow("no exponent") << 1e15 << 0 << "1000000000000000";
    QTest::newRow("negative precision is six") << 0.5 << -1 << "0.500000";
    QTest::newRow("very negative precision is six") << 2.0 << -100 << "2.000000";
    QTest::newRow("no number") << noNumber << 2 << "nan";
    QTest::newRow("infinity") << infinity << 2 << "inf";
    QTest::newRow("negative infinity") << -infinity << 2 << "-inf";
}

void tst_TextHelper::writesFixedPoint()
{
    QFETCH(double, value);
    QFETCH(int, precision);

    QTEST(TextHelper::doubleToStr(value, precision), "text");
}

void tst_TextHelper::hugePrecisionEndsWithTheNumber()
{
    const QString text = TextHelper::doubleToStr(0.5, std::numeric_limits<int>::max());
    QCOMPARE(text, QString("0.5").leftJustified(2 + 1074, '0'));
}

void tst_TextHelper::followsTheGlobalCppLocaleAlone()
{
    struct Comma : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
    };

    const QLocale qtLocale;
    QLocale::setDefault(QLocale(QLocale::German));
    QCOMPARE(TextHelper::doubleToStr(1.5, 1), QString("1.5"));
    QLocale::setDefault(qtLocale);

    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    const QString text = TextHelper::doubleToStr(1.5, 1);
    std::locale::global(before);
    QCOMPARE(text, QString("1,5"));
}

NORVO_APPLESS_TEST(tst_TextHelper)
#include "tst_TextHelper.moc"
