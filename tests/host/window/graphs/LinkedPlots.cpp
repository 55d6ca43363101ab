// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/PlotLibrary.h"

namespace norvo {

/// The tests know its classes, and so have it among them.
const PlotLibrary* plotLibrary()
{
    return norvoPlotLibrary();
}

} // namespace norvo
