// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseWidget.h"

/// The picture of a PictureDevice, at its own size or, where width and height are both above 0,
/// squeezed into exactly those.
///
/// A picture takes 300 MB of memory at most. One that would take more is scaled while it is read,
/// where its format can do that (JPEG, SVG, most of PNG) and it is to be scaled at all; any other
/// is refused as a file that cannot be loaded is, and so is what is not a regular file.
class PictureWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    void initialise() override; ///< Logs a critical message and shows nothing where that fails.
};
