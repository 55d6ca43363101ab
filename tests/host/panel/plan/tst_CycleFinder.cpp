// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/CycleFinder.h"

#include "Effort.h"
#include "host/panel/Descriptions.h"
#include "TestMain.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

using norvo::CycleFinder;

namespace {

/// The cycles as "<number of the connection>: a -> b -> a".
QStringList cyclesOf(const norvo::PanelDescription& description,
                     const CycleFinder::BreaksCycles& breaksCycles = {})
{
    const CycleFinder cycles(description, breaksCycles);
    QStringList found;
    for (int i = 0; i < description.connections.size(); ++i) {
        if (cycles.closes(i)) {
            found.append(QString("%1: %2").arg(i + 1).arg(cycles.cycle(i)));
        }
    }
    return found;
}

norvo::PanelDescription relays(const QString& ids, const QStringList& arrows)
{
    QVector<norvo::DeviceSetting> devices;
    QStringList texts;
    for (const QChar id : ids) { // a capital answers by itself
        devices.append(describe::device(id, id.isUpper() ? "process" : "relay"));
    }
    for (const QString& arrow : arrows) { // "ab": from a to b
        texts.append(QString("%1.output -> %2.input").arg(arrow[0]).arg(arrow[1]));
    }
    return describe::panel(devices, texts);
}

bool isProcess(const QString& type)
{
    return type == "process";
}

} // namespace

class tst_CycleFinder : public QObject
{
    Q_OBJECT

private slots:
    void connectionsThatCloseCycles_data();
    void connectionsThatCloseCycles();
    void cycleThroughADeviceThatBreaksItIsClosedAndNotNamed_data();
    void cycleThroughADeviceThatBreaksItIsClosedAndNotNamed();
    void connectionsLeftOverHaveNoCycle_data();
    void connectionsLeftOverHaveNoCycle();
    void middleOfALongCycleIsLeftOut();
    void valuesThatMultiplyBeyondBounds_data();
    void valuesThatMultiplyBeyondBounds();
    void asManyCallsAsMayBeAreNoError();
    void callsEndAtADeviceThatSendsLater();
    void deepDoublingsTakeNoTime();
    void manyLongCyclesTakeNoTime();
    void thousandsOfDevicesTakeNoTime_data();
    void thousandsOfDevicesTakeNoTime();
};

void tst_CycleFinder::connectionsThatCloseCycles_data()
{
    QTest::addColumn<QStringList>("arrows");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("noConnections") << QStringList{} << QStringList{};
    QTest::newRow("aChainHasNone") << QStringList{"ab", "bc", "cd"} << QStringList{};
    QTest::newRow("twoWaysToOneDeviceAreNone")
        << QStringList{"ab", "ac", "bd", "cd"} << QStringList{};
    QTest::newRow("theSameConnectionTwiceIsNone") << QStringList{"ab", "ab"} << QStringList{};
    QTest::newRow("toItself") << QStringList{"aa"} << QStringList{"1: a -> a"};
    QTest::newRow("thereAndBack") << QStringList{"ab", "ba"} << QStringList{"2: a -> b -> a"};
    QTest::newRow("backAndThere") << QStringList{"ba", "ab"} << QStringList{"2: b -> a -> b"};
    QTest::newRow("threeDevices") << QStringList{"ab", "bc", "ca"}
                                  << QStringList{"3: a -> b -> c -> a"};
    QTest::newRow("theWalkBeginsAtTheFirstOfTheFile")
        << QStringList{"ab", "ca", "bc"} << QStringList{"2: a -> b -> c -> a"};
    QTest::newRow("thePathOfTheWalkIsNamed")
        << QStringList{"ab", "bc", "cd", "ad", "da"} << QStringList{"5: a -> b -> c -> d -> a"};
    QTest::newRow("closersAreNotFollowed") << QStringList{"ab", "ba", "bc", "ca"}
                                           << QStringList{"2: a -> b -> a", "4: a -> b -> c -> a"};
    QTest::newRow("bothOfTwo") << QStringList{"ab", "cd", "ba", "dc"}
                               << QStringList{"3: a -> b -> a", "4: c -> d -> c"};
    QTest::newRow("whatLeadsIntoACycleIsNotNamed")
        << QStringList{"ab", "bc", "cd", "dc"} << QStringList{"4: c -> d -> c"};
    QTest::newRow("aTailOfACycleIsNone")
        << QStringList{"ba", "ab", "bc", "db"} << QStringList{"2: b -> a -> b"};
}

