// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/ProcReadings.h"
#include "TestMain.h"

#include <QtTest>

using namespace norvo;

Q_DECLARE_METATYPE(norvo::TrafficCounters)

namespace {

const QByteArray kNetHead =
    "Inter-|   Receive                            |  Transmit\n"
    " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs\n";

CpuTimes times(quint64 idle, quint64 total)
{
    CpuTimes result;
    result.idle = idle;
    result.total = total;
    return result;
}

InterfaceCounters counters(quint64 received, quint64 sent)
{
    InterfaceCounters result;
    result.received = received;
    result.sent = sent;
    return result;
}

} // namespace

class tst_ProcReadings : public QObject
{
    Q_OBJECT

private slots:
    void cpuTimes_data();
    void cpuTimes();
    void oddCpuTimesGiveNoValue_data();
    void oddCpuTimesGiveNoValue();
    void cpuLoadIsTheBusyShareOfTheDifference_data();
    void cpuLoadIsTheBusyShareOfTheDifference();
    void noCpuLoadWhenNoTimeHasPassed();
    void usedMemory_data();
    void usedMemory();
    void loadAverage_data();
    void loadAverage();
    void trafficIsKeptByInterfaceWithoutLoopback();
    void oddTrafficGivesNoValue_data();
    void oddTrafficGivesNoValue();
    void aThousandInterfaces();
    void trafficDifferenceIsNeverNegative_data();
    void trafficDifferenceIsNeverNegative();
    void uptime_data();
    void uptime();
    void uptimeAsText_data();
    void uptimeAsText();
};

void tst_ProcReadings::cpuTimes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<quint64>("idle");
    QTest::addColumn<quint64>("total");

    QTest::newRow("guestTimeIsNotCountedTwice")
        << QByteArray("cpu  100 20 30 400 50 6 7 8 90 10\ncpu0 1 2 3 4\n") << 450ull << 621ull;
    QTest::newRow("iowaitIsIdle") << QByteArray("cpu 0 0 0 5 7 0 0 0\n") << 12ull << 12ull;
    QTest::newRow("oldKernelWithFourColumns") << QByteArray("cpu 1 2 3 4\n") << 4ull << 10ull;
    QTest::newRow("noLineFeed") << QByteArray("cpu 1 2 3 4 5") << 9ull << 15ull;
    QTest::newRow("largestCounter")
        << QByteArray("cpu 0 0 0 18446744073709551615\n") << ~0ull << ~0ull;
}

void tst_ProcReadings::cpuTimes()
{
    QFETCH(QByteArray, text);

    const auto read = parseCpuTimes(text);
    QVERIFY(read);
    QTEST(read->idle, "idle");
    QTEST(read->total, "total");
}

void tst_ProcReadings::oddCpuTimesGiveNoValue_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("garbage") << QByteArray("\x00\xff\x01 nonsense", 12);
    QTest::newRow("cutShort") << QByteArray("cpu  100 20 30");
    QTest::newRow("otherLineFirst") << QByteArray("cpu0 1 2 3 4\n");
    QTest::newRow("lettersAmongNumbers") << QByteArray("cpu 1 2 3 4x 5\n");
    QTest::newRow("lettersInALaterColumn") << QByteArray("cpu 1 2 3 4 5 six 7\n");
    QTest::newRow("negative") << QByteArray("cpu 1 2 -3 4 5\n");
    QTest::newRow("beyondTheLargestCounter") << QByteArray("cpu 1 2 3 18446744073709551616\n");
}

void tst_ProcReadings::oddCpuTimesGiveNoValue()
{
    QFETCH(QByteArray, text);
    QVERIFY(!parseCpuTimes(text));
}

void tst_ProcReadings::cpuLoadIsTheBusyShareOfTheDifference_data()
{
    QTest::addColumn<quint64>("idleBefore");
    QTest::addColumn<quint64>("totalBefore");
    QTest::addColumn<quint64>("idleAfter");
    QTest::addColumn<quint64>("totalAfter");
    QTest::addColumn<double>("percent");

    QTest::newRow("quarter") << 100ull << 200ull << 175ull << 300ull << 25.0;
    QTest::newRow("idle") << 100ull << 200ull << 200ull << 300ull << 0.0;
    QTest::newRow("busy") << 100ull << 200ull << 100ull << 300ull << 100.0;
    QTest::newRow("idleFellBack") << 100ull << 200ull << 90ull << 300ull << 100.0;
    QTest::newRow("idleGrewMore") << 100ull << 200ull << 250ull << 300ull << 0.0;
    QTest::newRow("wrapped") << ~0ull - 49 << ~0ull - 99 << 0ull << 0ull << 50.0;
}

