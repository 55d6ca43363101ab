// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/ports/PortColumn.h"

#include "host/editor/wiring/ports/ListFont.h"
#include "host/window/look/TouchSize.h"
#include "host/window/touch/LineKeyboard.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QScroller>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

PortColumn::PortColumn(const QString& title) : m_filter(new QLineEdit), m_list(new QListWidget)
{
    m_filter->setPlaceholderText(tr("Show only what holds this text"));
    m_filter->setAccessibleName(title);
    m_filter->setMinimumHeight(TouchSize::pixels(PanelLook::Touch::Fingers, *screen()));
    new LineKeyboard(*m_filter);
    m_list->setAccessibleName(title);
    m_list->setUniformItemSizes(true);
    m_list->setAlternatingRowColors(true);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QScroller::grabGesture(m_list->viewport(), QScroller::TouchGesture);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const heading = new QLabel(title);
    setListFont(*heading);
    setListFont(*m_filter);
    layout->addWidget(heading);
    layout->addWidget(m_filter);
    layout->addWidget(m_list, 1);
    connect(m_filter, &QLineEdit::textChanged, this, &PortColumn::narrow);
    connect(m_list, &QListWidget::currentRowChanged, this, &PortColumn::currentChanged);
}

void PortColumn::setRows(const QVector<Row>& rows)
{
    const std::optional<Port> before = current();
    {
        const QSignalBlocker blocker(m_list);
        m_rows = rows;
        m_list->clear();
        const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *screen());
        const QSize size(0, std::max(target, 2 * fontMetrics().height() + 10));
        for (const Row& row : rows) {
            auto* const item = new QListWidgetItem(row.port.text() + '\n' + row.detail, m_list);
            item->setSizeHint(size);
            item->setToolTip(row.detail);
            if (row.isDim) {
                item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
            }
        }
        narrow();
    }
    if (before) {
        setCurrent(*before);
    }
    emit currentChanged();
}

void PortColumn::narrow()
{
    const QString wanted = m_filter->text().trimmed();
    for (int row = 0; row < m_list->count(); ++row) {
        m_list->item(row)->setHidden(
            !m_rows[row].port.text().contains(wanted, Qt::CaseInsensitive));
    }
}

std::optional<Port> PortColumn::current() const
{
    const int row = m_list->currentRow();
    return row < 0 ? std::nullopt : std::optional<Port>(m_rows[row].port);
}

void PortColumn::setCurrent(const Port& port)
{
    const auto found = std::find_if(m_rows.cbegin(), m_rows.cend(),
                                    [&port](const Row& row) { return row.port == port; });
    m_list->setCurrentRow(found == m_rows.cend() ? -1 : int(found - m_rows.cbegin()));
    if (found != m_rows.cend()) {
        m_list->scrollToItem(m_list->currentItem());
    }
}

} // namespace norvo
