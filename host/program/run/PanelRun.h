// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/SenseCheck.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/program/PanelInput.h"
#include "host/program/UnixSignals.h"
#include "host/program/options/CommandLine.h"
#include "host/services/reload/FileWatch.h"
#include "host/window/fit/Kiosk.h"
#include "host/window/touch/TapGuard.h"
#include "host/window/touch/WheelGuard.h"

#include <QApplication>

#include <optional>

namespace norvo {

class Catalogue;
class PanelWindow;
class PluginSet;
class StateFile;

/// A panel on the display, or unseen for a picture, from its file to the end.
class PanelRun
{
public:
    /// All of them outlive this.
    PanelRun(const Options& options, PluginSet& plugins, const Catalogue& catalogue);

    int run(); ///< Returns the exit status.

private:
    int start();
    PanelDescription read(Diagnostics& diagnostics) const;
    void settle(PanelDescription& description) const;
    /// Loads the plug-ins that it needs.
    void needTypes(const PanelDescription& description) const;
    void chooseSurface(const PanelDescription& description) const; ///< Of windows to come.
    void wear(const PanelLook& look);
    int showErrors(const Diagnostics& diagnostics);
    int runPanel(PanelPlan plan, const PanelDescription& description, Diagnostics& diagnostics,
                 StateFile& state);
    int show(PanelWindow& window);
    int takePicture(PanelWindow& window) const;
    bool isPicture() const { return m_options.action == Options::Action::Screenshot; }
    bool isWatched() const;

    const Options& m_options;
    PluginSet& m_plugins;
    const Catalogue& m_catalogue;
    const SenseCheck m_knowledge;
    const PanelInput m_input;
    const bool m_keepsState;     ///< Standard input has no file to keep it beside.
    const QString m_stateFile;   ///< As messages name it.
    const QString m_alarmFile;   ///< Absolute; empty: what happens to alarms is not kept.
    const QString m_picturePath; ///< Absolute: reading the panel changes the working folder.
    const QString m_auditPath;   ///< Likewise; empty: what the panel file says.
    const QString m_historyPath; ///< Likewise; where the panel file names no other.
    const UnixSignals m_signals; ///< From before anything starts; ends a wait of the start, too.
    const WheelGuard m_wheelGuard{*qApp};
    const TapGuard m_tapGuard{*qApp};
    FileWatch m_watch;               ///< From before the file is read: nothing is missed.
    std::optional<PanelLook> m_worn; ///< The look of now.
    std::optional<Kiosk> m_kiosk;    ///< Where one was asked for.
};

} // namespace norvo
