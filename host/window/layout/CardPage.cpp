// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/layout/CardPage.h"

#include "host/window/layout/PageGrid.h"

#include <QPaintEvent>
#include <QPainter>

namespace norvo {

namespace {

constexpr int kRadius = 10;

/// Whether a part of a card has none of its round corners.
bool isStraight(const QRegion& part, const QRect& card)
{
    const QRegion straight =
        QRegion(card.adjusted(kRadius, 0, -kRadius, 0)) + card.adjusted(0, kRadius, 0, -kRadius);
    return (part - straight).isEmpty();
}

} // namespace

void CardPage::paintEvent(QPaintEvent* event)
{
    const auto* const grid = qobject_cast<const PageGrid*>(layout());
    if (!grid) {
        return;
    }
    QPainter painter(this);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().alternateBase());
    for (const QRect& card : grid->cards()) {
        if (!event->rect().intersects(card)) {
            continue;
        }
        const bool isRound = !isStraight(event->region() & card, card);
        painter.setRenderHint(QPainter::Antialiasing, isRound);
        if (isRound) {
            painter.drawRoundedRect(card, kRadius, kRadius);
        } else {
            painter.fillRect(card, painter.brush());
        }
    }
}

} // namespace norvo
