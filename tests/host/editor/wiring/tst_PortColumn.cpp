// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/editor/wiring/PickSheet.h"
#include "host/editor/wiring/ports/PortColumn.h"
#include "host/window/look/TouchSize.h"

#include <QLineEdit>
#include <QListWidget>
#include <QtTest>

using norvo::PickSheet;
using norvo::Port;
using norvo::PortColumn;

/// Lists to choose a port, or one thing, from.
class tst_PortColumn : public QObject
{
    Q_OBJECT

private slots:
    void rowIsAFingerHighAndHoldsTwoLines_data();
    void rowIsAFingerHighAndHoldsTwoLines();
    void rowsAreAsWideAsTheList();
    void typingNarrowsTheList();
    void currentPortStaysAmongOtherRows();
    void sheetHasRowsForFingers();
    void sheetTakesNoDimRow();

private:
    static PortColumn::Row row(const QString& name, bool isDim = false)
    {
        return {{"device", name, true, {name + "(double)"}, {}}, "number", isDim};
    }
    static int target(const QWidget& widget)
    {
        return norvo::TouchSize::pixels(norvo::PanelLook::Touch::Fingers, widget);
    }
};

void tst_PortColumn::rowIsAFingerHighAndHoldsTwoLines_data()
{
    QTest::addColumn<int>("points");
    QTest::newRow("small letters") << 6;
    QTest::newRow("large letters") << 40;
}

void tst_PortColumn::rowIsAFingerHighAndHoldsTwoLines()
{
    QFETCH(int, points);
    PortColumn column("Outputs");
    QFont font = column.font();
    font.setPointSize(points);
    column.setFont(font);
    column.setRows({row("a")});
    const int height = column.findChild<QListWidget*>()->item(0)->sizeHint().height();
    QVERIFY(height >= target(column));
    QVERIFY(height >= 2 * column.fontMetrics().height());
}

void tst_PortColumn::rowsAreAsWideAsTheList()
{
    PortColumn column("Outputs");
    column.setRows({row("a")});
    QCOMPARE(column.findChild<QListWidget*>()->item(0)->sizeHint().width(), 0);
}

void tst_PortColumn::typingNarrowsTheList()
{
    PortColumn column("Outputs");
    column.setRows({row("speed"), row("level")});
    QTest::keyClicks(column.findChild<QLineEdit*>(), " LEV ");
    const auto* const list = column.findChild<QListWidget*>();
    QVERIFY(list->item(0)->isHidden());
    QVERIFY(!list->item(1)->isHidden());
}

void tst_PortColumn::currentPortStaysAmongOtherRows()
{
    PortColumn column("Outputs");
    column.setRows({row("speed"), row("level")});
    column.setCurrent(row("level").port);
    column.setRows({row("level"), row("speed"), row("new")});
    QCOMPARE(column.current()->name, QString("level"));
    column.setRows({row("speed")});
    QVERIFY(!column.current());
}

void tst_PortColumn::sheetHasRowsForFingers()
{
    QWidget opener;
    opener.resize(800, 480);
    opener.show();
    PickSheet sheet(opener, "Pick", {{"a", "", ""}, {"b", "", "It does not fit."}});
    const auto* const list = sheet.findChild<QListWidget*>("pick");
    QVERIFY(list->item(0)->sizeHint().height() >= target(sheet));
    QVERIFY(list->alternatingRowColors());
    QVERIFY(list->wordWrap());
    QCOMPARE(list->item(1)->text(), QString("b\nIt does not fit."));
}

void tst_PortColumn::sheetTakesNoDimRow()
{
    QWidget opener;
    opener.resize(800, 480);
    opener.show();
    PickSheet sheet(opener, "Pick", {{"a", "", "It does not fit."}, {"b", "", ""}});
    const QSignalSpy picked(&sheet, &PickSheet::picked);
    auto* const list = sheet.findChild<QListWidget*>("pick");
    list->setCurrentRow(0);
    emit list->itemActivated(list->item(0));
    QCOMPARE(picked.size(), 0);
    list->setCurrentRow(1);
    emit list->itemActivated(list->item(1));
    QCOMPARE(picked.size(), 1);
    QCOMPARE(picked.first().first().toInt(), 1);
}

NORVO_TEST(tst_PortColumn)

#include "tst_PortColumn.moc"
