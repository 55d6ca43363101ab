// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/editor/canvas/cells/CellLines.h"
#include "host/editor/canvas/cells/Handles.h"

#include <QtTest>

using norvo::CellLines;
using norvo::Cells;
using norvo::Handles;

namespace {

/// Rows at 60 and 110, 40 high; columns at 60 and 170, 100 wide.
CellLines sample(int mirrorWidth = -1)
{
    return {{{60, 40}, {110, 40}}, {{60, 100}, {170, 100}}, mirrorWidth};
}

} // namespace

class tst_CellLines : public QObject
{
    Q_OBJECT

private slots:
    void aPlaceBelongsToTheNearestCell_data();
    void aPlaceBelongsToTheNearestCell();
    void spansReachOverTheGap();
    void behindTheLastLineOthersOfItsSizeFollow();
    void aMirroredPageCountsFromTheRight();
    void aBlockHoldsAllCellsOfAnArea();
    void handlesAreLargeEnoughToTouch();
    void theInnerThirdIsForTheWhole();
    void aCornerTakesBothEdges();
};

void tst_CellLines::aPlaceBelongsToTheNearestCell_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::newRow("within") << QPoint(80, 130) << 1 << 0;
    QTest::newRow("in the gap, nearer to the second") << QPoint(166, 106) << 1 << 1;
    QTest::newRow("in the gap, nearer to the first") << QPoint(163, 103) << 0 << 0;
    QTest::newRow("before the first") << QPoint(2, 2) << 0 << 0;
    QTest::newRow("behind the last") << QPoint(900, 900) << 1 << 1;
}

void tst_CellLines::aPlaceBelongsToTheNearestCell()
{
    QFETCH(QPoint, place);
    const Cells cell = sample().at(place);
    QTEST(cell.row, "row");
    QTEST(cell.column, "column");
}

void tst_CellLines::spansReachOverTheGap()
{
    Cells cells;
    cells.row = 0;
    cells.column = 0;
    cells.rowspan = 2;
    cells.colspan = 2;
    QCOMPARE(sample().rect(cells), QRect(60, 60, 210, 90));
}

void tst_CellLines::behindTheLastLineOthersOfItsSizeFollow()
{
    const QRect beyond = sample().rect(3, 0);
    QCOMPARE(beyond.height(), 40);
    QVERIFY(beyond.top() >= 110 + 2 * 40);
}

void tst_CellLines::aMirroredPageCountsFromTheRight()
{
    const CellLines lines = sample(400);
    QCOMPARE(lines.rect(0, 0), QRect(240, 60, 100, 40));
    QCOMPARE(lines.at({250, 70}).column, 0);
    QCOMPARE(lines.at({150, 70}).column, 1);
}

void tst_CellLines::aBlockHoldsAllCellsOfAnArea()
{
    const Cells block = sample().within({70, 70, 120, 10});
    QCOMPARE(block.row, 0);
    QCOMPARE(block.rowspan, 1);
    QCOMPARE(block.column, 0);
    QCOMPARE(block.colspan, 2);
    const Cells mirrored = sample(400).within({140, 70, 120, 10});
    QCOMPARE(mirrored.column, 0);
    QCOMPARE(mirrored.colspan, 2);
}

void tst_CellLines::handlesAreLargeEnoughToTouch()
{
    const Handles handles({100, 100, 200, 120}, 48);
    for (const QPoint& off : {QPoint(24, 0), QPoint(-24, 0), QPoint(0, 24), QPoint(0, -24)}) {
        QVERIFY(handles.at(QPoint(100, 100) + off));
    }
    QVERIFY(!handles.at({100 - 26, 100}));
}

void tst_CellLines::theInnerThirdIsForTheWhole()
{
    const Handles handles({100, 100, 30, 30}, 48);
    QVERIFY(!handles.at({115, 115}));
    QVERIFY(handles.at({102, 115}));
}

void tst_CellLines::aCornerTakesBothEdges()
{
    const Handles handles({100, 100, 200, 120}, 48);
    QCOMPARE(handles.at({299, 219}), Qt::BottomEdge | Qt::RightEdge);
    QCOMPARE(handles.at({299, 160}), Qt::Edges(Qt::RightEdge));
}

NORVO_APPLESS_TEST(tst_CellLines)
#include "tst_CellLines.moc"
