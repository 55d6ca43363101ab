// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotParts.h"

#include "norvo/LibraryPart.h"

namespace {

#ifdef NORVO_SANITIZED // The sanitizers must come first for all.
constexpr QLibrary::LoadHints kHints{};
#else
/// The plot library has thousands of symbols of its own. They are looked for there before they are
/// in all that the program has loaded, which takes a millisecond less.
constexpr QLibrary::LoadHints kHints = QLibrary::DeepBindHint;
#endif

} // namespace

const PlotParts* plotParts(QString& error)
{
    static const char here = 0;
    const auto parts = reinterpret_cast<decltype(&norvoPlotParts)>(norvo::symbolOfPart(
        &here, "plots/libnorvoplotwidgets.so", "norvoPlotParts", error, kHints));
    return parts ? parts() : nullptr;
}
