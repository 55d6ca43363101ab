// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/Placement.h"
#include "Effort.h"
#include "TestMain.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegion>
#include <QtTest>

using norvo::Cells;
using norvo::Placement;

Q_DECLARE_METATYPE(norvo::Cells)

namespace {

Cells at(int row, int column, int rowspan = 1, int colspan = 1, const QString& area = {})
{
    return {area, row, column, rowspan, colspan};
}

Cells in(const QString& area)
{
    return at(-1, -1, 1, 1, area);
}

/// "row,column" for each, with "@area" where there is one.
QString placesOf(const Placement& placement)
{
    QStringList places;
    for (const Cells& cells : placement.cells()) {
        places.append(QString("%1,%2").arg(cells.row).arg(cells.column) +
                      (cells.area.isEmpty() ? QString() : "@" + cells.area));
    }
    return places.join(' ');
}

/// "later/earlier@row,column" for each.
QString overlapsOf(const Placement& placement)
{
    QStringList overlaps;
    for (const Placement::Overlap& overlap : placement.overlaps()) {
        overlaps.append(QString("%1/%2@%3,%4")
                            .arg(overlap.later)
                            .arg(overlap.earlier)
                            .arg(overlap.row)
                            .arg(overlap.column));
    }
    return overlaps.join(' ');
}

} // namespace

class tst_Placement : public QObject
{
    Q_OBJECT

private slots:
    void places_data();
    void places();
    void areasInOrderOfFirstMention();
    void listedPagesComeFirst();
    void readsParameters();
    void textsThatAreNoPlaceCountAsNotGiven();
    void errorsOfPlacementTexts_data();
    void errorsOfPlacementTexts();
    void manyDevicesTakeNoTime_data();
    void manyDevicesTakeNoTime();
    void spansOfManySizesTakeNoTime_data();
    void spansOfManySizesTakeNoTime();
    void placesAreFreeOnesInOrder();
};

void tst_Placement::places_data()
{
    QTest::addColumn<QVector<Cells>>("wishes");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("overlaps");
    using Wishes = QVector<Cells>;

    QTest::newRow("none") << Wishes{} << ""
                          << "";
    QTest::newRow("noneGivenIsOneBelowTheOther")
        << Wishes{at(-1, -1), at(-1, -1), at(-1, -1)} << "0,0 1,0 2,0"
        << "";
    QTest::newRow("nextFreeRowAfterAPlacedOne") << Wishes{at(0, 3), at(-1, -1)} << "0,3 1,0"
                                                << "";
    QTest::newRow("placedOnesGoFirstWhereverTheyStand")
        << Wishes{at(-1, -1), at(0, 0), at(-1, -1)} << "1,0 0,0 2,0"
        << "";
    QTest::newRow("rowsBetweenPlacedOnesAreUsed")
        << Wishes{at(1, 0), at(3, 0), at(-1, -1), at(-1, -1), at(-1, -1)} << "1,0 3,0 0,0 2,0 4,0"
        << "";
    QTest::newRow("rowspansTakeTheirRows")
        << Wishes{at(-1, -1, 2), at(-1, -1), at(4, 0), at(-1, -1, 2)} << "0,0 2,0 4,0 5,0"
        << "";
    QTest::newRow("orderIsKeptRatherThanGapsFilled")
        << Wishes{at(1, 0), at(-1, -1, 2), at(-1, -1)} << "1,0 2,0 4,0"
        << "";
    QTest::newRow("rowAloneGetsItsNextColumns")
        << Wishes{at(0, -1), at(0, -1, 1, 2), at(0, -1)} << "0,0 0,1 0,3"
        << "";
    QTest::newRow("rowAlonePassesPlacedOnes")
        << Wishes{at(0, 1), at(0, -1), at(0, -1), at(0, -1)} << "0,1 0,0 0,2 0,3"
        << "";
    QTest::newRow("rowAloneLooksAtAllRowsOfItsSpan")
        << Wishes{at(1, 0), at(0, -1, 2), at(0, -1)} << "1,0 0,1 0,2"
        << "";
    QTest::newRow("rowAloneSkipsAGapTooNarrow") << Wishes{at(0, 1), at(0, -1, 1, 2)} << "0,1 0,2"
                                                << "";
    QTest::newRow("columnAloneGetsItsNextRows")
        << Wishes{at(-1, 2), at(-1, 2, 2), at(-1, 2)} << "0,2 1,2 3,2"
        << "";
    QTest::newRow("columnAlonePassesPlacedOnes")
        << Wishes{at(1, 0, 1, 3), at(-1, 2), at(-1, 2)} << "1,0 0,2 2,2"
        << "";
    QTest::newRow("columnAloneSkipsAGapTooLow") << Wishes{at(1, 0), at(-1, 0, 2)} << "1,0 2,0"
                                                << "";
    QTest::newRow("rowAloneGoesBeforeColumnAloneBeforeNeither")
        << Wishes{at(-1, -1), at(-1, 0), at(0, -1)} << "2,0 1,0 0,0"
        << "";
    QTest::newRow("areasAreGridsOfTheirOwn")
        << Wishes{at(0, 0, 1, 1, "a"), at(0, 0, 1, 1, "b"), in("a"), in("b")}
        << "0,0@a 0,0@b 1,0@a 1,0@b"
        << "";
    QTest::newRow("noAreaIsTheFirst") << Wishes{at(-1, -1), in("b"), in("a")} << "0,0@b 1,0@b 0,0@a"
                                      << "";

    QTest::newRow("sameCell") << Wishes{at(2, 1), at(2, 1)} << "2,1 2,1"
                              << "1/0@2,1";
    QTest::newRow("neighboursDoNotOverlap")
        << Wishes{at(0, 0, 2, 2), at(0, 2), at(2, 0), at(2, 2)} << "0,0 0,2 2,0 2,2"
        << "";
    QTest::newRow("oneCellOfASpan") << Wishes{at(0, 0, 2, 2), at(1, 1)} << "0,0 1,1"
                                    << "1/0@1,1";
    QTest::newRow("cornersOfTwoSpans") << Wishes{at(0, 0, 3, 3), at(2, 2, 3, 3)} << "0,0 2,2"
                                       << "1/0@2,2";
    QTest::newRow("spanOverAPlacedOneToItsRight") << Wishes{at(0, 2), at(0, 0, 1, 3)} << "0,2 0,0"
                                                  << "1/0@0,2";
    QTest::newRow("eachPairOnce") << Wishes{at(0, 0, 4, 1), at(0, 1, 4, 1), at(1, 0, 2, 2)}
                                  << "0,0 0,1 1,0"
                                  << "2/0@1,0 2/1@1,1";
    QTest::newRow("freeCellsOfAnOverlappingOneAreItsOwn")
        << Wishes{at(0, 0), at(0, 0, 2, 2), at(1, 1)} << "0,0 0,0 1,1"
        << "1/0@0,0 2/1@1,1";
    QTest::newRow("threeOnOneCell") << Wishes{at(0, 0), at(0, 0), at(0, 0)} << "0,0 0,0 0,0"
                                    << "1/0@0,0 2/0@0,0";
    QTest::newRow("noAreaOverlapsInTheFirst")
        << Wishes{at(0, 0), at(0, 0, 1, 1, "a")} << "0,0@a 0,0@a"
        << "1/0@0,0";
}

