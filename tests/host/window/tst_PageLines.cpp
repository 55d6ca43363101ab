// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/layout/PageGrid.h"

#include "TestMain.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QtTest>

using norvo::PageGrid;

class tst_PageLines : public QObject
{
    Q_OBJECT

private slots:
    void areThoseOfTheCellsThatAreSeen();
    void stayWhenAnotherWidthIsTried();
    void followTheSizeOfThePage();
    void areThoseOfAPageOnWhichMoreHasStood();

private:
    /// Where the label in the row and the column stands.
    static QRect seen(const PageGrid& grid, int row, int column)
    {
        return grid.itemAtPosition(row, column)->geometry();
    }
    static void fill(PageGrid& grid)
    {
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < 3; ++column) {
                auto* const label = new QLabel("A label of several words");
                label->setWordWrap(true); // Its height depends on its width.
                grid.place(label, row, column, 1, 1);
            }
        }
    }
    static void compare(const PageGrid& grid)
    {
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < 3; ++column) {
                const QRect cell(grid.columnLines()[column].begin, grid.rowLines()[row].begin,
                                 grid.columnLines()[column].size, grid.rowLines()[row].size);
                const QRect label = seen(grid, row, column);
                QVERIFY(cell.contains(label));
                QVERIFY((cell.center() - label.center()).manhattanLength() <= 2); // Rounded.
            }
        }
    }
};

void tst_PageLines::areThoseOfTheCellsThatAreSeen()
{
    QWidget page;
    auto* const grid = new PageGrid(&page, {1, 2}, {});
    QVERIFY(grid->rowLines().isEmpty());
    fill(*grid);
    page.resize(640, 400);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    compare(*grid);
}

void tst_PageLines::stayWhenAnotherWidthIsTried()
{
    QWidget page;
    auto* const grid = new PageGrid(&page, {1, 2}, {});
    fill(*grid);
    page.resize(640, 400);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    grid->heightForWidth(200);
    compare(*grid);
}

void tst_PageLines::followTheSizeOfThePage()
{
    QWidget page;
    auto* const grid = new PageGrid(&page, {1, 2}, {});
    fill(*grid);
    page.resize(640, 400);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    page.resize(900, 500);
    QTRY_COMPARE_WITH_TIMEOUT(grid->geometry().width(), 900, 60000);
    compare(*grid);
    grid->setContentsMargins(60, 60, 0, 0);
    grid->activate();
    compare(*grid);
    QVERIFY(grid->columnLines().first().begin >= 60);
}

void tst_PageLines::areThoseOfAPageOnWhichMoreHasStood()
{
    const auto layOut = [](QWidget& page, bool hasMoreStood) {
        auto* const grid = new PageGrid(&page, {}, {});
        const QScopedPointer<QLabel> passing(new QLabel("Gone soon"));
        if (hasMoreStood) {
            grid->place(passing.data(), 3, 3, 1, 1);
            grid->activate();
            grid->removeWidget(passing.data());
        }
        auto* const log = new QPlainTextEdit; // Across all rows, so that they are of one device.
        log->setMinimumHeight(150);
        grid->place(log, 0, 0, 2, 1);
        grid->place(new QLabel("Below"), 2, 0, 1, 1);
        page.resize(640, 400);
        page.show();
        return grid;
    };
    QWidget one;
    QWidget other;
    const PageGrid& start = *layOut(one, false);
    const PageGrid& used = *layOut(other, true);
    QVERIFY(QTest::qWaitForWindowExposed(&one));
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(used.itemAt(i)->widget()->geometry(), start.itemAt(i)->widget()->geometry());
    }
    QCOMPARE(other.minimumSizeHint(), one.minimumSizeHint());
}

NORVO_TEST(tst_PageLines)
#include "tst_PageLines.moc"
