// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/PageCover.h"

#include "host/editor/canvas/CoverPainter.h"
#include "host/window/layout/PageGrid.h"

#include <QPaintEvent>
#include <QPainter>

namespace norvo {

PageCover::PageCover(const CanvasView& view, const QString& area, PageGrid& grid)
    : QWidget(grid.parentWidget()), m_view(view), m_area(area), m_grid(grid)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_AcceptTouchEvents);
    parentWidget()->installEventFilter(this);
    connect(&grid, &PageGrid::arranged, this, [this] {
        m_lines.reset();
        update();
    });
    setGeometry(parentWidget()->rect());
    makeRoom();
    show();
    raise();
}

PageCover::~PageCover()
{
    if (hasFocus()) {
        emit focusLost();
    }
}

void PageCover::focusOutEvent(QFocusEvent* event)
{
    emit focusLost();
    QWidget::focusOutEvent(event);
}

void PageCover::makeRoom()
{
    m_room.reset();
    m_room.emplace(m_grid, m_view.target, m_view.map.rows(m_area), m_view.map.columns(m_area));
    m_lines.reset();
}

const CellLines& PageCover::lines() const
{
    if (!m_lines) {
        m_lines = CellLines::of(m_grid);
    }
    return *m_lines;
}

QRect PageCover::gutter(Qt::Orientation along) const
{
    const QRect cell = lines().rect(0, 0);
    if (along == Qt::Horizontal) {
        return {0, 0, width(), cell.top()};
    }
    return isRightToLeft() ? QRect(QPoint(cell.right() + 1, 0), rect().bottomRight())
                           : QRect(0, 0, cell.left(), height());
}

QString PageCover::deviceAt(const QPoint& place) const
{
    const Cells cell = lines().at(place);
    const QString id = m_view.map.at(m_area, cell.row, cell.column);
    return id.isEmpty() || lines().rect(m_view.map.places()[id]).contains(place) ? id : QString();
}

QRegion PageCover::marks() const
{
    return CoverPainter(m_view, m_area, lines(), rect(), palette(), font()).marks();
}

/// Whatever comes to stand on the page comes to stand below.
bool PageCover::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Resize:
        setGeometry(parentWidget()->rect());
        break;
    case QEvent::ChildPolished:
        raise();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void PageCover::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setClipRegion(event->region());
    CoverPainter(m_view, m_area, lines(), rect(), palette(), font())
        .paint(painter, event->region().boundingRect());
}

bool PageCover::focusNextPrevChild(bool next)
{
    const auto beside = [next](const QWidget* one) {
        return next ? one->nextInFocusChain() : one->previousInFocusChain();
    };
    for (QWidget* one = beside(this); one != this; one = beside(one)) {
        if (!parentWidget()->isAncestorOf(one) && one->isVisible() && one->isEnabled() &&
            (one->focusPolicy() & Qt::TabFocus) && one->window() == window()) {
            one->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}

} // namespace norvo
