// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryClock.h"

#include "TestMain.h"

using namespace norvo;

class tst_HistoryClock : public QObject
{
    Q_OBJECT

    static constexpr qint64 kHour = 3600 * 1000;

private slots:
    void timeIsThatOfTheWallClock()
    {
        HistoryClock clock({100, 5000}, 0);
        QCOMPARE(clock.at(100), 5000);
        QCOMPARE(clock.at(350), 5250);
        QCOMPARE(clock.ahead({350, 5250}), 0);
    }

    void startIsBehindTheNewestRow()
    {
        HistoryClock clock({100, 5000}, 9000);
        QCOMPARE(clock.at(100), 9001);
        QCOMPARE(clock.ahead({100, 5000}), 4001);
    }

    void clockThatIsSetForwardIsFollowed()
    {
        HistoryClock clock({0, kHour}, 0);
        QCOMPARE(clock.follow({1000, 2 * kHour + 1000}), kHour);
        QCOMPARE(clock.at(1000), 2 * kHour + 1000);
        QCOMPARE(clock.follow({2000, 2 * kHour + 2000}), 0);
    }

    void clockThatIsSetBackIsNotFollowed()
    {
        HistoryClock clock({0, 5 * kHour}, 0);
        QCOMPARE(clock.follow({1000, 4 * kHour + 1000}), -kHour);
        QCOMPARE(clock.at(1000), 5 * kHour + 1000);
        QCOMPARE(clock.ahead({1000, 4 * kHour + 1000}), kHour);
        QCOMPARE(clock.follow({2000, 4 * kHour + 2000}), 0);
    }

    void clockThatIsSetBackAndForwardAgainIsAsBefore()
    {
        HistoryClock clock({0, 5 * kHour}, 0);
        clock.follow({1000, 4 * kHour + 1000});
        QCOMPARE(clock.follow({2000, 5 * kHour + 2000}), kHour);
        QCOMPARE(clock.at(2000), 5 * kHour + 2000);
        QCOMPARE(clock.ahead({2000, 5 * kHour + 2000}), 0);
    }

    /// Both clocks are read in whole milliseconds, which do not begin at the same moment.
    void ticksOfTheClocksAreNoDifference()
    {
        HistoryClock clock({100, 5000}, 0);
        QCOMPARE(clock.ahead({101, 5000}), 0);
        QCOMPARE(clock.ahead({101, 5001}), 0);
        QCOMPARE(clock.ahead({102, 5000}), 0);
        clock.follow({200, 5101}); // Now the history seems ahead by one.
        QCOMPARE(clock.ahead({300, 5200}), 0);
        QCOMPARE(clock.ahead({301, 5200}), 0);

        clock.follow({1000, 1000});
        const qint64 ahead = clock.ahead({1000, 1000});
        QCOMPARE(ahead, 4901);
        QCOMPARE(clock.ahead({1001, 1000}), ahead);
        QCOMPARE(clock.ahead({1001, 1001}), ahead);
        QCOMPARE(clock.ahead({1002, 1003}), ahead);
    }

    void timeNeverGoesBack()
    {
        HistoryClock clock({0, 5 * kHour}, 0);
        qint64 last = 0;
        for (int i = 1; i < 1000; ++i) {
            clock.follow({i * 100, 5 * kHour + ((i * 7919) % 2000 - 1000) * 100});
            QVERIFY(clock.at(i * 100) > last);
            last = clock.at(i * 100);
        }
    }

    void smallStepsAreNotReported()
    {
        HistoryClock clock({0, kHour}, 0);
        QCOMPARE(clock.follow({1000, kHour + 1900}), 0);
        QCOMPARE(clock.at(1000), kHour + 1900);
    }
};

NORVO_APPLESS_TEST(tst_HistoryClock)

#include "tst_HistoryClock.moc"
