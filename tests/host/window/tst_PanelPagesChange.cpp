// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/PanelPages.h"

#include "host/window/ErrorTile.h"
#include "host/window/layout/PageGrid.h"
#include "TestMain.h"

#include <QAbstractButton>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabWidget>
#include <QtTest>

using norvo::Cells;
using norvo::ErrorTile;
using norvo::PanelPages;

namespace {

Cells at(int row, int column, const QString& area = {})
{
    Cells cells;
    cells.row = row;
    cells.column = column;
    cells.area = area;
    return cells;
}

QPoint placeOf(const PanelPages& pages, const QString& area, QWidget& widget)
{
    const norvo::PageGrid& grid = *pages.grid(area);
    int row = -1;
    int column = -1;
    int rows = 0;
    int columns = 0;
    if (grid.indexOf(&widget) >= 0) {
        grid.getItemPosition(grid.indexOf(&widget), &row, &column, &rows, &columns);
    }
    return {column, row};
}

/// Counts what is done to a widget.
class Watch : public QObject
{
public:
    explicit Watch(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        touches += event->type() == QEvent::Hide || event->type() == QEvent::Show ||
                   event->type() == QEvent::ParentChange;
        return false;
    }

    int touches = 0;
};

} // namespace

/// What happens on pages that show a panel when the next plan of it is shown.
class tst_PanelPagesChange : public QObject
{
    Q_OBJECT

private slots:
    void whatStaysInItsCellsIsNotTouched();
    void widgetMovesToOtherCells();
    void twoWidgetsChangePlaces();
    void widgetThatWasDeletedLeavesItsCells();
    void pagesThatStayKeepTheirTabAndPlace();
    void tabsTakeANewOrder();
    void equalTileStaysAndAnotherTakesItsPlace();
    void tileGoesWithThePageOfItsArea();
    void weightsChangeAtOnce();
    void keysGrowForGloves();
    void tabKeyFollowsTheNewCells();
};

void tst_PanelPagesChange::whatStaysInItsCellsIsNotTouched()
{
    PanelPages pages;
    auto* const a = new QPushButton("a");
    auto* const b = new QPushButton("b");
    pages.setAreas({});
    pages.place(a, at(0, 0));
    pages.place(b, at(1, 0));
    pages.endPlacing();
    pages.resize(300, 300);
    pages.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pages));
    const Watch watch(*a);
    auto* const grid = pages.grid({});
    pages.setAreas({});
    pages.place(a, at(0, 0));
    pages.place(b, at(1, 1));
    pages.endPlacing();
    QCoreApplication::processEvents();
    QCOMPARE(pages.grid({}), grid);
    QCOMPARE(placeOf(pages, {}, *b), QPoint(1, 1));
    QCOMPARE(watch.touches, 0);
    QVERIFY(a->isVisible() && b->isVisible());
}

void tst_PanelPagesChange::widgetMovesToOtherCells()
{
    PanelPages pages;
    QPointer<QPushButton> a = new QPushButton;
    pages.setAreas({"One", "Two"});
    pages.place(a, at(0, 0, "One"));
    pages.endPlacing();
    pages.setAreas({"One", "Two"});
    pages.place(a, at(2, 3, "Two"));
    pages.endPlacing();
    QVERIFY(a);
    QCOMPARE(pages.grid("One")->count(), 0);
    QCOMPARE(placeOf(pages, "Two", *a), QPoint(3, 2));
    QCOMPARE(pages.areaOf(*a), QString("Two"));
}

void tst_PanelPagesChange::twoWidgetsChangePlaces()
{
    PanelPages pages;
    auto* const a = new QPushButton;
    auto* const b = new QPushButton;
    for (const bool isTurned : {false, true}) {
        pages.setAreas({});
        pages.place(a, at(isTurned ? 1 : 0, 0));
        pages.place(b, at(isTurned ? 0 : 1, 0));
        pages.endPlacing();
    }
    QCOMPARE(pages.grid({})->count(), 2);
    QCOMPARE(placeOf(pages, {}, *a), QPoint(0, 1));
    QCOMPARE(placeOf(pages, {}, *b), QPoint(0, 0));
}

void tst_PanelPagesChange::widgetThatWasDeletedLeavesItsCells()
{
    PanelPages pages;
    pages.setAreas({});
    for (int i = 0; i < 50; ++i) { // A new one may lie where an old one lay in memory.
        auto* const widget = new QPushButton;
        pages.setAreas({});
        pages.place(widget, at(0, 0));
        pages.endPlacing();
        QCOMPARE(pages.grid({})->count(), 1);
        QCOMPARE(widget->parentWidget(), pages.grid({})->parentWidget());
        delete widget;
    }
}

