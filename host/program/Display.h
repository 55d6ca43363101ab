// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

#include <memory>

namespace norvo {

/// Makes the application object, and with it the connection to the display.
class Display
{
public:
    enum class Kind {
        Screen,    ///< The user's display.
        OffScreen, ///< None, even if the environment names one.
    };

    /// Null when there is no display; `reason` then says why. Where the display is there and cannot
    /// be opened, **the process ends** with that reason on standard error and exit status 1,
    /// because Qt does not come back from it. `qtArguments` are options of Qt's own; a platform
    /// among them goes before `kind`.
    static std::unique_ptr<QApplication> open(Kind kind, const QStringList& qtArguments,
                                              QString& reason);

    /// Lets free families stand in for those that devices ask for by name, where a family is not
    /// installed.
    static void substituteFonts();
};

} // namespace norvo
