// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/plots/KeyTime.h"

/// Times of the record and keys of a graph.
class tst_KeyTime : public QObject
{
    Q_OBJECT

private slots:
    void keyIsInSeconds() { QCOMPARE(norvo::keyOf(1795386888410), 1795386888.410); }
    void keyGivesItsTimeBack_data();
    void keyGivesItsTimeBack();
    void partOfAMillisecondIsRounded();
};

void tst_KeyTime::keyGivesItsTimeBack_data()
{
    QTest::addColumn<qint64>("begin");
    QTest::newRow("epoch") << qint64(0);
    QTest::newRow("today") << qint64(1795386888000);
    QTest::newRow("year 9999") << qint64(253402300700000);
}

/// 4.007 times 1000 is less than 4007.
void tst_KeyTime::keyGivesItsTimeBack()
{
    QFETCH(qint64, begin);
    for (qint64 time = begin; time < begin + 5000; ++time) {
        QCOMPARE(norvo::millisecondsOf(norvo::keyOf(time)), time);
    }
}

void tst_KeyTime::partOfAMillisecondIsRounded()
{
    QCOMPARE(norvo::millisecondsOf(2.0007), qint64(2001));
    QCOMPARE(norvo::millisecondsOf(2.0004), qint64(2000));
    QCOMPARE(norvo::millisecondsOf(-2.0007), qint64(-2001));
}

NORVO_APPLESS_TEST(tst_KeyTime)

#include "tst_KeyTime.moc"
