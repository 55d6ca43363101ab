// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/LineKeys.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>

namespace norvo {

namespace {

constexpr int kMargin = 6; // pixels, around the keys

} // namespace

LineKeys::LineKeys(QWidget& cover, const QList<QAction*>& actions, const QRect& beside, int target)
    : QWidget(&cover)
{
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    for (QAction* const action : actions) {
        auto* const key = new QPushButton(action->text());
        key->setMinimumHeight(target);
        key->setEnabled(action->isEnabled());
        // The action may end this key: it comes once the key has done with its press.
        connect(key, &QPushButton::clicked, action, &QAction::trigger, Qt::QueuedConnection);
        row->addWidget(key);
    }
    if (sizeHint().width() > cover.width()) {
        row->setDirection(QBoxLayout::TopToBottom); // else their texts would be cut
    }
    resize(sizeHint().boundedTo(cover.size()));
    QRect place(beside.topLeft(), size());
    place.moveLeft(qBound(0, place.left(), cover.width() - width()));
    place.moveTop(qBound(0, place.top(), cover.height() - height()));
    setGeometry(place);
    show();
}

void LineKeys::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(palette().window());
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kMargin, kMargin);
}

void LineKeys::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        parentWidget()->setFocus();
        deleteLater();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace norvo
