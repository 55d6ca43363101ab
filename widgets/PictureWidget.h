#pragma once

#include "norvo/BaseWidget.h"

/// The picture of a PictureDevice, at its own size or, where width and height are both above 0,
/// squeezed into exactly those.
///
/// More than 67,108,864 pixels (8192 x 8192, a quarter of a gigabyte) are refused as a file that
/// cannot be loaded is: by the size that the file declares, before memory is taken for them, and by
/// the size that is asked for.
class PictureWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    void initialise() override; ///< Logs a critical message and shows nothing where that fails.
};
