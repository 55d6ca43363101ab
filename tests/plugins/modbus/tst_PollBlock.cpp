// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/PollBlock.h"
#include "TestMain.h"

#include <QtTest>

#include <numeric>

using norvo::ModbusPoint;
using norvo::PollBlock;

namespace {

PollBlock::Points pointsOf(const QStringList& definitions)
{
    PollBlock::Points points(std::size_t(definitions.size()));
    for (int i = 0; i < definitions.size(); ++i) {
        const QString error = points[std::size_t(i)].define(definitions[i]);
        if (!error.isEmpty()) {
            qFatal("%s", qPrintable(error));
        }
    }
    return points;
}

std::vector<PollBlock> blocksOf(const PollBlock::Points& points)
{
    std::vector<int> all(points.size());
    std::iota(all.begin(), all.end(), 0);
    return PollBlock::merge(points, all);
}

QString textOf(const PollBlock& block)
{
    QStringList members;
    for (const int member : block.members) {
        members << QString::number(member);
    }
    return QString("%1 (%2)").arg(block.place(), members.join(' '));
}

} // namespace

/// Which values are read together.
class tst_PollBlock : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreReadTogether_data();
    void valuesAreReadTogether();
    void onlyThoseAskedForAreRead();
    void limitsOfTheProtocolAreKept();
    void blockIsHalvedBetweenValues();
};

void tst_PollBlock::valuesAreReadTogether_data()
{
    QTest::addColumn<QStringList>("definitions");
    QTest::addColumn<QString>("blocks");

    QTest::newRow("none") << QStringList() << "";
    QTest::newRow("one") << QStringList{"coil 3"} << "coil 3 (0)";
    QTest::newRow("in any order") << QStringList{"holding 3", "holding 1", "holding 2"}
                                  << "holding 1 to 3 (1 2 0)";
    QTest::newRow("tables apart") << QStringList{"holding 1", "input 1", "coil 1", "discrete 1"}
                                  << "coil 1 (2), discrete 1 (3), input 1 (1), holding 1 (0)";
    QTest::newRow("a gap of 8") << QStringList{"holding 0", "holding 9"} << "holding 0 to 9 (0 1)";
    QTest::newRow("a gap of 9") << QStringList{"holding 0", "holding 10"}
                                << "holding 0 (0), holding 10 (1)";
    QTest::newRow("behind a long value")
        << QStringList{"holding 0 float64", "holding 12"} << "holding 0 to 12 (0 1)";
    QTest::newRow("a gap of 64 bits") << QStringList{"coil 0", "coil 65"} << "coil 0 to 65 (0 1)";
    QTest::newRow("a gap of 65 bits")
        << QStringList{"coil 0", "coil 66"} << "coil 0 (0), coil 66 (1)";
    QTest::newRow("two of one place")
        << QStringList{"holding 5 bit 0", "holding 5 bit 1", "holding 4 int32"}
        << "holding 4 to 5 (2 0 1)";
    QTest::newRow("one within another")
        << QStringList{"holding 4 float64", "holding 5", "holding 6"} << "holding 4 to 7 (0 1 2)";
}

void tst_PollBlock::valuesAreReadTogether()
{
    QFETCH(QStringList, definitions);

    QStringList texts;
    for (const PollBlock& block : blocksOf(pointsOf(definitions))) {
        texts << textOf(block);
    }
    QTEST(texts.join(", "), "blocks");
}

void tst_PollBlock::onlyThoseAskedForAreRead()
{
    const auto points = pointsOf({"holding 1", "holding 2", "holding 3"});
    const auto blocks = PollBlock::merge(points, {2, 1});
    QCOMPARE(blocks.size(), std::size_t(1));
    QCOMPARE(textOf(blocks[0]), QString("holding 2 to 3 (1 2)"));
}

void tst_PollBlock::limitsOfTheProtocolAreKept()
{
    QStringList registers;
    QStringList bits;
    for (int i = 0; i < 2500; ++i) {
        registers << QString("input %1 float32").arg(2 * i);
        bits << QString("discrete %1").arg(i);
    }
    int values = 0;
    for (const PollBlock& block : blocksOf(pointsOf(registers))) {
        QVERIFY(block.size <= 125);
        values += int(block.members.size());
    }
    QCOMPARE(values, 2500);
    const auto blocks = blocksOf(pointsOf(bits));
    QCOMPARE(blocks.size(), std::size_t(2));
    QCOMPARE(blocks[0].size, 2000);
    QCOMPARE(blocks[1].size, 500);
}

void tst_PollBlock::blockIsHalvedBetweenValues()
{
    const auto points = pointsOf({"holding 0 float32", "holding 6 float32", "holding 10"});
    const auto blocks = blocksOf(points);
    QCOMPARE(blocks.size(), std::size_t(1));
    const auto [first, second] = blocks[0].halves(points);
    QCOMPARE(textOf(first), QString("holding 0 to 1 (0)"));
    QCOMPARE(textOf(second), QString("holding 6 to 10 (1 2)"));
}

NORVO_APPLESS_TEST(tst_PollBlock)
#include "tst_PollBlock.moc"
