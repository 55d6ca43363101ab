// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/layout/CardPage.h"

#include "host/window/layout/PageGrid.h"
#include "host/window/layout/PanelCell.h"

#include <QPaintEvent>
#include <QPainter>

namespace norvo {

namespace {

constexpr int kRadius = 10;

} // namespace

void CardPage::paintEvent(QPaintEvent* event)
{
    const auto* const grid = qobject_cast<const PageGrid*>(layout());
    if (!grid) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().alternateBase());
    for (const PanelCell* cell : grid->cells()) {
        if (cell->parts().standsOnCard && event->rect().intersects(cell->area())) {
            painter.drawRoundedRect(cell->area(), kRadius, kRadius);
        }
    }
}

} // namespace norvo