void tst_Placement::places()
{
    QFETCH(QVector<Cells>, wishes);
    QFETCH(QString, expected);
    QFETCH(QString, overlaps);

    const Placement placement(wishes);
    QCOMPARE(placesOf(placement), expected);
    QCOMPARE(overlapsOf(placement), overlaps);
}

void tst_Placement::areasInOrderOfFirstMention()
{
    QCOMPARE(Placement({at(-1, -1), at(0, 0)}).areas(), QStringList());
    QCOMPARE(Placement({at(-1, -1), in("Motors"), in("Air"), in("Motors"), in("air")}).areas(),
             QStringList({"Motors", "Air", "air"}));
}

void tst_Placement::listedPagesComeFirst()
{
    const Placement placement({at(-1, -1), in("Motors"), in("Air")}, {"Air", "Empty"});
    QCOMPARE(placement.areas(), QStringList({"Air", "Empty", "Motors"}));
    QCOMPARE(placesOf(placement), QString("0,0@Air 0,0@Motors 1,0@Air"));
}

void tst_Placement::readsParameters()
{
    const QMap<QString, QString> params{{"widget/row", "3"},
                                        {"widget/column", " 4 "},
                                        {"widget/rowspan", "5"},
                                        {"widget/colspan", "1000"},
                                        {"widget/area", "Air"}};
    const Cells cells =
        norvo::readCells([&params](const QString& param) { return params.value(param); });
    QCOMPARE(cells.row, 3);
    QCOMPARE(cells.column, 4);
    QCOMPARE(cells.rowspan, 5);
    QCOMPARE(cells.colspan, 1000);
    QCOMPARE(cells.area, "Air");
}

void tst_Placement::textsThatAreNoPlaceCountAsNotGiven()
{
    for (const QString text : {"", "x", "-2", "1.5", "1000000", "99999999999"}) {
        const Cells cells = norvo::readCells(
            [&text](const QString& param) { return param == "widget/area" ? QString() : text; });
        QCOMPARE(cells.row, -1);
        QCOMPARE(cells.column, -1);
        QCOMPARE(cells.rowspan, 1);
        QCOMPARE(cells.colspan, 1);
    }
}

