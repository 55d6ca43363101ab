#pragma once

#include "norvo/BaseWidget.h"
#include "widgets/ScaleDraw.h"

#include <QBitmap>
#include <QPixmap>

#include <memory>

/// A horizontal gauge: a light panel with a scale at its bottom and a pointer above it.
///
/// Panel and scale are drawn into a pixmap, which is shown until the size or the scale changes;
/// what blends with the widget's background is within one colour level of being drawn on it
/// directly. Where the picture is scaled by no whole number, all is drawn directly each time. A
/// pointer beyond the scale is clipped by the panel; one at no number or at an infinity is not
/// drawn.
class ValueBarWidget : public BaseWidget
{
    Q_OBJECT

public:
    ValueBarWidget(BaseGuiDevice* device, QWidget* parent);
    ~ValueBarWidget() override;

    void initialise() override;
    void deinitialise() override;

    void SetThreshold(double low, double high);    ///< The green zone; ignored without a scale.
    void customHeight(double scaleHeight, double); ///< Clamped to 0...1; the second is ignored.
    /// Draws panel and scale, clipped to the mask; nothing without a scale.
    void updateScale(QPainter& painter);
    void updateMask(); ///< Makes the mask of the panel anew.

    /// False: the pixmap is made anew at each paint. The picture is the same.
    void setCached(bool cached) { m_cached = cached; }

public slots:
    void input(double value); ///< Ignored unless initialised.

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void renderPanel(int pixelScale);
    void drawPointer(QPainter& painter);

    double m_scaleHeight = 0.0;
    double m_arrowHeight = 0.0;
    double m_normalised = 0.0; ///< 0 at the scale's start, 1 at its end.
    double m_minValue = 0.0;
    double m_maxValue = 0.0;
    std::unique_ptr<ScaleDraw> m_scale;
    std::unique_ptr<QBitmap> m_mask;
    QRegion m_maskRegion; ///< The same, as painting needs it.
    QPixmap m_panel;      ///< Panel and scale. Null: to be drawn.
    bool m_maskDirty = false;
    bool m_cached = true;
};