void tst_PanelPagesChange::pagesThatStayKeepTheirTabAndPlace()
{
    PanelPages pages;
    auto* const high = new QWidget;
    high->setMinimumHeight(3000);
    pages.setAreas({"One", "Two"});
    pages.place(high, at(0, 0, "Two"));
    pages.endPlacing();
    pages.resize(400, 300);
    pages.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pages));
    auto* const tabs = pages.findChild<QTabWidget*>();
    tabs->setCurrentIndex(1);
    auto* const scroll = qobject_cast<QScrollArea*>(tabs->currentWidget());
    QTRY_VERIFY(scroll->verticalScrollBar()->maximum() > 1000);
    scroll->verticalScrollBar()->setValue(700);
    pages.setAreas({"New", "One", "Two"});
    pages.place(high, at(0, 0, "Two"));
    pages.endPlacing();
    QCoreApplication::processEvents();
    QCOMPARE(pages.findChild<QTabWidget*>(), tabs);
    QCOMPARE(tabs->currentIndex(), 2);
    QCOMPARE(tabs->currentWidget(), scroll);
    QCOMPARE(scroll->verticalScrollBar()->value(), 700);
    QVERIFY(high->isVisible());
    QVERIFY(pages.key("Two")->isChecked());
    QTest::mouseClick(pages.key("New"), Qt::LeftButton);
    QCOMPARE(tabs->currentIndex(), 0);
}

void tst_PanelPagesChange::tabsTakeANewOrder()
{
    PanelPages pages;
    auto* const a = new QPushButton;
    pages.setAreas({"One", "Two"});
    pages.place(a, at(0, 0, "One"));
    pages.endPlacing();
    pages.setAreas({"Two", "One"});
    pages.place(a, at(0, 0, "One"));
    pages.endPlacing();
    QCOMPARE(pages.findChild<QTabWidget*>()->tabText(0), QString("Two"));
    QCOMPARE(pages.areaOf(*a), QString("One"));
    QCOMPARE(placeOf(pages, "One", *a), QPoint(0, 0));
}

void tst_PanelPagesChange::equalTileStaysAndAnotherTakesItsPlace()
{
    PanelPages pages;
    pages.setAreas({});
    pages.placeError("a", "why", at(0, 0));
    pages.placeError("b", "why", at(1, 0));
    pages.endPlacing();
    const QPointer<QWidget> a = pages.findChild<QWidget*>("a");
    const QPointer<QWidget> b = pages.findChild<QWidget*>("b");
    pages.setAreas({});
    pages.placeError("a", "why", at(0, 0));
    pages.placeError("b", "another reason", at(1, 0));
    pages.endPlacing();
    QVERIFY(a);
    QVERIFY(!b);
    QCOMPARE(pages.findChildren<ErrorTile*>().size(), 2);
    pages.setAreas({});
    pages.endPlacing();
    QVERIFY(pages.findChildren<ErrorTile*>().isEmpty());
}

void tst_PanelPagesChange::tileGoesWithThePageOfItsArea()
{
    PanelPages pages;
    pages.setAreas({"One", "Two"});
    pages.placeError("a", "why", at(0, 0, "Two"));
    pages.endPlacing();
    pages.setAreas({"One"});
    pages.placeError("a", "why", at(0, 0, "One"));
    pages.endPlacing();
    QCOMPARE(pages.findChildren<ErrorTile*>().size(), 1);
    pages.setAreas({});
    pages.placeError("a", "why", at(0, 0));
    pages.endPlacing();
    QCOMPARE(pages.findChildren<ErrorTile*>().size(), 1);
}

void tst_PanelPagesChange::weightsChangeAtOnce()
{
    PanelPages pages;
    pages.setAreas({});
    auto* const a = new QSpinBox;
    auto* const b = new QSpinBox;
    pages.place(a, at(0, 0));
    pages.place(b, at(0, 1));
    pages.endPlacing();
    pages.resize(800, 300);
    pages.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pages));
    QTRY_COMPARE(a->width(), b->width());
    norvo::PanelLook look;
    look.columns.insert({}, {3, 1});
    pages.setLook(look);
    QTRY_VERIFY(a->width() > 2 * b->width());
    pages.setLook({});
    QTRY_COMPARE(a->width(), b->width());
}

void tst_PanelPagesChange::keysGrowForGloves()
{
    PanelPages pages;
    pages.setAreas({"One"});
    const int height = pages.key("One")->parentWidget()->sizeHint().height();
    norvo::PanelLook look;
    look.touch = norvo::PanelLook::Touch::Gloves;
    pages.setLook(look);
    QVERIFY(pages.key("One")->parentWidget()->sizeHint().height() > height * 5 / 4);
}

void tst_PanelPagesChange::tabKeyFollowsTheNewCells()
{
    PanelPages pages;
    auto* const a = new QPushButton;
    auto* const b = new QPushButton;
    auto* const c = new QPushButton;
    const auto place = [&](int rowOfA, int rowOfC) {
        pages.setAreas({});
        pages.place(a, at(rowOfA, 0));
        pages.place(b, at(1, 0));
        pages.place(c, at(rowOfC, 0));
        pages.endPlacing();
        QCoreApplication::processEvents();
    };
    const QWidgetList all{a, b, c};
    const auto behind = [&all](QWidget* widget) {
        do {
            widget = widget->nextInFocusChain();
        } while (!all.contains(widget));
        return widget;
    };
    place(0, 2);
    QCOMPARE(behind(a), b);
    QCOMPARE(behind(b), c);
    place(2, 0);
    QCOMPARE(behind(c), b);
    QCOMPARE(behind(b), a);
}

NORVO_TEST(tst_PanelPagesChange)
#include "tst_PanelPagesChange.moc"