void tst_CycleFinder::connectionsThatCloseCycles()
{
    QFETCH(QStringList, arrows);
    QFETCH(QStringList, expected);

    QCOMPARE(cyclesOf(relays("abcd", arrows)), expected);
    // The order of the devices in the file makes no difference.
    QCOMPARE(cyclesOf(relays("dcba", arrows)), expected);
}

void tst_CycleFinder::cycleThroughADeviceThatBreaksItIsClosedAndNotNamed_data()
{
    QTest::addColumn<QStringList>("arrows");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("questionAndAnswer") << QStringList{"aP", "Pa"} << QStringList{"2: "};
    QTest::newRow("answerBeforeTheQuestion") << QStringList{"Pa", "aP"} << QStringList{"2: "};
    QTest::newRow("toItself") << QStringList{"PP"} << QStringList{"1: "};
    QTest::newRow("longWayRound") << QStringList{"ab", "bP", "Pc", "ca"} << QStringList{"4: "};
    QTest::newRow("betweenTwoOfThem") << QStringList{"PQ", "QP"} << QStringList{"2: "};
    QTest::newRow("besideOneThatRunsRound")
        << QStringList{"aP", "Pa", "ab", "ba"} << QStringList{"2: ", "4: a -> b -> a"};
    // Followed from P, the connection a -> b would close; the cycle is named where it is closed.
    QTest::newRow("entryIntoOneThatRunsRound")
        << QStringList{"Pb", "ab", "ba", "bP"} << QStringList{"3: a -> b -> a", "4: "};
    QTest::newRow("twoWaysOfWhichOneRunsRound")
        << QStringList{"aP", "Pb", "ac", "cb", "ba"} << QStringList{"5: a -> c -> b -> a"};
    QTest::newRow("noCycle") << QStringList{"aP", "Pb"} << QStringList{};
}

void tst_CycleFinder::cycleThroughADeviceThatBreaksItIsClosedAndNotNamed()
{
    QFETCH(QStringList, arrows);
    QTEST(cyclesOf(relays("abcPQ", arrows), isProcess), "expected");
}

void tst_CycleFinder::connectionsLeftOverHaveNoCycle_data()
{
    QTest::addColumn<int>("processes");
    QTest::newRow("all pass values on") << 0;
    QTest::newRow("a third breaks cycles") << 3;
}

void tst_CycleFinder::connectionsLeftOverHaveNoCycle()
{
    QFETCH(int, processes);
    // As many random connections as make many cycles: without those that close one, a walk along
    // the others must come to an end everywhere, and each that does must lead back along them.
    const int count = 60;
    QRandomGenerator random(7);
    QVector<norvo::DeviceSetting> devices;
    for (int i = 0; i < count; ++i) {
        const bool isAnswering = processes > 0 && i % processes == 0;
        devices.append(describe::device(QString::number(i), isAnswering ? "process" : "relay"));
    }
    QStringList arrows;
    for (int i = 0; i < 3 * count; ++i) {
        arrows.append(
            QString("%1.output -> %2.input").arg(random.bounded(count)).arg(random.bounded(count)));
    }
    const auto description = describe::panel(devices, arrows);
    const CycleFinder cycles(description, isProcess);

    QMap<QString, QStringList> next;
    QMap<QString, QStringList> all;
    QStringList closing;
    for (int i = 0; i < arrows.size(); ++i) {
        const norvo::ConnectionSetting& setting = description.connections[i];
        all[setting.from.device.text].append(setting.to.device.text);
        if (cycles.closes(i)) {
            closing.append(setting.from.device.text + " " + setting.to.device.text);
        } else {
            next[setting.from.device.text].append(setting.to.device.text);
        }
    }
    // Plain search.
    using Ways = QMap<QString, QStringList>;
    const auto leadsTo = [](const Ways& ways, const QString& from, const QString& to) {
        QStringList reached{from};
        for (int k = 0; k < reached.size() && !reached.contains(to); ++k) {
            for (const QString& id : ways.value(reached[k])) {
                if (!reached.contains(id)) {
                    reached.append(id);
                }
            }
        }
        return reached.contains(to);
    };
    for (const QString& from : next.keys()) {
        for (const QString& to : next.value(from)) {
            QVERIFY(!leadsTo(next, to, from));
        }
    }
    // Where two walks were taken, the second may have closed the way that the first went.
    const Ways& back = processes > 0 ? all : next;
    for (const QString& pair : closing) {
        QVERIFY2(leadsTo(back, pair.section(' ', 1), pair.section(' ', 0, 0)), qPrintable(pair));
    }
    QVERIFY(closing.size() > 20);
    QVERIFY(closing.size() < arrows.size() / 2);
}