void tst_ProcReadings::cpuLoadIsTheBusyShareOfTheDifference()
{
    QFETCH(quint64, idleBefore);
    QFETCH(quint64, totalBefore);
    QFETCH(quint64, idleAfter);
    QFETCH(quint64, totalAfter);
    QFETCH(double, percent);

    const auto load = cpuLoad(times(idleBefore, totalBefore), times(idleAfter, totalAfter));
    QVERIFY(load);
    QCOMPARE(*load, percent);
}

void tst_ProcReadings::noCpuLoadWhenNoTimeHasPassed()
{
    QVERIFY(!cpuLoad(times(10, 20), times(10, 20)));
    QVERIFY(!cpuLoad(times(10, 20), times(5, 10)));
}

void tst_ProcReadings::usedMemory_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("reads");
    QTest::addColumn<double>("percent");

    QTest::newRow("available")
        << QByteArray("MemTotal: 1000 kB\nMemFree: 100 kB\nMemAvailable:   400 kB\nBuffers: 9 kB\n")
        << true << 60.0;
    QTest::newRow("oldKernelWithoutAvailable")
        << QByteArray("MemTotal: 1000 kB\nMemFree: 100 kB\nBuffers: 50 kB\nCached: 150 kB\n"
                      "SwapCached: 500 kB\n")
        << true << 70.0;
    QTest::newRow("moreAvailableThanThereIs")
        << QByteArray("MemTotal: 1000 kB\nMemAvailable: 2000 kB\n") << true << 0.0;
    QTest::newRow("oddLinesBetween")
        << QByteArray("\n:::\nMemTotal: 200 kB\nWhatever\nMemAvailable: 50") << true << 75.0;
    QTest::newRow("hugeNumbers") << QByteArray(
                                        "MemTotal: 18446744073709551615 kB\nMemAvailable: 0 kB\n")
                                 << true << 100.0;
    QTest::newRow("nothingIsThere")
        << QByteArray("MemTotal: 0 kB\nMemAvailable: 0 kB\n") << false << 0.0;
    QTest::newRow("cutShort") << QByteArray("MemTotal: 1000 kB\nMemFr") << false << 0.0;
    QTest::newRow("noTotal") << QByteArray("MemFree: 10 kB\nMemAvailable: 20 kB\n") << false << 0.0;
    QTest::newRow("totalBeyondTheLargestCounter")
        << QByteArray("MemTotal: 99999999999999999999 kB\nMemAvailable: 20 kB\n") << false << 0.0;
    QTest::newRow("empty") << QByteArray() << false << 0.0;
    QTest::newRow("garbage") << QByteArray("\xff\xfe\x00MemTotal", 11) << false << 0.0;
}

void tst_ProcReadings::usedMemory()
{
    QFETCH(QByteArray, text);

    const auto used = parseUsedMemory(text);
    QTEST(used.has_value(), "reads");
    QTEST(used.value_or(0.0), "percent");
}

void tst_ProcReadings::loadAverage_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("expected"); // Below 0: none.

    QTest::newRow("recorded") << QByteArray("0.66 0.31 0.15 1/93 8945\n") << 0.66;
    QTest::newRow("huge") << QByteArray("123456789.5 1 1 1/1 1\n") << 123456789.5;
    QTest::newRow("empty") << QByteArray() << -1.0;
    QTest::newRow("garbage") << QByteArray("load 1 2 3\n") << -1.0;
    QTest::newRow("notANumber") << QByteArray("nan 1 2 3\n") << -1.0;
    QTest::newRow("infinite") << QByteArray("inf 1 2 3\n") << -1.0;
    QTest::newRow("negative") << QByteArray("-0.5 1 2 3\n") << -1.0;
    QTest::newRow("beyondADouble") << QByteArray("1e999 1 2 3\n") << -1.0;
}

void tst_ProcReadings::loadAverage()
{
    QFETCH(QByteArray, text);
    QTEST(parseLoadAverage(text).value_or(-1.0), "expected");
}

void tst_ProcReadings::trafficIsKeptByInterfaceWithoutLoopback()
{
    const auto traffic =
        parseTraffic(kNetHead + "    lo:    3267      29 0 0 0 0 0 0     3267 29 0 0 0 0 0 0\n"
                                "  eth0: 57370083 1592 0 0 0 0 0 0 66980 770 0 0 0 0 0 0\n"
                                "wlan0:11 1 0 0 0 0 0 0 22 1 0 0 0 0 0 0\n"
                                "eth0:1:33 1 0 0 0 0 0 0 44 1 0 0 0 0 0 0\n");
    QVERIFY(traffic);
    QCOMPARE(traffic->size(), 3);
    QCOMPARE(traffic->value("eth0").received, 57370083ull);
    QCOMPARE(traffic->value("eth0").sent, 66980ull);
    QCOMPARE(traffic->value("wlan0").received, 11ull);
    QCOMPARE(traffic->value("wlan0").sent, 22ull);
    QCOMPARE(traffic->value("eth0:1").sent, 44ull);

    QVERIFY(parseTraffic(kNetHead));
    QVERIFY(parseTraffic(kNetHead)->isEmpty());
}

