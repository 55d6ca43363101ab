#include "host/panel/plan/CycleFinder.h"

#include "host/panel/Descriptions.h"
#include "TestMain.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

using norvo::CycleFinder;

namespace {

/// The circles as "<number of the arrow>: a -> b -> a".
QStringList circlesOf(const norvo::PanelDescription& description)
{
    const CycleFinder circles(description);
    QStringList found;
    for (int i = 0; i < description.connections.size(); ++i) {
        if (circles.closes(i)) {
            found.append(QString("%1: %2").arg(i + 1).arg(circles.way(i).join(" -> ")));
        }
    }
    return found;
}

norvo::PanelDescription relays(const QString& ids, const QStringList& arrows)
{
    QVector<norvo::DeviceSetting> devices;
    QStringList texts;
    for (const QChar id : ids) {
        devices.append(describe::device(id, "relay"));
    }
    for (const QString& arrow : arrows) { // "ab": from a to b
        texts.append(QString("%1.output -> %2.input").arg(arrow[0]).arg(arrow[1]));
    }
    return describe::panel(devices, texts);
}

} // namespace

class tst_CycleFinder : public QObject
{
    Q_OBJECT

private slots:
    void arrowsThatCloseCircles_data();
    void arrowsThatCloseCircles();
    void arrowsLeftOverHaveNoCircle();
    void thousandsOfDevicesTakeNoTime_data();
    void thousandsOfDevicesTakeNoTime();
};

void tst_CycleFinder::arrowsThatCloseCircles_data()
{
    QTest::addColumn<QStringList>("arrows");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("noArrows") << QStringList{} << QStringList{};
    QTest::newRow("aChainHasNone") << QStringList{"ab", "bc", "cd"} << QStringList{};
    QTest::newRow("twoWaysToOneDeviceAreNone")
        << QStringList{"ab", "ac", "bd", "cd"} << QStringList{};
    QTest::newRow("theSameArrowTwiceIsNone") << QStringList{"ab", "ab"} << QStringList{};
    QTest::newRow("toItself") << QStringList{"aa"} << QStringList{"1: a -> a"};
    QTest::newRow("thereAndBack") << QStringList{"ab", "ba"} << QStringList{"2: a -> b -> a"};
    QTest::newRow("backAndThere") << QStringList{"ba", "ab"} << QStringList{"2: b -> a -> b"};
    QTest::newRow("threeDevices") << QStringList{"ab", "bc", "ca"}
                                  << QStringList{"3: a -> b -> c -> a"};
    QTest::newRow("theLastOfTheFileCloses")
        << QStringList{"ab", "ca", "bc"} << QStringList{"3: c -> a -> b -> c"};
    QTest::newRow("theShortestWayIsTold")
        << QStringList{"ab", "bc", "cd", "ad", "da"} << QStringList{"5: a -> d -> a"};
    QTest::newRow("closersAreNotFollowed") << QStringList{"ab", "ba", "bc", "ca"}
                                           << QStringList{"2: a -> b -> a", "4: a -> b -> c -> a"};
    QTest::newRow("bothOfTwo") << QStringList{"ab", "cd", "ba", "dc"}
                               << QStringList{"3: a -> b -> a", "4: c -> d -> c"};
    QTest::newRow("aTailOfACircleIsNone")
        << QStringList{"ba", "ab", "bc", "db"} << QStringList{"2: b -> a -> b"};
}

void tst_CycleFinder::arrowsThatCloseCircles()
{
    QFETCH(QStringList, arrows);
    QFETCH(QStringList, expected);

    QCOMPARE(circlesOf(relays("abcd", arrows)), expected);
    // The order of the devices in the file makes no difference.
    QCOMPARE(circlesOf(relays("dcba", arrows)), expected);
}

void tst_CycleFinder::arrowsLeftOverHaveNoCircle()
{
    // As many random arrows as make many circles: without those that close one, a walk along the
    // others must come to an end everywhere, and each way told must be one along them.
    const int count = 60;
    QRandomGenerator random(7);
    QVector<norvo::DeviceSetting> devices;
    for (int i = 0; i < count; ++i) {
        devices.append(describe::device(QString::number(i), "relay"));
    }
    QStringList arrows;
    for (int i = 0; i < 3 * count; ++i) {
        arrows.append(
            QString("%1.output -> %2.input").arg(random.bounded(count)).arg(random.bounded(count)));
    }
    const auto description = describe::panel(devices, arrows);
    const CycleFinder circles(description);

    QMap<QString, QStringList> next;
    int closers = 0;
    for (int i = 0; i < arrows.size(); ++i) {
        const norvo::ConnectionSetting& arrow = description.connections[i];
        const QString from = arrow.from.device.text;
        const QString to = arrow.to.device.text;
        // Plain search along the arrows so far: does `to` lead to `from`?
        QStringList reached{to};
        for (int k = 0; k < reached.size(); ++k) {
            for (const QString& id : next.value(reached[k])) {
                if (!reached.contains(id)) {
                    reached.append(id);
                }
            }
        }
        QCOMPARE(circles.closes(i), reached.contains(from));
        if (!circles.closes(i)) {
            next[from].append(to);
            continue;
        }
        ++closers;
        const QStringList way = circles.way(i);
        QCOMPARE(way.first(), to);
        QCOMPARE(way.last(), to);
        QCOMPARE(way[way.size() - 2], from);
        for (int k = 0; k + 2 < way.size(); ++k) {
            QVERIFY(next.value(way[k]).contains(way[k + 1]));
        }
    }
    QVERIFY(closers > 20);
    QVERIFY(closers < arrows.size() / 2);
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

    QElapsedTimer time;
    time.start();
    const CycleFinder circles(description);
    QVERIFY2(time.elapsed() < 1000, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(circles.closes(arrows.size() - 1), isRing);
}

NORVO_GUILESS_TEST(tst_CycleFinder)
#include "tst_CycleFinder.moc"
