// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/look/Contrast.h"
#include "host/window/look/ControlPainter.h"

#include <QProxyStyle>

namespace norvo {

/// Controls that are large enough to touch, in the colours of a theme.
///
/// A style and no style sheet, so that the style sheets of the types have the last word. What it
/// does not draw itself, Fusion draws.
class PanelStyle : public QProxyStyle
{
    Q_OBJECT

public:
    PanelStyle(const Theme& theme, int target); ///< Target: see TouchSize, in pixels.

    void polish(QWidget* widget) override;
    void unpolish(QWidget* widget) override;
    using QProxyStyle::polish;
    using QProxyStyle::unpolish;

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* details) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void drawButtonLabel(const QStyleOptionButton& option, QPainter* painter,
                         const QWidget* widget) const;
    QRect scrollBarRect(const QStyleOptionSlider& option, SubControl part) const;
    QRect spinBoxRect(const QStyleOptionSpinBox& option, SubControl part) const;

    const ControlPainter m_paint;
    const int m_target;
    ContrastGuard m_guard;
    bool m_isHandlePressed = false; ///< The last press on a slider was on its handle.
};

} // namespace norvo
