// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/program/CommandLine.h"

class DeviceManager;

namespace norvo {

class Diagnostics;
struct PanelDescription;
struct PanelPlan;
class PanelWindow;
class PluginSet;
class StateFile;
class UnixSignals;

/// The program from its options to its exit status: 0, or 1 when something kept it from doing what
/// it was asked for.
class PanelProgram
{
public:
    explicit PanelProgram(const Options& options);

    int run(); ///< Once in a process.

private:
    bool loadPlugins(PluginSet& plugins) const;
    int check(const DeviceManager& manager) const;
    int start(const DeviceManager& manager, const UnixSignals& unixSignals) const;
    int showErrors(const Diagnostics& diagnostics, const UnixSignals& unixSignals) const;
    int runPanel(PanelPlan plan, const QString& title, StateFile& state,
                 const UnixSignals& unixSignals) const;
    void readState(StateFile& state) const;
    /// Shows the window until the end; returns the exit status.
    int show(PanelWindow& window, const UnixSignals& unixSignals) const;
    int takePicture(PanelWindow& window) const;

    const Options m_options;
};

} // namespace norvo
