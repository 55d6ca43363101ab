// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/accessible/FocusOrder.h"

#include "MessageLog.h"
#include "TestMain.h"
#include "host/panel/plan/Placement.h"
#include "host/window/PanelPages.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

using norvo::Cells;
using norvo::orderFocus;
using norvo::PanelPages;

namespace {

QStringList tabbedThrough(QWidget& window, QWidget& first, int count)
{
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        return {"not active"};
    }
    first.setFocus();
    QStringList names;
    for (int i = 0; i < count; ++i) {
        names.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    return names;
}

template <class Control>
Control* named(const char* name)
{
    auto* const control = new Control;
    control->setObjectName(name);
    return control;
}

} // namespace

class tst_FocusOrder : public QObject
{
    Q_OBJECT

private slots:
    void tabGoesByRowAndColumn();
    void controlsOfACellStayTogether();
    void listOfADropDownIsNoStop();
    void pageOrdersItsWidgets();
};

void tst_FocusOrder::tabGoesByRowAndColumn()
{
    QWidget page;
    QGridLayout grid(&page);
    auto* const first = named<QPushButton>("upper left");
    grid.addWidget(named<QPushButton>("lower right"), 1, 1);
    grid.addWidget(named<QSpinBox>("upper right"), 0, 1);
    grid.addWidget(named<QLabel>("no control"), 0, 2);
    grid.addWidget(named<QLineEdit>("lower left"), 1, 0);
    grid.addWidget(first, 0, 0);
    orderFocus(grid);
    QCOMPARE(tabbedThrough(page, *first, 5),
             QStringList({"upper left", "upper right", "lower left", "lower right", "upper left"}));
}

void tst_FocusOrder::controlsOfACellStayTogether()
{
    QWidget page;
    QGridLayout grid(&page);
    grid.addWidget(named<QPushButton>("right"), 0, 1);
    auto* const cell = new QWidget;
    auto* const inner = new QVBoxLayout(cell);
    auto* const first = named<QPushButton>("upper");
    inner->addWidget(first);
    inner->addWidget(named<QPushButton>("lower"));
    grid.addWidget(cell, 0, 0);
    orderFocus(grid);
    QCOMPARE(tabbedThrough(page, *first, 3), QStringList({"upper", "lower", "right"}));
}

void tst_FocusOrder::listOfADropDownIsNoStop()
{
    QWidget page;
    QGridLayout grid(&page);
    auto* const cell = new QWidget;
    auto* const choice = new QComboBox(cell);
    choice->addItems({"slow", "fast"});
    QVERIFY(choice->view()); // Made when it is asked for, in a window of its own.
    grid.addWidget(cell, 0, 0);
    grid.addWidget(named<QPushButton>("right"), 0, 1);
    MessageLog log;
    orderFocus(grid);
    QCOMPARE(log.take(), QStringList());
}

void tst_FocusOrder::pageOrdersItsWidgets()
{
    PanelPages pages;
    pages.setAreas({});
    const auto place = [&pages](QWidget* widget, int row, int column) {
        Cells cells;
        cells.row = row;
        cells.column = column;
        pages.place(widget, cells);
    };
    auto* const first = named<QPushButton>("first");
    place(named<QPushButton>("third"), 1, 0);
    place(named<QPushButton>("second"), 0, 1);
    place(first, 0, 0);
    QCoreApplication::processEvents();
    QCOMPARE(tabbedThrough(pages, *first, 3), QStringList({"first", "second", "third"}));
}

NORVO_TEST(tst_FocusOrder)
#include "tst_FocusOrder.moc"
