// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class BaseGuiDevice;
class BaseWidget;
class QString;

/// The widgets that are drawn by the plot library; the caller owns each. The plug-in has them in a
/// library of its own, because linking the plot library takes time at every start, and many panels
/// show no graph.
struct PlotParts
{
    BaseWidget* (*makeTimeGraph)(BaseGuiDevice* device);
    BaseWidget* (*makeVectorGraph)(BaseGuiDevice* device);
};

/// Null where the library is not there; `error` then says why.
const PlotParts* plotParts(QString& error);

/// What the library exports.
extern "C" const PlotParts* norvoPlotParts();
