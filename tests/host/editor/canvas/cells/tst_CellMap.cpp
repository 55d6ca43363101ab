// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/editor/canvas/cells/CellMap.h"

#include <QtTest>

using norvo::CellMap;
using norvo::Cells;

namespace {

Cells cells(int row, int column, int rowspan = 1, int colspan = 1, const QString& area = {})
{
    return {area, row, column, rowspan, colspan};
}

/// A wide one above two small ones; a far one on another page.
CellMap sample()
{
    return CellMap({{"wide", cells(0, 0, 1, 2)},
                    {"left", cells(1, 0)},
                    {"right", cells(1, 1)},
                    {"far", cells(4, 0, 1, 1, "Other")}});
}

} // namespace

class tst_CellMap : public QObject
{
    Q_OBJECT

private slots:
    void devicesOfAPageStandByRowAndColumn();
    void aCellIsTakenByWhatReachesOverIt();
    void whatMovesIsNotInItsOwnWay();
    void nobodyLeavesThePage();
    void spansStayAtOneAtLeast();
    void aGroupGoesToTheFirstFreeCells();
    void aFullPageGetsRows();
};

void tst_CellMap::devicesOfAPageStandByRowAndColumn()
{
    QCOMPARE(sample().on({}), QStringList({"wide", "left", "right"}));
    QCOMPARE(sample().rows({}), 2);
    QCOMPARE(sample().columns({}), 2);
    QCOMPARE(sample().rows("Other"), 5);
}

void tst_CellMap::aCellIsTakenByWhatReachesOverIt()
{
    QCOMPARE(sample().at({}, 0, 1), QString("wide"));
    QCOMPARE(sample().at({}, 2, 0), QString());
    QCOMPARE(sample().at({}, 4, 0), QString()); // Another page is none of its business.
    QCOMPARE(sample().at("Other", 4, 0), QString("far"));
}

void tst_CellMap::whatMovesIsNotInItsOwnWay()
{
    const CellMap map = sample();
    QVERIFY(map.isFree(map.moved({"left", "right"}, {}, 1, 0)));
    QVERIFY(map.isFree(map.moved({"left", "right"}, {}, 0, 1)));
    QCOMPARE(map.inTheWay(map.moved({"left"}, {}, 0, 1)), QString("right"));
    QCOMPARE(map.inTheWay(map.moved({"wide"}, {}, 1, 0)), QString("left"));
}

void tst_CellMap::nobodyLeavesThePage()
{
    const CellMap map = sample();
    QVERIFY(!map.isFree(map.moved({"wide"}, {}, -1, 0)));
    QVERIFY(!map.isFree(map.moved({"left"}, {}, Cells::kLimit, 0)));
    QVERIFY(map.isFree(map.moved({"left"}, {}, Cells::kLimit - 2, 0)));
}

void tst_CellMap::spansStayAtOneAtLeast()
{
    const CellMap::Places grown = sample().grown({"wide"}, 2, -5);
    QCOMPARE(grown["wide"].rowspan, 3);
    QCOMPARE(grown["wide"].colspan, 1);
}

void tst_CellMap::aGroupGoesToTheFirstFreeCells()
{
    const CellMap map({{"a", cells(0, 0)}, {"b", cells(0, 2)}, {"c", cells(1, 0)}});
    const CellMap::Places one{{"new", cells(7, 7)}};
    QCOMPARE(map.atFree(one, cells(0, 1))["new"].column, 1); // where it is asked for
    QCOMPARE(map.atFree(one, cells(0, 0))["new"].row, 0);
    QCOMPARE(map.atFree(one, cells(0, 0))["new"].column, 1);
    const CellMap::Places two{{"x", cells(3, 3)}, {"y", cells(3, 4)}};
    const CellMap::Places placed = map.atFree(two, cells(0, 0));
    QCOMPARE(placed["x"].row, 1);
    QCOMPARE(placed["x"].column, 1);
    QCOMPARE(placed["y"].column, 2); // They keep together.
}

void tst_CellMap::aFullPageGetsRows()
{
    const CellMap::Places placed = sample().atFree({{"new", cells(0, 0, 2, 2)}}, cells(0, 0));
    QCOMPARE(placed["new"].row, 2);
    QCOMPARE(placed["new"].column, 0);
    QVERIFY(sample().isFree(placed));
}

NORVO_APPLESS_TEST(tst_CellMap)
#include "tst_CellMap.moc"
