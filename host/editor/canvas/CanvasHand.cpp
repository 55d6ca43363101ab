// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/CanvasHand.h"

#include "host/editor/EditSession.h"
#include "host/editor/canvas/CanvasModel.h"
#include "host/editor/canvas/cells/Handles.h"
#include "host/editor/canvas/PageCover.h"
#include "host/editor/canvas/PageCovers.h"
#include "host/window/PanelPages.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QTouchEvent>

namespace norvo {

namespace {

constexpr int kEdgePixels = 40; // from the edge of what is seen, where a drag scrolls

QScrollArea* scrollAround(const QWidget& widget, const QPoint& distance)
{
    for (QWidget* around = widget.parentWidget(); around; around = around->parentWidget()) {
        auto* const area = qobject_cast<QScrollArea*>(around);
        const bool canScroll =
            area && ((distance.x() != 0 && area->horizontalScrollBar()->maximum() > 0) ||
                     (distance.y() != 0 && area->verticalScrollBar()->maximum() > 0));
        if (canScroll) {
            return area;
        }
    }
    return nullptr;
}

} // namespace

CanvasHand::CanvasHand(CanvasModel& model, PageCovers& covers) : m_model(model), m_covers(covers)
{
    m_turn.setSingleShot(true);
    m_turn.setInterval(kTurnMs);
    connect(&m_turn, &QTimer::timeout, this, [this] { m_covers.turnTo(m_turnTo); });
    connect(&model.session(), &EditSession::changed, this, &CanvasHand::cancel);
}

void CanvasHand::watch(PageCover& cover)
{
    cover.installEventFilter(this);
}

bool CanvasHand::eventFilter(QObject* watched, QEvent* event)
{
    auto* const cover = qobject_cast<PageCover*>(watched);
    if (!cover) {
        return m_cover && watched->isWidgetType() &&
               elsewhere(static_cast<QWidget&>(*watched), *event);
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        event->accept();
        return mouse(*cover, static_cast<QMouseEvent&>(*event));
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        event->accept(); // So that it does not come again as the mouse.
        return touch(*cover, static_cast<QTouchEvent&>(*event));
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return dragIn(*cover, static_cast<QDropEvent&>(*event));
    case QEvent::DragLeave:
    case QEvent::Leave:
        if (!isDragging() && m_model.view().cursor.row < 0) {
            m_model.hideGhost();
        }
        return false;
    default:
        return false;
    }
}

/// A drag goes on over the tabs, and over a page that was turned to.
bool CanvasHand::elsewhere(QWidget& widget, const QEvent& event)
{
    PanelPages& pages = m_model.session().live().pages();
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    if (!pages.isAncestorOf(&widget)) {
        return false;
    }
    if (event.type() == QEvent::MouseMove) {
        move(widget.mapTo(&pages, mouse.pos()), mouse.globalPos());
        return true;
    }
    if (event.type() == QEvent::MouseButtonRelease) {
        release();
        return true;
    }
    return false;
}

bool CanvasHand::mouse(PageCover& cover, const QMouseEvent& event)
{
    if (event.type() == QEvent::MouseMove) {
        if (event.buttons() & Qt::LeftButton) {
            move(cover.mapTo(&m_model.session().live().pages(), event.pos()), event.globalPos());
        } else {
            m_model.hover(cellAt(cover, event.pos()));
        }
    } else if (event.button() == Qt::LeftButton) {
        if (event.type() == QEvent::MouseButtonRelease) {
            release();
        } else {
            m_isFinger = false;
            m_last = event.globalPos();
            press(cover, event.pos(), event.modifiers());
        }
        if (event.type() == QEvent::MouseButtonDblClick && !cover.deviceAt(event.pos()).isEmpty()) {
            emit opened();
        }
    }
    return true;
}

bool CanvasHand::touch(PageCover& cover, const QTouchEvent& event)
{
    const QList<QTouchEvent::TouchPoint>& points = event.touchPoints();
    if (event.type() == QEvent::TouchCancel || points.isEmpty()) {
        cancel();
        return true;
    }
    const QPoint place = points[0].pos().toPoint();
    const QPoint onScreen = points[0].screenPos().toPoint();
    if (event.type() == QEvent::TouchBegin) {
        m_isFinger = true;
        m_last = onScreen;
        press(cover, place, event.modifiers());
    }
    if (points.size() > 1 && m_drag != Drag::Scroll) {
        cancel();
        m_cover = &cover;
        m_drag = Drag::Scroll;
        m_last = onScreen;
    }
    if (event.type() == QEvent::TouchEnd) {
        release();
    } else if (event.type() == QEvent::TouchUpdate) {
        move(cover.mapTo(&m_model.session().live().pages(), place), onScreen);
    }
    return true;
}

bool CanvasHand::dragIn(PageCover& cover, QDropEvent& event)
{
    if (!event.mimeData()->hasFormat(kTypeMime)) {
        return false;
    }
    const Cells cell = cellAt(cover, event.pos());
    if (event.type() == QEvent::Drop) {
        m_model.place(QString::fromUtf8(event.mimeData()->data(kTypeMime)), cell);
    } else {
        m_model.showGhost({{QString(), cell}});
    }
    event.acceptProposedAction();
    return true;
}

Cells CanvasHand::cellAt(const PageCover& cover, const QPoint& place) const
{
    Cells cell = cover.lines().at(place);
    cell.area = cover.area();
    return cell;
}

void CanvasHand::press(PageCover& cover, const QPoint& place, Qt::KeyboardModifiers modifiers)
{
    cover.setFocus(Qt::MouseFocusReason);
    emit pressed();
    const CanvasView& view = m_model.view();
    m_cover = &cover;
    m_start = place;
    m_startCell = cellAt(cover, place);
    m_modifiers = modifiers;
    m_drag = Drag::None;
    m_edges = {};
    const QString only = view.only();
    const Cells cells = view.map.places().value(only);
    if (cells.row >= 0 && cells.area == cover.area() && !view.fixed.contains(only)) {
        m_edges = Handles(cover.lines().rect(cells), view.target).at(place);
    }
    qApp->installEventFilter(this);
}

void CanvasHand::move(const QPoint& inPages, const QPoint& onScreen)
{
    PageCover* const shown = m_covers.shown();
    if (!m_cover || !shown) {
        return;
    }
    PanelPages& pages = m_model.session().live().pages();
    const QPoint place = shown->mapFrom(&pages, inPages);
    if (m_drag == Drag::None &&
        (place - m_start).manhattanLength() >= QApplication::startDragDistance()) {
        begin();
    }
    if (m_drag == Drag::Scroll) {
        scroll(onScreen - m_last);
    } else if (m_drag != Drag::None) {
        drag(*shown, place);
    }
    m_last = onScreen;
    const QString over = m_drag == Drag::Move ? m_covers.keyAt(inPages) : QString();
    if (over.isEmpty() || over == shown->area()) {
        m_turn.stop();
    } else if (!m_turn.isActive() || over != m_turnTo) {
        m_turnTo = over;
        m_turn.start();
    }
}

void CanvasHand::begin()
{
    const QString id = m_cover->deviceAt(m_start);
    if (m_model.isPlacing()) {
        return; // It is a tap, however far.
    }
    if (m_edges) {
        m_drag = Drag::Resize;
    } else if (id.isEmpty()) {
        m_drag = m_isFinger ? Drag::Scroll : Drag::Band;
    } else {
        if (!m_model.view().selection.contains(id)) {
            m_model.select({id}, m_modifiers & (Qt::ControlModifier | Qt::ShiftModifier));
        }
        if (m_model.report(m_model.edits().whyFixed(m_model.view().selection))) {
            m_drag = Drag::Move;
        } else {
            end();
        }
    }
}

void CanvasHand::drag(PageCover& cover, const QPoint& place)
{
    const Cells cell = cellAt(cover, place);
    if (m_drag == Drag::Band) {
        m_model.setBand(cover.area(), QRect(m_start, place).normalized());
    } else if (m_drag == Drag::Resize) {
        resizeTo(cell);
    } else if (m_covers.keyAt(cover.mapTo(&m_model.session().live().pages(), place)).isEmpty()) {
        m_model.showGhost(m_model.view().map.moved(m_model.view().selection, cell.area,
                                                   cell.row - m_startCell.row,
                                                   cell.column - m_startCell.column));
    }
    if (QScrollArea* const around = scrollAround(cover, {1, 1})) {
        const QPoint inside = cover.mapTo(around->widget(), place);
        around->ensureVisible(inside.x(), inside.y(), kEdgePixels, kEdgePixels);
    }
}

void CanvasHand::resizeTo(const Cells& cell)
{
    const QString id = m_model.view().only();
    Cells cells = m_model.view().map.places().value(id);
    const bool isMirrored = m_cover && m_cover->isRightToLeft();
    const int lastRow = cells.row + cells.rowspan - 1;
    const int lastColumn = cells.column + cells.colspan - 1;
    if (m_edges & Qt::TopEdge) {
        cells.row = std::min(cell.row, lastRow);
        cells.rowspan = lastRow - cells.row + 1;
    } else if (m_edges & Qt::BottomEdge) {
        cells.rowspan = std::max(cell.row, cells.row) - cells.row + 1;
    }
    if (m_edges & (isMirrored ? Qt::RightEdge : Qt::LeftEdge)) {
        cells.column = std::min(cell.column, lastColumn);
        cells.colspan = lastColumn - cells.column + 1;
    } else if (m_edges & (isMirrored ? Qt::LeftEdge : Qt::RightEdge)) {
        cells.colspan = std::max(cell.column, cells.column) - cells.column + 1;
    }
    m_model.showGhost({{id, cells}});
}

void CanvasHand::scroll(const QPoint& distance)
{
    if (const QScrollArea* const around = scrollAround(*m_cover, distance)) {
        QScrollBar* const across = around->horizontalScrollBar();
        QScrollBar* const along = around->verticalScrollBar();
        across->setValue(across->value() - distance.x());
        along->setValue(along->value() - distance.y());
    }
}

void CanvasHand::release()
{
    const Drag drag = m_drag;
    const QPointer<PageCover> cover = m_cover;
    end();
    if (!cover) {
        return;
    }
    if (drag == Drag::None) {
        m_cover = cover;
        tap();
        m_cover.clear();
    } else if (drag == Drag::Band) {
        const CanvasView& view = m_model.view();
        QStringList caught;
        for (const QString& id : view.map.on(cover->area())) {
            const bool isCaught = cover->lines().rect(view.map.places()[id]).intersects(view.band);
            if (isCaught && !(m_modifiers && view.selection.contains(id))) {
                caught.append(id);
            }
        }
        m_model.setBand({}, {});
        m_model.select(caught, m_modifiers & (Qt::ControlModifier | Qt::ShiftModifier));
    } else if (drag == Drag::Move || drag == Drag::Resize) {
        m_model.drop();
    }
}

void CanvasHand::tap()
{
    const Cells cell = cellAt(*m_cover, m_start);
    const bool isOfRows = m_cover->gutter(Qt::Vertical).contains(m_start);
    if (m_model.isPlacing()) {
        m_model.put(cell);
    } else if (isOfRows || m_cover->gutter(Qt::Horizontal).contains(m_start)) {
        emit gutterTapped(isOfRows ? Qt::Vertical : Qt::Horizontal,
                          isOfRows ? cell.row : cell.column);
    } else {
        const QString id = m_cover->deviceAt(m_start);
        const bool isAdded = m_modifiers & (Qt::ControlModifier | Qt::ShiftModifier);
        if (id.isEmpty()) {
            m_model.select({}, isAdded);
            m_model.pointAt(cell);
        } else {
            m_model.select({id}, isAdded);
            m_model.report(m_model.edits().whyFixed({id}));
        }
    }
}

void CanvasHand::end()
{
    qApp->removeEventFilter(this);
    m_turn.stop();
    m_cover.clear();
    m_drag = Drag::None;
}

void CanvasHand::cancel()
{
    const Drag drag = m_drag;
    end();
    if (drag == Drag::Move || drag == Drag::Resize) {
        m_model.hideGhost();
    } else if (drag == Drag::Band) {
        m_model.setBand({}, {});
    }
}

} // namespace norvo
