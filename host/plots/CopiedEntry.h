// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/plots/PlotCalls.h"

namespace norvo {

/// A curve's entry in the legend of a copy. Its letters are whole: the library's own clip, which it
/// moves up by a pixel when it draws, cuts their last row.
class CopiedEntry : public QCPPlottableLegendItem
{
public:
    using QCPPlottableLegendItem::QCPPlottableLegendItem;

protected:
    QRect clipRect() const override { return mParentLegend->outerRect(); }
};

} // namespace norvo
