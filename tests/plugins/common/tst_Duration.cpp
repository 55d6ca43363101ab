// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/common/Duration.h"
#include "TestMain.h"

#include <QtTest>

/// The reading of times with a unit.
class tst_Duration : public QObject
{
    Q_OBJECT

private slots:
    void timeHasAUnit_data();
    void timeHasAUnit();
};

void tst_Duration::timeHasAUnit_data()
{
    QTest::addColumn<qint64>("ms"); // -1: it is no time

    QTest::newRow("500 ms") << qint64(500);
    QTest::newRow("5 s") << qint64(5000);
    QTest::newRow("5s") << qint64(5000);
    QTest::newRow("  2.5 min ") << qint64(150000);
    QTest::newRow("1 h") << qint64(3600000);
    QTest::newRow("24 h") << qint64(86400000);
    QTest::newRow("25 h") << qint64(-1);
    QTest::newRow("0 s") << qint64(-1);
    QTest::newRow("0.5 ms") << qint64(-1);
    QTest::newRow("-5 s") << qint64(-1);
    QTest::newRow("5") << qint64(-1);
    QTest::newRow("5 S") << qint64(-1);
    QTest::newRow("5,5 s") << qint64(-1);
    QTest::newRow("9999999999999 ms") << qint64(-1);
    QTest::newRow("s") << qint64(-1);
    QTest::newRow("") << qint64(-1);
}

void tst_Duration::timeHasAUnit()
{
    const auto time = norvo::readDuration(QTest::currentDataTag());
    QTEST(time ? qint64(time->count()) : qint64(-1), "ms");
}

NORVO_APPLESS_TEST(tst_Duration)
#include "tst_Duration.moc"
