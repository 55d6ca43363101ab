// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/editor/canvas/cells/PageRoom.h"
#include "host/window/layout/PageGrid.h"

#include <QLabel>
#include <QtTest>

using norvo::PageGrid;
using norvo::PageRoom;

Q_DECLARE_METATYPE(QMargins)

/// The room that a page makes while it is edited.
class tst_PageRoom : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void linesAreAFingerWide();
    void manyEmptyLinesShareTheRoom();
    void deviceAcrossTheEndLeavesNoLineEmpty();
    void gutterIsAtTheTopAndWhereReadingBegins_data();
    void gutterIsAtTheTopAndWhereReadingBegins();
    void pageIsAsBeforeAtTheEnd();

private:
    static constexpr int kTarget = 48;

    std::unique_ptr<QWidget> m_page;
    PageGrid* m_grid = nullptr; ///< Of the page.
};

void tst_PageRoom::init()
{
    m_page = std::make_unique<QWidget>();
    m_grid = new PageGrid(m_page.get(), {}, {});
    m_grid->setContentsMargins(7, 8, 9, 10);
    m_grid->place(new QLabel("a"), 0, 0, 1, 1);
}

void tst_PageRoom::linesAreAFingerWide()
{
    const PageRoom room(*m_grid, kTarget, 2, 3);
    for (int row = 0; row <= 2; ++row) { // One more than hold anything.
        QCOMPARE(m_grid->rowMinimumHeight(row), kTarget);
    }
    for (int column = 0; column <= 3; ++column) {
        QCOMPARE(m_grid->columnMinimumWidth(column), kTarget);
    }
}

void tst_PageRoom::manyEmptyLinesShareTheRoom()
{
    const PageRoom room(*m_grid, kTarget, 200, 1);
    QCOMPARE(m_grid->rowMinimumHeight(0), kTarget); // The device's.
    QCOMPARE(m_grid->rowMinimumHeight(100), 20 * kTarget / 200);
}

void tst_PageRoom::deviceAcrossTheEndLeavesNoLineEmpty()
{
    m_grid->place(new QLabel("b"), 1, 0, 300, 1);
    const PageRoom room(*m_grid, kTarget, 200, 1);
    QCOMPARE(m_grid->rowMinimumHeight(100), kTarget);
    QCOMPARE(m_grid->rowMinimumHeight(200), kTarget);
}

void tst_PageRoom::gutterIsAtTheTopAndWhereReadingBegins_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QMargins>("margins");
    QTest::newRow("from the left") << Qt::LeftToRight << QMargins(7 + kTarget, 8 + kTarget, 9, 10);
    QTest::newRow("from the right") << Qt::RightToLeft << QMargins(7, 8 + kTarget, 9 + kTarget, 10);
}

void tst_PageRoom::gutterIsAtTheTopAndWhereReadingBegins()
{
    QFETCH(Qt::LayoutDirection, direction);
    m_page->setLayoutDirection(direction);
    const PageRoom room(*m_grid, kTarget, 1, 1);
    QTEST(m_grid->contentsMargins(), "margins");
}

void tst_PageRoom::pageIsAsBeforeAtTheEnd()
{
    {
        const PageRoom room(*m_grid, kTarget, 2, 2);
    }
    QCOMPARE(m_grid->contentsMargins(), QMargins(7, 8, 9, 10));
    QCOMPARE(m_grid->rowMinimumHeight(1), 0);
    QCOMPARE(m_grid->columnMinimumWidth(2), 0);
}

NORVO_TEST(tst_PageRoom)

#include "tst_PageRoom.moc"
