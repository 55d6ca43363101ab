// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/EditHistory.h"

#include "TestMain.h"

#include <QtTest>

using norvo::EditHistory;

class tst_EditHistory : public QObject
{
    Q_OBJECT

private slots:
    void goesBackAndForth_data();
    void goesBackAndForth();
    void aStepDropsWhatWasUndone();
    void joinedStepsAreOne();
    void aSavedTextEndsAStepThatGrows();
};

void tst_EditHistory::goesBackAndForth_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("middle") << QByteArray("a: 1\nb: 2\n") << QByteArray("a: 17\nb: 2\n");
    QTest::newRow("inserted among equal ones") << QByteArray("aaa") << QByteArray("aaaa");
    QTest::newRow("removed among equal ones") << QByteArray("aaaa") << QByteArray("aa");
    QTest::newRow("from nothing") << QByteArray() << QByteArray("a");
    QTest::newRow("to nothing") << QByteArray("a") << QByteArray();
    QTest::newRow("nothing alike") << QByteArray("abc") << QByteArray("xyz");
    QTest::newRow("at the start") << QByteArray("abc") << QByteArray("xbc");
    QTest::newRow("at the end") << QByteArray("abc") << QByteArray("abx");
}

void tst_EditHistory::goesBackAndForth()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    EditHistory history;
    history.add("step", before, after);
    QCOMPARE(history.undo(after), before);
    QVERIFY(!history.canUndo());
    QCOMPARE(history.redoName(), QString("step"));
    QCOMPARE(history.redo(before), after);
    QVERIFY(!history.canRedo());
}

void tst_EditHistory::aStepDropsWhatWasUndone()
{
    EditHistory history;
    history.add("one", "a", "ab");
    history.add("two", "ab", "abc");
    QCOMPARE(history.undo("abc"), QByteArray("ab"));
    history.add("three", "ab", "x");
    QVERIFY(!history.canRedo());
    QCOMPARE(history.undoName(), QString("three"));
    QCOMPARE(history.undo("x"), QByteArray("ab"));
    QCOMPARE(history.undo("ab"), QByteArray("a"));
}

void tst_EditHistory::joinedStepsAreOne()
{
    EditHistory history;
    history.add("size", "10", "11", "lamp.size");
    history.add("size", "11", "12", "lamp.size");
    QCOMPARE(history.undo("12"), QByteArray("10"));
    QCOMPARE(history.redo("10"), QByteArray("12"));
    history.endJoin();
    history.add("size", "12", "13", "lamp.size");
    QCOMPARE(history.undo("13"), QByteArray("12"));
}

void tst_EditHistory::aSavedTextEndsAStepThatGrows()
{
    EditHistory history;
    history.add("size", "10", "11", "lamp.size");
    history.setSaved();
    history.add("size", "11", "12", "lamp.size");
    QVERIFY(!history.isSaved());
    QCOMPARE(history.undo("12"), QByteArray("11"));
    QVERIFY(history.isSaved());
}

NORVO_TEST(tst_EditHistory)
#include "tst_EditHistory.moc"