void tst_CycleFinder::middleOfALongCycleIsLeftOut()
{
    const auto ring = [](int count) {
        QStringList arrows;
        for (int i = 0; i < count; ++i) {
            arrows.append(QString("%1%2").arg(QChar('a' + i)).arg(QChar('a' + (i + 1) % count)));
        }
        return relays("abcdefghijklmnopqrstuvwxyz", arrows);
    };
    QCOMPARE(cyclesOf(ring(12)),
             QStringList("12: a -> b -> c -> d -> e -> f -> g -> h -> i -> j -> k -> l -> a"));
    QCOMPARE(cyclesOf(ring(26)), QStringList("26: a -> b -> c -> d -> e -> f -> (14 more) -> u -> "
                                             "v -> w -> x -> y -> z -> a"));
}

void tst_CycleFinder::valuesThatMultiplyBeyondBounds_data()
{
    QTest::addColumn<QStringList>("arrows");
    QTest::addColumn<int>("expected");
    const auto doubled = [](const QString& ids) {
        QStringList arrows;
        for (int i = 0; i + 1 < ids.size(); ++i) {
            arrows += QStringList{ids.mid(i, 2), ids.mid(i, 2)};
        }
        return arrows;
    };
    QTest::newRow("aChainDoesNot") << QStringList{"ab", "bc", "cd"} << -1;
    // Of k steps, each taken twice, 2^(k+1) - 2 calls: 65534, 131070.
    QTest::newRow("fifteenDoublings") << doubled("abcdefghijklmnop") << -1;
    QTest::newRow("sixteenDoublings") << doubled("abcdefghijklmnopq") << 0;
    QTest::newRow("theFirstBeyondIsFound") << doubled("abcdefghijklmnopqrstuvwxyz") << 9;
    QTest::newRow("whatClosesACycleDoesNotCount") << QStringList{"ab", "ba", "ba", "ab"} << -1;
}

void tst_CycleFinder::valuesThatMultiplyBeyondBounds()
{
    QFETCH(QStringList, arrows);
    QTEST(CycleFinder(relays("abcdefghijklmnopqrstuvwxyz", arrows)).multiplier(), "expected");
}

void tst_CycleFinder::asManyCallsAsMayBeAreNoError()
{
    QStringList arrows;
    for (int i = 0; i < 99; ++i) {
        arrows += "bc";
    }
    for (int i = 0; i < 1000; ++i) {
        arrows += "ab"; // And the 99 calls behind it.
    }
    QCOMPARE(CycleFinder(relays("abc", arrows)).multiplier(), -1);
    QCOMPARE(CycleFinder(relays("abc", arrows + QStringList("ac"))).multiplier(), 0);
}

