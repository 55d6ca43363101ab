// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/layout/PageGrid.h"

#include "host/window/layout/GridSpan.h"
#include "host/window/layout/PanelCell.h"

#include <QWidget>

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

constexpr int kMargin = 14;
constexpr int kSpacing = 10;

bool isAnySet(const QVector<int>& stretches, int first, int count)
{
    const auto begin = stretches.cbegin() + first;
    return std::any_of(begin, begin + count, [](int stretch) { return stretch > 0; });
}

} // namespace

PageGrid::PageGrid(QWidget* page, const QVector<int>& rowWeights, const QVector<int>& columnWeights)
    : QGridLayout(page), m_rowWeights(rowWeights), m_columnWeights(columnWeights)
{
    setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    setSpacing(kSpacing);
}

void PageGrid::setWeights(const QVector<int>& rowWeights, const QVector<int>& columnWeights)
{
    if (rowWeights != m_rowWeights || columnWeights != m_columnWeights) {
        m_rowWeights = rowWeights;
        m_columnWeights = columnWeights;
        invalidate();
    }
}

void PageGrid::place(QWidget* widget, int row, int column, int rowspan, int colspan)
{
    addChildWidget(widget);
    addItem(new PanelCell(widget), row, column, rowspan, colspan);
    // A grid never loses a line, and one without a widget counts where widgets cover several: with
    // one more than are used a page is laid out the same whatever once stood on it.
    if (rowCount() == row + rowspan) {
        setRowMinimumHeight(rowCount(), 0);
    }
    if (columnCount() == column + colspan) {
        setColumnMinimumWidth(columnCount(), 0);
    }
}

QVector<QRect> PageGrid::cards() const
{
    QVector<QRect> cards;
    for (int i = 0; i < count(); ++i) {
        const auto* const cell = static_cast<const PanelCell*>(itemAt(i));
        if (cell->parts().standsOnCard) {
            cards.append(cell->area());
        }
    }
    return cards;
}

QSize PageGrid::sizeHint() const
{
    const_cast<PageGrid*>(this)->arrange();
    return QGridLayout::sizeHint();
}

QSize PageGrid::minimumSize() const
{
    const_cast<PageGrid*>(this)->arrange();
    return QGridLayout::minimumSize();
}

bool PageGrid::hasHeightForWidth() const
{
    const_cast<PageGrid*>(this)->arrange();
    return QGridLayout::hasHeightForWidth();
}

int PageGrid::heightForWidth(int width) const
{
    const_cast<PageGrid*>(this)->arrange();
    return QGridLayout::minimumHeightForWidth(width);
}

void PageGrid::setGeometry(const QRect& area)
{
    arrange();
    const bool isNew = !m_isLaidOut || area != geometry();
    QGridLayout::setGeometry(area);
    if (isNew) {
        noteLines();
        noteCards();
        m_isLaidOut = true;
        emit arranged();
    }
}

void PageGrid::noteLines()
{
    m_rowLines.clear();
    for (int row = 0; row < rowCount(); ++row) {
        const QRect cell = cellRect(row, 0);
        m_rowLines.append({cell.top(), cell.height()});
    }
    m_columnLines.clear();
    for (int column = 0; column < columnCount(); ++column) {
        const QRect cell = cellRect(0, column);
        m_columnLines.append({cell.left(), cell.width()});
    }
}

/// Where a card has moved, Qt draws anew no more of it than its widget.
void PageGrid::noteCards()
{
    QVector<QRect> cards = this->cards();
    if (m_cards != cards) {
        m_cards = std::move(cards);
        parentWidget()->update();
    }
}

void PageGrid::invalidate()
{
    m_isArranged = false;
    m_isLaidOut = false;
    QGridLayout::invalidate();
}

/// The grid knows no stretch of a line that it does not have yet.
void PageGrid::arrange()
{
    if (m_isArranged) {
        return;
    }
    for (int i = 0; i < count(); ++i) {
        static_cast<PanelCell*>(itemAt(i))->examine();
    }
    const QVector<int> rows = rowStretches();
    for (int row = 0; row < rows.size(); ++row) {
        if ((row < rowCount() ? rowStretch(row) : 0) != rows[row]) {
            setRowStretch(row, rows[row]);
        }
    }
    const QVector<int> columns = columnStretches();
    for (int column = 0; column < columns.size(); ++column) {
        if ((column < columnCount() ? columnStretch(column) : 0) != columns[column]) {
            setColumnStretch(column, columns[column]);
        }
    }
    m_isArranged = true;
}

/// One more than there are rows: what is left goes to the last where no row wants it.
QVector<int> PageGrid::rowStretches() const
{
    int used = 0;
    for (int i = 0; i < count(); ++i) {
        const GridSpan span = GridSpan::of(*this, i);
        used = qMax(used, span.row + span.rows);
    }
    QVector<int> stretches(qMax(used + 1, rowCount()), 0);
    if (!m_rowWeights.isEmpty()) {
        std::copy_n(m_rowWeights.cbegin(), qMin(used, m_rowWeights.size()), stretches.begin());
    }
    // What stands in one row decides before what stands in several.
    for (const bool isSpanning : {false, true}) {
        for (int i = 0; i < count() && m_rowWeights.isEmpty(); ++i) {
            const GridSpan span = GridSpan::of(*this, i);
            const WidgetParts& parts = static_cast<const PanelCell*>(itemAt(i))->parts();
            if (parts.wantsHeight && (span.rows > 1) == isSpanning &&
                (!isSpanning || !isAnySet(stretches, span.row, span.rows))) {
                for (int row = span.row; row < span.row + span.rows; ++row) {
                    stretches[row] = qMax(stretches[row], qMax(1, parts.leastHeight / span.rows));
                }
            }
        }
    }
    if (!isAnySet(stretches, 0, used)) {
        stretches[used] = 1;
    }
    return stretches;
}

QVector<int> PageGrid::columnStretches() const
{
    QVector<int> stretches(columnCount(), count() == 0 ? 1 : 0);
    if (!m_columnWeights.isEmpty()) {
        std::copy_n(m_columnWeights.cbegin(), qMin(columnCount(), m_columnWeights.size()),
                    stretches.begin());
        return stretches;
    }
    for (int i = 0; i < count(); ++i) {
        const GridSpan span = GridSpan::of(*this, i);
        std::fill_n(stretches.begin() + span.column, span.columns, 1);
    }
    return stretches;
}

} // namespace norvo