void tst_Placement::errorsOfPlacementTexts_data()
{
    QTest::addColumn<QString>("param");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("error");

    const QString position = "\"%1\" is not a whole number from 0 to 999, nor -1 for the next free"
                             " place";
    const QString span = "\"%1\" is not a whole number from 1 to 1000";
    for (const char* param : {"widget/row", "widget/column"}) {
        for (const char* good : {"0", "999", "-1", " 7 "}) {
            QTest::addRow("%s '%s'", param, good) << param << good << "";
        }
        for (const char* bad : {"-2", "1000", "1.0", "one", ""}) {
            QTest::addRow("%s '%s'", param, bad) << param << bad << position.arg(bad);
        }
    }
    for (const char* param : {"widget/rowspan", "widget/colspan"}) {
        for (const char* good : {"1", "1000"}) {
            QTest::addRow("%s '%s'", param, good) << param << good << "";
        }
        for (const char* bad : {"0", "-1", "1001", "2.5", "wide", ""}) {
            QTest::addRow("%s '%s'", param, bad) << param << bad << span.arg(bad);
        }
    }
    QTest::newRow("areasMayBeAnyText") << "widget/area"
                                       << "-5"
                                       << "";
    QTest::newRow("othersAreNotJudged") << "widget/fontSize"
                                        << "x"
                                        << "";
}

void tst_Placement::errorsOfPlacementTexts()
{
    QFETCH(QString, param);
    QFETCH(QString, value);
    QTEST(norvo::placementError(param, value), "error");
}

void tst_Placement::manyDevicesTakeNoTime_data()
{
    QTest::addColumn<Cells>("wish");
    QTest::newRow("neither") << at(-1, -1);
    QTest::newRow("row") << at(0, -1);
    QTest::newRow("column") << at(-1, 0);
    QTest::newRow("oneCell") << at(5, 5);
    QTest::newRow("neitherWithSpans") << at(-1, -1, 3, 3);
    QTest::newRow("rowWithLongSpans") << at(0, -1, 1000);
    QTest::newRow("columnWithLongSpans") << at(-1, 0, 1, 1000);
    QTest::newRow("largeSpansOnOneCell") << at(5, 5, 1000, 1000);
}

void tst_Placement::manyDevicesTakeNoTime()
{
    QFETCH(Cells, wish);
    const int count = 20000;
    const norvo::ProcessorTimer time;
    const Placement placement(QVector<Cells>(count, wish));
    QVERIFY2(time.elapsedMs() < 10000, qPrintable(QString::number(time.elapsedMs())));
    QCOMPARE(placement.overlaps().size(), wish.row == 5 ? Placement::kMaxOverlaps : 0);
}

void tst_Placement::spansOfManySizesTakeNoTime_data()
{
    QTest::addColumn<bool>("rowIsGiven");
    QTest::newRow("rows") << true;
    QTest::newRow("columns") << false;
}

void tst_Placement::spansOfManySizesTakeNoTime()
{
    QFETCH(bool, rowIsGiven);
    QVector<Cells> wishes;
    for (int i = 0; i < 16000; ++i) {
        const int line = i * 7919 % 1000;
        const int span = 1 + i * 104729 % 999;
        wishes.append(rowIsGiven ? at(line, -1, span) : at(-1, line, 1, span));
    }
    const norvo::ProcessorTimer time;
    const Placement placement(wishes);
    QVERIFY2(time.elapsedMs() < 10000, qPrintable(QString::number(time.elapsedMs())));
}

/// Against a search cell by cell, as the rules say it.
void tst_Placement::placesAreFreeOnesInOrder()
{
    QRandomGenerator random(7);
    const auto below = [&random](int bound) { return int(random.bounded(bound)); };
    for (int round = 0; round < 300; ++round) {
        QVector<Cells> wishes;
        for (int i = 0; i < 12; ++i) {
            const int kind = below(4);
            wishes.append(at(kind < 2 ? below(90) : -1, kind % 2 == 0 ? below(90) : -1,
                             1 + below(70), 1 + below(70)));
        }
        const QVector<Cells> cells = Placement(wishes).cells();
        QRegion taken;
        QHash<QPair<int, int>, int> next;
        for (int pass = 0; pass < 4; ++pass) {
            for (int i = 0; i < wishes.size(); ++i) {
                Cells wish = wishes[i];
                const bool hasRow = wish.row >= 0;
                const bool hasColumn = wish.column >= 0;
                if (pass != (hasRow ? 0 : 2) + (hasColumn ? 0 : 1)) {
                    continue;
                }
                int& from = next[{wish.row, wish.column}];
                const auto rect = [&wish, &hasRow, &hasColumn] {
                    const int width = hasRow || hasColumn ? wish.colspan : 100000;
                    return QRect(wish.column, wish.row, width, wish.rowspan);
                };
                if (pass > 0) {
                    int& moving = hasRow ? wish.column : wish.row;
                    wish.column = hasColumn ? wish.column : 0;
                    for (moving = from; taken.intersects(rect());) {
                        ++moving;
                    }
                    from = moving + (hasRow ? wish.colspan : wish.rowspan);
                }
                QCOMPARE(cells[i].row, wish.row);
                QCOMPARE(cells[i].column, wish.column);
                taken += QRect(wish.column, wish.row, wish.colspan, wish.rowspan);
            }
        }
    }
}

NORVO_GUILESS_TEST(tst_Placement)
#include "tst_Placement.moc"
