// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/GraphFrame.h"

#include "widgets/Looks.h"
#include "widgets/ShownText.h"

#include <QEvent>
#include <QGridLayout>

namespace Looks = norvo::Looks;

void GraphFrame::build(const QString& caption, const PlotView::Look& look)
{
    constexpr int captionPointSize = 16;
    m_caption = new QLabel;
    norvo::showText(*m_caption, caption);
    m_caption->setFont(Looks::captionFont(captionPointSize));
    m_caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    m_caption->setStyleSheet(Looks::kGraphCaption);

    m_view = new PlotView(look);
    m_view->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    getLayout()->addWidget(m_caption, 0, 0, Qt::AlignTop);
    getLayout()->addWidget(m_view, 1, 0);
    getLayout()->setRowStretch(0, 1);
    getLayout()->setRowStretch(1, 100);
}

void GraphFrame::changeEvent(QEvent* event)
{
    BaseWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) {
        return;
    }
    // A plot that is still to inherit the palette takes its colours when it does.
    if (m_view && m_view->palette() == palette()) {
        m_view->recolour();
    }
    if (m_caption) {
        // A style sheet looks up the application's colours only when it is set.
        m_caption->setStyleSheet(Looks::kGraphCaption);
    }
}
