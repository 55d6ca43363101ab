// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/layout/FingerScrollArea.h"

#include <QMouseEvent>
#include <QScrollBar>

namespace norvo {

FingerScrollArea::FingerScrollArea(QWidget* page)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setWidget(page);
}

QSize FingerScrollArea::sizeHint() const
{
    return widget()->sizeHint();
}

/// What comes here no control has taken.
void FingerScrollArea::mousePressEvent(QMouseEvent* event)
{
    m_finger = event->globalPos();
}

void FingerScrollArea::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint distance = event->globalPos() - m_finger;
    m_finger = event->globalPos();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - distance.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - distance.y());
}

} // namespace norvo
