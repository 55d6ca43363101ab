#pragma once

#include "norvo/BaseWidget.h"

/// The push button of a ButtonDevice.
class ButtonWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    void initialise() override;

signals:
    void pressed(); ///< Never emitted.
};
