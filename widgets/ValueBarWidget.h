// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/OutputBarDevice.h"
#include "widgets/DeviceView.h"
#include "widgets/ScaleDraw.h"

#include <QPixmap>
#include <QPolygon>
#include <QRegion>

#include <memory>
#include <utility>
#include <vector>

/// A horizontal gauge: a light panel with a scale at its bottom and a pointer above it.
///
/// Panel and ticks are drawn into pixmaps, which are shown until the size or the scale changes;
/// what blends with the widget's background is within one colour level of being drawn on it
/// directly. Most of the panel covers its background and is copied, which costs a third of blending
/// it. The numbers are drawn directly, as letters lose their sub-pixel rendering in a pixmap. A
/// pointer beyond the scale is clipped by the panel; one at no number or at an infinity is not
/// drawn.
class ValueBarWidget : public DeviceView<OutputBarDevice>
{
    Q_OBJECT

public:
    using DeviceView::DeviceView;

    void deinitialise() override;

    void SetThreshold(double low, double high);    ///< The green zone; ignored without a scale.
    void customHeight(double scaleHeight, double); ///< Clamped to 0...1; the second is ignored.
    /// Draws panel and scale, clipped to the mask; nothing without a scale.
    void updateScale(QPainter& painter);
    void updateMask(); ///< Makes the mask of the panel again.

public slots:
    void input(double value); ///< Ignored unless initialised.

protected:
    void build(OutputBarDevice& bar) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void drawPanel(QPainter& painter);
    void drawPanelPixmaps(QPainter& painter, int pixelScale);
    void makePanelPixmaps(int pixelScale);
    QPolygon pointer() const; ///< Empty at no number.
    /// Clips to the panel as far as what is drawn after it may reach over it, `drawn` at most.
    void clipToPanel(QPainter& painter, const QRect& drawn) const;

    double m_scaleHeight = 0.0;
    double m_arrowHeight = 0.0;
    double m_normalised = 0.0; ///< 0 at the scale's start, 1 at its end.
    double m_minValue = 0.0;
    double m_maxValue = 0.0;
    std::unique_ptr<ScaleDraw> m_scale;
    QRegion m_mask; ///< The panel's pixels.
    /// Panel and ticks, from top to bottom: the rows of the upper corners, those between the
    /// corners without their transparent margins, and those of the lower ones. None: to be drawn.
    std::vector<std::pair<QPoint, QPixmap>> m_panel;
    bool m_maskDirty = false;
};
