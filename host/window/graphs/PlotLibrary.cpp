// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/PlotLibrary.h"

#include "host/services/ProgramPart.h"

#include <QDebug>

namespace norvo {

namespace {

const PlotLibrary* load()
{
    QString error;
    const auto library = reinterpret_cast<decltype(&norvoPlotLibrary)>(
        functionOfPart("libNorvoPlots.so", "norvoPlotLibrary", error));
    if (!library) {
        qWarning().noquote() << "graphs have no tools:" << error;
    }
    return library ? library() : nullptr;
}

} // namespace

const PlotLibrary* plotLibrary()
{
    static const PlotLibrary* const library = load();
    return library;
}

} // namespace norvo
