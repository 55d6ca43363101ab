// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseWidget.h"

#include <QPointer>

class QSlider;

/// The slider of a SliderDevice. It starts at 0 or at the end of its range that is nearest to 0.
class SliderWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    QSize sizeHint() const override; ///< The slider's; invalid before there is one.

    void initialise() override;

signals:
    void wgOutput(double value);

public slots:
    /// Moves the slider to the value cut toward zero, at most to the end of its range. NaN counts
    /// as 0.
    void wgInput(double value);

private:
    QPointer<QSlider> m_slider;
};
