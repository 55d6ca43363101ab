// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/PickSheet.h"

#include "host/window/look/TouchSize.h"

#include <QListWidget>
#include <QScreen>
#include <QScroller>
#include <QVBoxLayout>

namespace norvo {

PickSheet::PickSheet(QWidget& opener, const QString& title, const QVector<Row>& rows)
    : Sheet(opener, title), m_rows(rows)
{
    auto* const list = new QListWidget;
    list->setObjectName("pick");
    list->setWordWrap(true);
    list->setAlternatingRowColors(true);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    QScroller::grabGesture(list->viewport(), QScroller::TouchGesture);
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *screen());
    for (const Row& row : rows) {
        const QString second = row.whyNot.isEmpty() ? row.detail : row.whyNot;
        auto* const item =
            new QListWidgetItem(second.isEmpty() ? row.text : row.text + '\n' + second, list);
        item->setSizeHint({0, std::max(target, 3 * fontMetrics().height())});
        if (!row.whyNot.isEmpty()) {
            item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
        }
    }
    content().addWidget(list, 1);
    const auto pick = [this, list] {
        const int row = list->currentRow();
        if (row >= 0 && m_rows[row].whyNot.isEmpty()) {
            list->disconnect(this); // A click may also be an activation.
            accept();
            emit picked(row);
        }
    };
    connect(list, &QListWidget::itemClicked, this, pick);
    connect(list, &QListWidget::itemActivated, this, pick);
    list->setCurrentRow(0);
    list->setFocus();
}

} // namespace norvo
