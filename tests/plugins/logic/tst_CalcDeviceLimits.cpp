// SPDX-License-Identifier: GPL-3.0-or-later

#include "Calculation.h"
#include "Effort.h"
#include "TestMain.h"

#include <QElapsedTimer>

/// Expressions that go wrong do no harm.
class tst_CalcDeviceLimits : public QObject
{
    Q_OBJECT

private slots:
    void failureIsReportedOnceUntilItWorksAgain();
    void failureIsNamed_data();
    void failureIsNamed();
    void expressionThatDoesNotEndIsInterrupted_data();
    void expressionThatDoesNotEndIsInterrupted();
    void interruptionEndsWithItsCall();
    void interruptedExpressionRests();
    void expressionsChangeNothingForOthers_data();
    void expressionsChangeNothingForOthers();
    void whatIsLeftOutIsNotThere_data();
    void whatIsLeftOutIsNotThere();
    void thousandDevicesShareOneEngine();
    void watchdogSleepsAndWakes();
};

void tst_CalcDeviceLimits::failureIsReportedOnceUntilItWorksAgain()
{
    Calculation calculation;
    calculation.startWith("x.length.toFixed(0)");
    emit calculation.sender.value(1.0);
    emit calculation.sender.value(2.0);
    QCOMPARE(calculation.alerts.count(), 1);
    QCOMPARE(calculation.alerts[0][0].toString(),
             QString("output \"y\" is silent until it works again: TypeError: Cannot call method "
                     "'toFixed' of undefined"));
    QCOMPARE(calculation.listener.notes, QStringList());
    emit calculation.sender.value(QString("abc"));
    QCOMPARE(calculation.listener.notes, (QStringList{"number 3", "text 3"}));
    emit calculation.sender.value(3.0);
    QCOMPARE(calculation.alerts.count(), 2);
}

void tst_CalcDeviceLimits::failureIsNamed_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("failure");
    QTest::newRow("not a number") << "Math.sqrt(-x)"
                                  << "the result is no number (NaN)";
    QTest::newRow("infinite") << "x / 0"
                              << "the result is infinite";
    QTest::newRow("undefined") << "x.y"
                               << "the result is undefined";
    QTest::newRow("array") << "[x]"
                           << "the result is no number, yes or no, or text";
    QTest::newRow("object") << "({x: x})"
                            << "the result is no number, yes or no, or text";
    QTest::newRow("throws an error") << "(() => { throw new Error('a' + x); })()"
                                     << "Error: a1";
    QTest::newRow("throws a number") << "(() => { throw x; })()"
                                     << "it throws \"1\"";
    QTest::newRow("gives an error") << "new Error('b' + x)"
                                    << "b1";
    QTest::newRow("unknown name") << "(() => { let a = 1; return x + b; })()"
                                  << "ReferenceError: b is not defined";
    QTest::newRow("never stops calling") << "(function f() { return f() + x; })()"
                                         << "RangeError: Maximum call stack size exceeded.";
    QTest::newRow("long text") << "'ab'.repeat(32769 * x)"
                               << "the result has more than 65536 characters";
}

void tst_CalcDeviceLimits::failureIsNamed()
{
    QFETCH(QString, expression);
    QFETCH(QString, failure);
    Calculation calculation;
    calculation.startWith(expression);
    emit calculation.sender.value(1.0);
    QCOMPARE(calculation.listener.notes, QStringList());
    QCOMPARE(calculation.alerts.count(), 1);
    QCOMPARE(calculation.alerts[0][0].toString(),
             "output \"y\" is silent until it works again: " + failure);
}

void tst_CalcDeviceLimits::expressionThatDoesNotEndIsInterrupted_data()
{
    QTest::addColumn<QString>("expression");
    QTest::newRow("loop") << "(() => { while (true); })()";
    QTest::newRow("loop that catches")
        << "(() => { while (true) { try { while (true); } catch (e) {} } })()";
    QTest::newRow("calls")
        << "(() => { const f = n => n < 2 ? n : f(n - 1) + f(n - 2); return f(90); })()";
    QTest::newRow("in an error") << "(() => { throw {toString() { while (true); }}; })()";
    QTest::newRow("growing text") << "(() => { let s = 'x'; while (true) s += s; })()";
    QTest::newRow("growing array") << "(() => { const a = []; while (true) a.push(a.slice()); })()";
}

void tst_CalcDeviceLimits::expressionThatDoesNotEndIsInterrupted()
{
    QFETCH(QString, expression);
    Calculation calculation;
    calculation.startWith("x, " + expression);
    const norvo::ProcessorTimer timer;
    emit calculation.sender.value(1.0);
    QVERIFY2(timer.elapsedMs() < 2000, qPrintable(QString::number(timer.elapsedMs())));
    QCOMPARE(calculation.listener.notes, QStringList());
    QCOMPARE(calculation.alerts.count(), 1);
    QCOMPARE(
        calculation.alerts[0][0].toString(),
        QString("output \"y\" took more than 50 ms; it is silent, and tried again after 10 s"));
}

void tst_CalcDeviceLimits::interruptionEndsWithItsCall()
{
    Calculation calculation;
    calculation.addInputs({"x", ""});
    calculation.addOutput("x, (() => { while (true); })()", "endless");
    calculation.addOutput("x + 1");
    calculation.listener.listenTo(calculation.device, "endless");
    calculation.listener.listenTo(calculation.device, "y");
    calculation.sender.sendTo(calculation.device, "x");
    calculation.start();
    emit calculation.sender.value(1.0);
    QCOMPARE(calculation.listener.notes, (QStringList{"number 2", "text 2"}));
    QCOMPARE(calculation.alerts.count(), 1);
}

