// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/Descriptions.h"

#include "host/panel/plan/MisspeltIds.h"
#include "TestMain.h"

#include <QtTest>

/// Devices "machie" in line 2, "lamp" in line 3.
class tst_MisspeltIds : public QObject
{
    Q_OBJECT

private slots:
    void errorStandsAtTheDevice_data();
    void errorStandsAtTheDevice();
};

void tst_MisspeltIds::errorStandsAtTheDevice_data()
{
    QTest::addColumn<QStringList>("arrows");
    QTest::addColumn<QStringList>("expected");
    const QStringList none;
    QTest::newRow("several mention another")
        << QStringList{"machine.a -> lamp.b", "machine.c -> lamp.b"}
        << QStringList("panel.yaml:2:1: error: no connection mentions the device \"machie\", and 2 "
                       "of them mention \"machine\", which is no device; which is misspelt?");
    QTest::newRow("at their ends")
        << QStringList{"lamp.b -> machine.a", "machine.c -> lamp.b"}
        << QStringList("panel.yaml:2:1: error: no connection mentions the device \"machie\", and 2 "
                       "of them mention \"machine\", which is no device; which is misspelt?");
    QTest::newRow("a single one may be the mistake") << QStringList("machine.a -> lamp.b") << none;
    QTest::newRow("one that is mentioned, too")
        << QStringList{"machine.a -> lamp.b", "machine.c -> lamp.b", "machie.a -> lamp.b"} << none;
    QTest::newRow("another word") << QStringList{"robot.a -> lamp.b", "robot.c -> lamp.b"} << none;
    QTest::newRow("nothing wrong") << QStringList{"machie.a -> lamp.b"} << none;
}

void tst_MisspeltIds::errorStandsAtTheDevice()
{
    QFETCH(QStringList, arrows);
    norvo::Diagnostics diagnostics("panel.yaml");
    norvo::reportMisspeltIds(
        describe::panel(
            {describe::device("machie", "x", {}, 2), describe::device("lamp", "x", {}, 3)}, arrows),
        diagnostics);
    QTEST(describe::lines(diagnostics), "expected");
}

NORVO_GUILESS_TEST(tst_MisspeltIds)
#include "tst_MisspeltIds.moc"
