// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/CoverPainter.h"

#include "host/editor/canvas/cells/Handles.h"
#include "host/window/look/Theme.h"

#include <QFontMetrics>
#include <QPainter>

namespace norvo {

namespace {

constexpr int kFrame = 3;          // pixels, of a frame around what is selected
constexpr int kAround = 8;         // pixels that marks reach beyond the cells
constexpr int kFewRects = 32;      // above which one large region is faster
constexpr double kFaint = 0.35;    // of lines between cells
constexpr double kGhostFill = 0.3; // of what would land somewhere

QColor faded(QColor colour, double alpha)
{
    colour.setAlphaF(alpha);
    return colour;
}

QRect blockOf(const Cells& cells)
{
    return {cells.column, cells.row, cells.colspan, cells.rowspan};
}

} // namespace

CoverPainter::CoverPainter(const CanvasView& view, const QString& area, const CellLines& lines,
                           const QRect& page, const QPalette& palette, const QFont& font)
    : m_view(view), m_area(area), m_lines(lines), m_page(page), m_palette(palette), m_font(font)
{
    m_font.setBold(true);
}

void CoverPainter::paint(QPainter& painter, const QRect& exposed) const
{
    painter.setFont(m_font);
    const Cells seen = m_lines.within(exposed);
    gutter(painter, seen);
    cells(painter, seen);
    devices(painter, exposed);
    const Cells& cursor = m_view.cursor;
    if (cursor.row >= 0 && cursor.area == m_area) {
        doubleFrame(painter, m_lines.rect(cursor), m_palette.color(QPalette::Highlight),
                    Qt::DashLine);
    }
    ghost(painter, exposed);
    if (m_view.bandArea == m_area && m_view.band.isValid()) {
        const QColor colour = m_palette.color(QPalette::Highlight);
        painter.fillRect(m_view.band, faded(colour, kGhostFill));
        doubleFrame(painter, m_view.band, colour, Qt::DotLine);
    }
}

/// The numbers that the file gives to rows and columns.
void CoverPainter::gutter(QPainter& painter, const Cells& seen) const
{
    const QRect firstCell = m_lines.rect(0, 0);
    const int target = m_view.target;
    const bool isMirrored = m_lines.rect(0, 1).left() < firstCell.left();
    const QColor ground = m_palette.color(QPalette::AlternateBase);
    const auto number = [&](const QRect& place, int value) {
        painter.setPen(QPen(faded(m_palette.color(QPalette::WindowText), kFaint), 1));
        painter.setBrush(ground);
        painter.drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
        painter.setPen(m_palette.color(QPalette::WindowText));
        painter.drawText(place, Qt::AlignCenter, QString::number(value));
    };
    const int left = isMirrored ? firstCell.right() + kAround : firstCell.left() - target;
    const int end = std::min(seen.row + seen.rowspan, m_lines.rows());
    for (int row = seen.row; row < end; ++row) {
        const QRect cell = m_lines.rect(row, 0);
        number({left, cell.top(), target - kAround, cell.height()}, row);
    }
    const int lastColumn = std::min(seen.column + seen.colspan, m_lines.columns());
    for (int column = seen.column; column < lastColumn; ++column) {
        const QRect cell = m_lines.rect(0, column);
        number({cell.left(), firstCell.top() - target, cell.width(), target - kAround}, column);
    }
}

void CoverPainter::cells(QPainter& painter, const Cells& seen) const
{
    const QRect block = blockOf(seen);
    QSet<QPair<int, int>> taken;
    for (const Cells& one : m_view.map.places()) {
        const QRect shared = one.area == m_area ? blockOf(one) & block : QRect();
        for (int row = shared.top(); row <= shared.bottom(); ++row) {
            for (int column = shared.left(); column <= shared.right(); ++column) {
                taken.insert({row, column});
            }
        }
    }
    painter.setPen(QPen(faded(m_palette.color(QPalette::WindowText), kFaint), 1, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    const int endOfRows = std::min(block.bottom() + 1, m_lines.rows());
    const int endOfColumns = std::min(block.right() + 1, m_lines.columns());
    for (int row = block.top(); row < endOfRows; ++row) {
        for (int column = block.left(); column < endOfColumns; ++column) {
            if (!taken.contains({row, column})) {
                painter.drawRect(m_lines.rect(row, column).adjusted(0, 0, -1, -1));
            }
        }
    }
}

void CoverPainter::devices(QPainter& painter, const QRect& exposed) const
{
    const CellMap::Places& places = m_view.map.places();
    const QRect reached = exposed.adjusted(-kAround, -kAround, kAround, kAround);
    const QColor line = m_palette.color(QPalette::WindowText);
    for (auto one = places.cbegin(); one != places.cend(); ++one) {
        const QRect frame = one->area == m_area ? m_lines.rect(*one) : QRect();
        if (!frame.intersects(reached)) {
            continue;
        }
        const bool isFixed = m_view.fixed.contains(one.key());
        if (isFixed) {
            painter.fillRect(frame, QBrush(faded(line, kFaint), Qt::BDiagPattern));
        }
        painter.setPen(QPen(faded(line, 2 * kFaint), 1, isFixed ? Qt::DotLine : Qt::SolidLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(frame.adjusted(0, 0, -1, -1));
    }
    for (const QString& id : m_view.selection) { // Over all of the others.
        const Cells cells = places.value(id);
        const QRect frame = cells.row >= 0 && cells.area == m_area ? m_lines.rect(cells) : QRect();
        if ((frame | chipRect(frame, id)).intersects(reached) && frame.isValid()) {
            selected(painter, id, frame);
        }
    }
}

void CoverPainter::selected(QPainter& painter, const QString& id, const QRect& frame) const
{
    const QColor colour = m_palette.color(QPalette::Highlight);
    doubleFrame(painter, frame, colour, Qt::SolidLine);
    chip(painter, chipRect(frame, id), id, colour);
    if (id != m_view.only() || m_view.fixed.contains(id)) {
        return;
    }
    painter.setPen(QPen(m_palette.color(QPalette::Base), 2));
    painter.setBrush(colour);
    for (const QRect& handle : Handles(frame, m_view.target).drawn()) {
        painter.drawRect(handle);
    }
}

/// What may not land is crossed out, and says why.
void CoverPainter::ghost(QPainter& painter, const QRect& exposed) const
{
    if (!m_view.ghost) {
        return;
    }
    const bool isRefused = !m_view.ghost->refusal.isEmpty();
    const QColor colour =
        isRefused ? Theme::faultOn(m_palette) : m_palette.color(QPalette::Highlight);
    QRect around;
    for (const Cells& cells : m_view.ghost->cells) {
        if (cells.area != m_area) {
            continue;
        }
        const QRect frame = m_lines.rect(cells);
        around |= frame;
        if (!frame.adjusted(-kAround, -kAround, kAround, kAround).intersects(exposed)) {
            continue;
        }
        painter.fillRect(frame, faded(colour, kGhostFill));
        if (isRefused) {
            painter.fillRect(frame, QBrush(colour, Qt::DiagCrossPattern));
        }
        doubleFrame(painter, frame, colour, isRefused ? Qt::DashLine : Qt::SolidLine);
    }
    if (isRefused && around.isValid()) {
        chip(painter, chipRect(around, m_view.ghost->refusal), m_view.ghost->refusal, colour);
    }
}

/// Two lines, so that it is seen on any ground.
void CoverPainter::doubleFrame(QPainter& painter, const QRect& rect, const QColor& colour,
                               int style) const
{
    const QRect frame = rect.adjusted(1, 1, -2, -2);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(m_palette.color(QPalette::Base), kFrame + 3));
    painter.drawRect(frame);
    painter.setPen(QPen(colour, kFrame, Qt::PenStyle(style)));
    painter.drawRect(frame);
}

void CoverPainter::chip(QPainter& painter, const QRect& rect, const QString& text,
                        const QColor& colour) const
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(rect, 4, 4);
    const bool isMark = colour == m_palette.color(QPalette::Highlight);
    painter.setPen(m_palette.color(isMark ? QPalette::HighlightedText : QPalette::Base));
    painter.drawText(rect, Qt::AlignCenter,
                     QFontMetrics(m_font).elidedText(text, Qt::ElideMiddle, rect.width() - 8));
}

/// Above the frame, beside the handle of its corner, and on the page.
QRect CoverPainter::chipRect(const QRect& frame, const QString& text) const
{
    const QFontMetrics metrics(m_font);
    const int width = std::min(metrics.horizontalAdvance(text) + 16, m_page.width());
    const int height = metrics.height() + 4;
    QRect rect(frame.left() + kAround + 2, frame.top() - height - 1, width, height);
    rect.moveLeft(qBound(0, rect.left(), m_page.width() - width));
    rect.moveTop(std::max(0, rect.top()));
    return rect;
}

QRegion CoverPainter::marks() const
{
    QVector<QRect> rects;
    const auto add = [&](const Cells& cells, const QString& text) {
        if (cells.row >= 0 && cells.area == m_area) {
            const QRect frame = m_lines.rect(cells);
            rects.append(frame.adjusted(-kAround, -kAround, kAround, kAround));
            if (!text.isEmpty()) {
                rects.append(chipRect(frame, text));
            }
        }
    };
    for (const QString& id : m_view.selection) {
        add(m_view.map.places().value(id), id);
    }
    if (m_view.ghost) {
        CellMap::Places here;
        for (auto one = m_view.ghost->cells.cbegin(); one != m_view.ghost->cells.cend(); ++one) {
            add(*one, {});
            if (one->area == m_area) {
                here.insert(one.key(), *one);
            }
        }
        if (!here.isEmpty()) {
            add(CellMap::block(here), m_view.ghost->refusal);
        }
    }
    add(m_view.cursor, {});
    if (m_view.bandArea == m_area && m_view.band.isValid()) {
        rects.append(m_view.band.adjusted(-kAround, -kAround, kAround, kAround));
    }
    QRegion region;
    QRect whole;
    for (const QRect& rect : rects) {
        whole |= rect;
        if (rects.size() <= kFewRects) {
            region += rect;
        }
    }
    return rects.size() <= kFewRects ? region : QRegion(whole);
}

} // namespace norvo