void tst_CycleFinder::callsEndAtADeviceThatSendsLater()
{
    QStringList arrows;
    for (int i = 0; i < 400; ++i) {
        arrows += QStringList{"ab", "bc"};
    }
    norvo::PanelDescription description = relays("abc", arrows);
    QCOMPARE(CycleFinder(description).multiplier(), 0);
    description.devices[1].type.text = "program";
    const auto isProgram = [](const QString& type) { return type == "program"; };
    QCOMPARE(CycleFinder(description, isProgram).multiplier(), -1);
}

void tst_CycleFinder::deepDoublingsTakeNoTime()
{
    QVector<norvo::DeviceSetting> devices;
    QStringList arrows;
    for (int i = 0; i < 5000; ++i) {
        devices.append(describe::device(QString::number(i), "relay"));
        const QString arrow = QString("%1.output -> %2.input").arg(i).arg(i + 1);
        arrows += QStringList{arrow, arrow};
    }
    const auto description = describe::panel(devices, arrows);
    const norvo::ProcessorTimer time;
    const CycleFinder cycles(description);
    QVERIFY2(time.elapsedMs() < 500, qPrintable(QString::number(time.elapsedMs())));
    QVERIFY(cycles.multiplier() > 0);
}

void tst_CycleFinder::manyLongCyclesTakeNoTime()
{
    const int count = 20000;
    QVector<norvo::DeviceSetting> devices;
    QStringList arrows;
    for (int i = 0; i < count; ++i) {
        devices.append(describe::device(QString::number(i), "relay"));
        arrows.append(QString("%1.output -> %2.input").arg(i).arg(i + 1));
        arrows.append(QString("%1.output -> 0.input").arg(i));
    }
    const auto description = describe::panel(devices, arrows);
    const norvo::ProcessorTimer time;
    const CycleFinder cycles(description);
    QVERIFY2(time.elapsedMs() < 1000, qPrintable(QString::number(time.elapsedMs())));
    QVERIFY(cycles.closes(2 * count - 1));
    QVERIFY(cycles.cycle(2 * count - 1).size() < 200);
}

void tst_CycleFinder::thousandsOfDevicesTakeNoTime_data()
{
    QTest::addColumn<bool>("isReversed");
    QTest::addColumn<bool>("isRing");
    QTest::addColumn<bool>("isUpward");
    QTest::newRow("chain") << false << false << false;
    QTest::newRow("chainWrittenFromItsEnd") << true << false << false;
    QTest::newRow("ring") << false << true << false;
    QTest::newRow("ringWrittenFromItsEnd") << true << true << false;
    QTest::newRow("chainAgainstTheOrderOfTheDevices") << true << false << true;
    QTest::newRow("ringAgainstTheOrderOfTheDevices") << false << true << true;
    QTest::newRow("ringAgainstTheOrderOfTheDevicesFromItsEnd") << true << true << true;
}

void tst_CycleFinder::thousandsOfDevicesTakeNoTime()
{
    QFETCH(bool, isReversed);
    QFETCH(bool, isRing);
    QFETCH(bool, isUpward);
    const int count = 20000;
    QVector<norvo::DeviceSetting> devices;
    for (int i = 0; i < count; ++i) {
        devices.append(describe::device(QString::number(i), "relay"));
    }
    QStringList arrows;
    for (int i = 0; i < (isRing ? count : count - 1); ++i) {
        const int from = isReversed ? count - 1 - i : i;
        const int to = (from + 1) % count;
        arrows.append(
            QString("%1.output -> %2.input").arg(isUpward ? to : from).arg(isUpward ? from : to));
    }
    const auto description = describe::panel(devices, arrows);

    const norvo::ProcessorTimer time;
    const CycleFinder cycles(description);
    QVERIFY2(time.elapsedMs() < 1000, qPrintable(QString::number(time.elapsedMs())));
    int closing = 0;
    for (int i = 0; i < arrows.size(); ++i) {
        closing += cycles.closes(i) ? 1 : 0;
    }
    QCOMPARE(closing, isRing ? 1 : 0);
}

NORVO_GUILESS_TEST(tst_CycleFinder)
#include "tst_CycleFinder.moc"
