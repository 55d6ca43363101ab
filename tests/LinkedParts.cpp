// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/QmlParts.h"
#include "widgets/PlotParts.h"

// Programs that link the plug-in's classes have these parts among them.

const QmlParts* qmlParts(QString&)
{
    return norvoQmlParts();
}

const PlotParts* plotParts(QString&)
{
    return norvoPlotParts();
}
