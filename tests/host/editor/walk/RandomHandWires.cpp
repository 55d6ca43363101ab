// SPDX-License-Identifier: GPL-3.0-or-later

#include "RandomHand.h"

#include "host/editor/wiring/ConnectionSheet.h"
#include "host/editor/wiring/ConnectionTable.h"
#include "host/editor/wiring/DeviceShelf.h"
#include "host/editor/wiring/WireCanvas.h"

#include <QComboBox>
#include <QListWidget>
#include <QTableWidget>

using norvo::WireCanvas;

void RandomHand::tapDevice(const QString& id)
{
    auto* const canvas = m_editor.shown<WireCanvas>();
    if (canvas->scene().isOnPage(id)) {
        tap(canvas, canvas->scene().deviceRect(id).center());
    } else {
        norvo::DeviceShelf& shelf = canvas->shelf();
        shelf.showDevice(id);
        tap(shelf.viewport(), shelf.itemRect(id).center() - shelf.viewport()->pos());
    }
}

/// One of the rows that are seen, by a tap.
void RandomHand::pickFrom(QListWidget* list)
{
    QList<QListWidgetItem*> items;
    for (int row = 0; row < list->count(); ++row) {
        if (!list->isRowHidden(row)) {
            items.append(list->item(row));
        }
    }
    if (QListWidgetItem* const item = anyOf(items)) {
        list->scrollToItem(item);
        tap(list->viewport(), list->visualItemRect(item).center());
    }
}

QString RandomHand::wire()
{
    m_editor.openPane("wires");
    auto* const canvas = m_editor.shown<WireCanvas>();
    const QStringList devices = canvas->scene().devices();
    if (devices.isEmpty()) {
        return "nothing to wire";
    }
    const QString from = anyOf(devices);
    tapDevice(from);
    for (int tries = 0; tries < 2; ++tries) {
        LiveEditor::click(anyOf(canvas->findChildren<QPushButton*>()));
        if (auto* const list = m_editor.shown<QListWidget>("pick")) {
            pickFrom(list);
        }
        tapDevice(anyOf(devices));
    }
    if (auto* const list = m_editor.shown<QListWidget>("pick")) {
        pickFrom(list);
    }
    if (oneIn(2)) {
        QTest::keyClick(canvas, Qt::Key_Escape);
    }
    return "wire " + from;
}

QString RandomHand::removeLine()
{
    m_editor.openPane("wires");
    auto* const canvas = m_editor.shown<WireCanvas>();
    canvas->setFocus();
    for (int i = below(3); i >= 0; --i) {
        QTest::keyClick(canvas, oneIn(2) ? Qt::Key_Down : Qt::Key_Up);
    }
    QTest::keyClick(canvas, Qt::Key_Delete);
    LiveEditor::settle();
    return "remove a line";
}

QString RandomHand::useTable()
{
    m_editor.openPane("wires");
    auto* const table = m_editor.shown<norvo::ConnectionTable>();
    auto* const rows = table->findChild<QTableWidget*>("connections");
    if (rows->rowCount() > 0) {
        const auto* const item = rows->item(below(rows->rowCount()), 0);
        rows->scrollToItem(item);
        tap(rows->viewport(), rows->visualItemRect(item).center());
    }
    if (oneIn(4)) {
        LiveEditor::click(table->findChild<QPushButton*>("removeChosenConnection"));
        return "remove a connection";
    }
    LiveEditor::click(
        table->findChild<QPushButton*>(oneIn(2) ? "addConnection" : "changeConnection"));
    return fillSheet();
}

QString RandomHand::fillSheet()
{
    auto* const sheet = m_editor.shown<norvo::ConnectionSheet>();
    if (!sheet) {
        return "no connection to change";
    }
    for (const char* const side : {"outputs", "inputs"}) {
        if (oneIn(3)) {
            continue;
        }
        pickFrom(sheet->findChild<QWidget*>(side)->findChild<QListWidget*>());
    }
    auto* const choices = sheet->findChild<QComboBox*>("choices");
    if (choices->isVisible() && oneIn(2)) {
        QTest::keyClick(choices, Qt::Key_Down);
    }
    LiveEditor::click(sheet->findChild<QPushButton*>("connect"));
    return "a connection by the sheet";
}
