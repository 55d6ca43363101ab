// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/GraphFrame.h"

#include "widgets/Looks.h"
#include "widgets/ShownText.h"

#include <QEvent>
#include <QGridLayout>

namespace Looks = norvo::Looks;

void GraphFrame::build(QGridLayout* layout, const QString& caption, const PlotView::Look& look)
{
    constexpr int captionPointSize = 16;
    m_caption = new QLabel;
    norvo::showText(*m_caption, caption);
    m_caption->setFont(Looks::captionFont(captionPointSize));
    m_caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    m_caption->setStyleSheet(Looks::kGraphCaption);

    m_plot = new PlotView(look);
    m_plot->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    layout->addWidget(m_caption, 0, 0, Qt::AlignTop);
    layout->addWidget(m_plot, 1, 0);
    layout->setRowStretch(0, 1);
    layout->setRowStretch(1, 100);
}

void GraphFrame::changeEvent(const QWidget& owner, const QEvent& event)
{
    if (event.type() != QEvent::PaletteChange) {
        return;
    }
    // A plot that is still to inherit the palette takes its colors when it does.
    if (m_plot && m_plot->palette() == owner.palette()) {
        m_plot->recolour();
    }
    if (m_caption) {
        // A style sheet looks up the application's colors only when it is set.
        m_caption->setStyleSheet(Looks::kGraphCaption);
    }
}
