// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/mqtt/AgeWatch.h"
#include "TestMain.h"

#include <QtTest>

using norvo::AgeWatch;
using namespace std::chrono_literals;

class tst_AgeWatch : public QObject
{
    Q_OBJECT

private slots:
    void whatIsNotHeardGetsOldOnce();
    void whatIsHeardIsNewAgain();
    void restartMakesNothingNewThatIsOld();
};

void tst_AgeWatch::whatIsNotHeardGetsOldOnce()
{
    const AgeWatch::Time start(1000s);
    AgeWatch watch;
    watch.add(0ms);
    QVERIFY(!watch.isNeeded());
    watch.add(5s);
    watch.add(2s);
    QVERIFY(watch.isNeeded());
    watch.restart(start);
    QCOMPARE(watch.findOld(start + 1999ms), std::vector<int>());
    QCOMPARE(watch.findOld(start + 2s), std::vector<int>({2}));
    QCOMPARE(watch.findOld(start + 10s), std::vector<int>({1}));
    QCOMPARE(watch.findOld(start + 20s), std::vector<int>());
    QVERIFY(watch.isAnyOld());
}

void tst_AgeWatch::whatIsHeardIsNewAgain()
{
    const AgeWatch::Time start(1000s);
    AgeWatch watch;
    watch.add(2s);
    watch.restart(start);
    QVERIFY(!watch.hear(0, start + 1s));
    QCOMPARE(watch.findOld(start + 2s), std::vector<int>());
    QCOMPARE(watch.findOld(start + 3s), std::vector<int>({0}));
    QVERIFY(watch.hear(0, start + 4s));
    QVERIFY(!watch.isAnyOld());
    QCOMPARE(watch.findOld(start + 6s), std::vector<int>({0}));
}

void tst_AgeWatch::restartMakesNothingNewThatIsOld()
{
    const AgeWatch::Time start(1000s);
    AgeWatch watch;
    watch.add(2s);
    watch.add(4s);
    watch.restart(start);
    QCOMPARE(watch.findOld(start + 3s), std::vector<int>({0}));
    watch.restart(start + 3s);
    QVERIFY(watch.isAnyOld());
    QCOMPARE(watch.findOld(start + 6s), std::vector<int>());
    QCOMPARE(watch.findOld(start + 7s), std::vector<int>({1}));
}

NORVO_GUILESS_TEST(tst_AgeWatch)
#include "tst_AgeWatch.moc"