void tst_ProcReadings::oddTrafficGivesNoValue_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("garbage") << QByteArray("\x01\x02 garbage: 1 2 3 4 5 6 7 8 9\n");
    QTest::newRow("cutShort") << kNetHead + "eth0: 1 2 3 4 5 6 7 8";
    QTest::newRow("cutInTheName") << kNetHead + "eth0: 1 2 3 4 5 6 7 8 9\n  et";
    QTest::newRow("noName") << kNetHead + "1 2 3 4 5 6 7 8 9 0\n";
    QTest::newRow("letters") << kNetHead + "eth0: 1 2 3 4 5 6 7 8 nine 0 0\n";
    QTest::newRow("beyondTheLargestCounter")
        << kNetHead + "eth0: 18446744073709551616 2 3 4 5 6 7 8 9 0\n";
}

void tst_ProcReadings::oddTrafficGivesNoValue()
{
    QFETCH(QByteArray, text);
    QVERIFY(!parseTraffic(text));
}

void tst_ProcReadings::aThousandInterfaces()
{
    QByteArray text = kNetHead;
    for (int i = 0; i < 1000; ++i) {
        text += "veth" + QByteArray::number(i) + ": 18446744073709551615 1 0 0 0 0 0 0 " +
                QByteArray::number(i) + " 1 0 0 0 0 0 0\n";
    }
    const auto traffic = parseTraffic(text);
    QVERIFY(traffic);
    QCOMPARE(traffic->size(), 1000);
    QCOMPARE(traffic->value("veth999").sent, 999ull);
    QCOMPARE(traffic->value("veth0").received, ~0ull);
}

void tst_ProcReadings::trafficDifferenceIsNeverNegative_data()
{
    QTest::addColumn<TrafficCounters>("before");
    QTest::addColumn<TrafficCounters>("after");
    QTest::addColumn<quint64>("received");
    QTest::addColumn<quint64>("sent");

    QTest::newRow("sumOfAll") << TrafficCounters{{"a", counters(10, 20)}, {"b", counters(1, 2)}}
                              << TrafficCounters{{"a", counters(15, 30)}, {"b", counters(4, 6)}}
                              << 8ull << 14ull;
    QTest::newRow("counterBeganAnew") << TrafficCounters{{"a", counters(1000, 2000)}}
                                      << TrafficCounters{{"a", counters(7, 2010)}} << 7ull << 10ull;
    QTest::newRow("interfaceGone")
        << TrafficCounters{{"a", counters(1000, 2000)}} << TrafficCounters{} << 0ull << 0ull;
    QTest::newRow("interfaceNew") << TrafficCounters{}
                                  << TrafficCounters{{"a", counters(1000, 2000)}} << 0ull << 0ull;
}

void tst_ProcReadings::trafficDifferenceIsNeverNegative()
{
    QFETCH(TrafficCounters, before);
    QFETCH(TrafficCounters, after);

    const InterfaceCounters moved = trafficBetween(before, after);
    QTEST(moved.received, "received");
    QTEST(moved.sent, "sent");
}

void tst_ProcReadings::uptime_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<qint64>("seconds"); // Below 0: none.

    QTest::newRow("recorded") << QByteArray("1645.95 3127.49\n") << qint64(1645);
    QTest::newRow("justStarted") << QByteArray("0.00 0.00\n") << qint64(0);
    QTest::newRow("longest") << QByteArray("1e15 0\n") << qint64(1000000000000000);
    QTest::newRow("beyondAnInteger") << QByteArray("1e300 0\n") << qint64(-1);
    QTest::newRow("empty") << QByteArray() << qint64(-1);
    QTest::newRow("garbage") << QByteArray("up\n") << qint64(-1);
}

void tst_ProcReadings::uptime()
{
    QFETCH(QByteArray, text);
    QTEST(parseUptime(text).value_or(-1), "seconds");
}

void tst_ProcReadings::uptimeAsText_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<QString>("text");

    QTest::newRow("start") << qint64(0) << "0 d 00:00:00";
    QTest::newRow("lastSecondOfADay") << qint64(86399) << "0 d 23:59:59";
    QTest::newRow("days") << qint64(3 * 86400 + 4 * 3600 + 5 * 60 + 6) << "3 d 04:05:06";
    QTest::newRow("longest") << qint64(1000000000000000) << "11574074074 d 01:46:40";
}

void tst_ProcReadings::uptimeAsText()
{
    QFETCH(qint64, seconds);
    QTEST(norvo::uptimeText(seconds), "text");
}

NORVO_GUILESS_TEST(tst_ProcReadings)
#include "tst_ProcReadings.moc"
