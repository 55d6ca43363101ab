// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/ExpressionNames.h"
#include "TestMain.h"

#include <QtTest>

using norvo::namesIn;

class tst_ExpressionNames : public QObject
{
    Q_OBJECT

private slots:
    void namesAreFound_data();
    void namesAreFound();
    void parametersAreToldApart_data();
    void parametersAreToldApart();
    void declarationsAreNoticed_data();
    void declarationsAreNoticed();
};

void tst_ExpressionNames::namesAreFound_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("names"); ///< With spaces between them.
    const auto row = [](const char* expression, const char* names) {
        QTest::newRow(expression) << expression << names;
    };
    row("a > b && a", "a b");
    row("Math.max(a, b.c.d)", "Math a b");
    row("a ? b : c", "a b c");
    row("f(...list)", "f list");
    row("{a: b, c: d}", "b d");
    row("({a, b: c})", "a c");
    row("x ? (a, b) : c", "x a b c");
    row("'a b' + \"c \\\" d\" + e", "e");
    row("'\\\\' + a", "a");
    row("`a ${b + `c ${d}`} e` + f", "b d f");
    row("`${{a: b}.a} c` + d", "b d");
    row("`\\${a}`", "");
    row("a /* b */ + c // d\n + e", "a c e");
    row("/a[/b]c\\/d/gi.test(e)", "e");
    row("a / b / c", "a b c");
    row("(a) / b / (c)", "a b c");
    row("typeof /a/ + b", "b");
    row("this / a / b", "a b");
    row("1e5 + 0x1F + 2.5 + a1", "a1");
    row("x.if + in_ + $a + _b", "x in_ $a _b");
    row("größe + 温度", "größe 温度");
    row("true || null || undefined", "undefined");
    row("a instanceof B ? new C : void d", "a B C d");
    row("'unterminated a", "");
    row("`unterminated ${a", "a");
    row("/unterminated a", "");
    row("/* unterminated a", "");
    row("", "");
}

void tst_ExpressionNames::namesAreFound()
{
    QFETCH(QString, expression);
    QTEST(namesIn(expression).used.join(' '), "names");
    QVERIFY(!namesIn(expression).declaresOthers);
}

void tst_ExpressionNames::parametersAreToldApart_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QStringList>("parameters");
    QTest::newRow("one") << "l.map(x => x * t)" << QStringList{"x"};
    QTest::newRow("several") << "l.map((x, y) => x * y * t)" << QStringList{"x", "y"};
    QTest::newRow("pattern") << "l.map(({x, y}) => x * y * t)" << QStringList{"x", "y"};
    QTest::newRow("default") << "l.map((x, y = (1 + 2)) => x * y * t)" << QStringList{"x", "y"};
    QTest::newRow("none") << "(() => t)()" << QStringList();
}

void tst_ExpressionNames::parametersAreToldApart()
{
    QFETCH(QString, expression);
    QStringList parameters = namesIn(expression).parameters.values();
    parameters.sort();
    QTEST(parameters, "parameters");
    QVERIFY(namesIn(expression).used.contains("t"));
}

void tst_ExpressionNames::declarationsAreNoticed_data()
{
    QTest::addColumn<QString>("expression");
    for (const char* expression :
         {"(function (x) { return x; })(t)", "(() => { let a = t; return a; })()",
          "(() => { var a; for (a of t); })()",
          "(() => { try { t(); } catch (e) { return e; } })()", "({f(x) { return x; }}).f(t)",
          "new (class A {})"}) {
        QTest::newRow(expression) << expression;
    }
}

void tst_ExpressionNames::declarationsAreNoticed()
{
    QFETCH(QString, expression);
    QVERIFY(namesIn(expression).declaresOthers);
}

NORVO_APPLESS_TEST(tst_ExpressionNames)
#include "tst_ExpressionNames.moc"
