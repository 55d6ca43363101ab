#include "widgets/GraphFrame.h"

#include <QGridLayout>
#include <QLabel>

namespace {

constexpr int kCaptionPointSize = 16;
constexpr int kCaptionWeight = 3;
constexpr char kCaptionStyle[] = "QWidget { background-color: palette(alternate-base); "
                                 "border: 1px solid palette(base); border-radius: 5px; }";

void retire(QGridLayout* layout, QWidget* widget)
{
    if (widget) {
        layout->removeWidget(widget);
        widget->hide();
    }
}

} // namespace

void GraphFrame::build(QGridLayout* layout, const QString& caption, const PlotView::Look& look)
{
    retire(layout, m_caption);
    retire(layout, m_plot);

    m_caption = new QLabel(caption);
    m_caption->setFont(QFont("Arial", kCaptionPointSize, kCaptionWeight, false));
    m_caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    m_caption->setStyleSheet(kCaptionStyle);

    m_plot = new PlotView(look);
    m_plot->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    layout->addWidget(m_caption, 0, 0, Qt::AlignTop);
    layout->addWidget(m_plot, 1, 0);
    layout->setRowStretch(0, 1);
    layout->setRowStretch(1, 100);
}

void GraphFrame::recolour()
{
    if (!m_plot) {
        return;
    }
    m_plot->recolour();
    // A style sheet looks up the palette's colours only when it is set.
    m_caption->setStyleSheet(kCaptionStyle);
}
