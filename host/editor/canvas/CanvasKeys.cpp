// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/CanvasKeys.h"

#include "host/editor/canvas/CanvasHand.h"
#include "host/editor/canvas/CanvasModel.h"
#include "host/editor/canvas/PageCover.h"

#include <QKeyEvent>

namespace norvo {

void CanvasKeys::watch(PageCover& cover)
{
    cover.installEventFilter(this);
}

bool CanvasKeys::eventFilter(QObject* watched, QEvent* event)
{
    auto* const cover = qobject_cast<PageCover*>(watched);
    return cover && event->type() == QEvent::KeyPress &&
           press(*cover, static_cast<QKeyEvent&>(*event));
}

bool CanvasKeys::press(const PageCover& cover, const QKeyEvent& key)
{
    switch (key.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (key.modifiers() & Qt::ControlModifier) {
            return false;
        }
        m_model.selectNext(cover.area(), key.key() == Qt::Key_Tab);
        return !m_model.view().selection.isEmpty();
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return arrow(cover, key);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return enter(cover);
    case Qt::Key_Escape:
        if (m_hand.isDragging()) {
            m_hand.cancel();
            return true;
        }
        return m_model.leave();
    default:
        return false;
    }
}

bool CanvasKeys::arrow(const PageCover& cover, const QKeyEvent& key)
{
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) {
        return false;
    }
    const int rows = (key.key() == Qt::Key_Down) - (key.key() == Qt::Key_Up);
    const int right = (key.key() == Qt::Key_Right) - (key.key() == Qt::Key_Left);
    const int columns = cover.isRightToLeft() ? -right : right;
    const CanvasView& view = m_model.view();
    if (!view.selection.isEmpty() && !m_model.isPlacing()) {
        if (key.modifiers() & Qt::ShiftModifier) {
            m_model.growSelected(rows, columns);
        } else {
            m_model.moveSelected(rows, columns);
        }
        return true;
    }
    Cells cell = view.cursor;
    if (cell.row < 0 || cell.area != cover.area()) {
        cell = {};
        cell.row = 0;
        cell.column = 0;
    } else {
        cell.row = qBound(0, cell.row + rows, Cells::kLimit - 1);
        cell.column = qBound(0, cell.column + columns, Cells::kLimit - 1);
    }
    cell.area = cover.area();
    m_model.pointAt(cell);
    return true;
}

bool CanvasKeys::enter(const PageCover& cover)
{
    const Cells cursor = m_model.view().cursor;
    if (m_model.isPlacing()) {
        if (cursor.row >= 0 && cursor.area == cover.area()) {
            m_model.put(cursor);
        }
        return true;
    }
    if (cursor.row >= 0) {
        const QString id = m_model.view().map.at(cursor.area, cursor.row, cursor.column);
        m_model.select(id.isEmpty() ? QStringList() : QStringList(id));
        return true;
    }
    if (!m_model.view().selection.isEmpty()) {
        emit opened();
        return true;
    }
    return false;
}

} // namespace norvo
