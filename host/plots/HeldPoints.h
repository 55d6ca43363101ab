// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/plots/EarlierPoints.h"
#include "host/plots/PlotCalls.h"

namespace norvo {

/// Puts what was recorded of a curve before its points, where it is broken as they are: points that
/// are no number stand at both ends of a break. A curve without points takes what is before `end`.
void prepend(QCPGraph& curve, const EarlierCurve& earlier, double end);

/// Where all curves of a plot together have more than `most` points, drops the newest of them down
/// to three quarters of that, but none up to `needed`. Returns the key up to which they are
/// complete; infinite: nothing was dropped.
double dropNewest(QCustomPlot& plot, int most, double needed);

} // namespace norvo