void tst_CalcDeviceLimits::interruptedExpressionRests()
{
    Calculation calculation;
    calculation.startWith("x > 1 ? x : (() => { while (true); })()");
    QElapsedTimer clock;
    clock.start();
    emit calculation.sender.value(1.0);
    QCOMPARE(calculation.alerts.count(), 1);
    const norvo::ProcessorTimer timer;
    for (int i = 0; i < 1000; ++i) {
        emit calculation.sender.value(1.0);
    }
    emit calculation.sender.value(2.0); // It would work, but rests.
    QVERIFY(timer.elapsedMs() < 1000);
    QCOMPARE(calculation.listener.notes, QStringList());
    QCOMPARE(calculation.alerts.count(), 1);

    const auto works = [&calculation] {
        emit calculation.sender.value(2.0);
        return !calculation.listener.notes.isEmpty();
    };
    QTRY_VERIFY_WITH_TIMEOUT(works(), 60000); // After its 10 s.
    QVERIFY(clock.elapsed() >= 10000);
}

void tst_CalcDeviceLimits::expressionsChangeNothingForOthers_data()
{
    QTest::addColumn<QString>("attempt");
    QTest::newRow("global name") << "(() => { Function('return this')().left = 1; })()";
    QTest::newRow("undeclared name") << "(() => { let a; left = 1; })()";
    QTest::newRow("sloppy function") << "Function('left = 1')()";
    QTest::newRow("method") << "(() => { Array.prototype.left = 1; })()";
    QTest::newRow("helper") << "(() => { clamp.left = 1; })()";
    QTest::newRow("property of a text") << "(() => { String.prototype.left = 1; })()";
    QTest::newRow("of a generator") << "(() => { (function* () {}).__proto__.left = 1; })()";
    QTest::newRow("of an iterator") << "(() => { [][Symbol.iterator]().__proto__.left = 1; })()";
    QTest::newRow("of an error") << "(() => { TypeError.prototype.left = 1; })()";
}

void tst_CalcDeviceLimits::expressionsChangeNothingForOthers()
{
    QFETCH(QString, attempt);
    Calculation calculation;
    calculation.addInputs({"x", ""});
    calculation.addOutput("x, " + attempt, "attempt");
    calculation.addOutput("x, typeof Function('return this')().left + typeof [].left "
                          "+ typeof clamp.left + typeof ''.left + typeof new TypeError('').left "
                          "+ typeof (function* () {}).left + typeof [][Symbol.iterator]().left");
    Listener ofAttempt;
    ofAttempt.listenTo(calculation.device, "attempt");
    calculation.listener.listenTo(calculation.device, "y");
    calculation.sender.sendTo(calculation.device, "x");
    calculation.start();
    emit calculation.sender.value(1.0);
    QCOMPARE(ofAttempt.notes, QStringList());
    QCOMPARE(calculation.listener.notes, QStringList("text " + QString("undefined").repeated(7)));
}

void tst_CalcDeviceLimits::whatIsLeftOutIsNotThere_data()
{
    QTest::addColumn<QString>("expression");
    QTest::newRow("promise") << "Function('return typeof Promise')()";
    QTest::newRow("memory at once") << "Function('return typeof ArrayBuffer')()";
    QTest::newRow("typed array") << "Function('return typeof Float64Array')()";
    QTest::newRow("last match") << "typeof RegExp.$1";
    QTest::newRow("long text")
        << "(() => { try { return 'x'.repeat(1e9).length; } catch (e) { return typeof e.x; } })()";
    QTest::newRow("long padding")
        << "(() => { try { return 'x'.padEnd(1e8).length; } catch (e) { return typeof e.x; } })()";
    QTest::newRow("long filling") << "(() => { try { return Array(1e8).fill(1).length; } catch (e) "
                                     "{ return typeof e.x; } })()";
    QTest::newRow("long search")
        << "(() => { try { return Array(4e9).includes(1); } catch (e) { return typeof e.x; } })()";
}

void tst_CalcDeviceLimits::whatIsLeftOutIsNotThere()
{
    QFETCH(QString, expression);
    Calculation calculation;
    calculation.startWith("x, " + expression);
    const norvo::ProcessorTimer timer;
    emit calculation.sender.value(1.0);
    QVERIFY(timer.elapsedMs() < 500);
    QCOMPARE(calculation.listener.notes, QStringList("text undefined"));
}

void tst_CalcDeviceLimits::thousandDevicesShareOneEngine()
{
    const norvo::ProcessorTimer timer;
    std::vector<std::unique_ptr<Calculation>> calculations;
    for (int i = 0; i < 1000; ++i) {
        calculations.push_back(std::make_unique<Calculation>());
        calculations.back()->startWith(QString("x + %1").arg(i));
    }
    QVERIFY2(timer.elapsedMs() < 3000, qPrintable(QString::number(timer.elapsedMs())));
    for (const auto& calculation : calculations) {
        emit calculation->sender.value(0.5);
    }
    QCOMPARE(calculations[999]->listener.notes, (QStringList{"number 999.5", "text 999.5"}));
}

void tst_CalcDeviceLimits::watchdogSleepsAndWakes()
{
    Calculation calculation;
    calculation.startWith("x > 1 ? x : (() => { while (true); })()");
    emit calculation.sender.value(2.0);
    QTest::qWait(1500); // It sleeps after a second without work.
    emit calculation.sender.value(1.0);
    QCOMPARE(calculation.alerts.count(), 1);
    QCOMPARE(calculation.listener.notes, (QStringList{"number 2", "text 2"}));
}

NORVO_GUILESS_TEST(tst_CalcDeviceLimits)
#include "tst_CalcDeviceLimits.moc"
