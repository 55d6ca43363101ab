// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/plan/Placement.h"

#include <QHash>

#include <optional>

namespace norvo {

class Panel;
class PanelPages;
class YamlEdit;

/// The panel that runs while its file is edited, as the editor sees it.
class LivePanel
{
public:
    LivePanel() = default;
    virtual ~LivePanel() = default;
    Q_DISABLE_COPY(LivePanel)

    enum class Accept {
        Better,  ///< Nothing that brings an error which was not there before.
        Runnable ///< Whatever a start would run.
    };

    virtual Panel& panel() = 0;
    virtual PanelPages& pages() = 0;                         ///< On which its widgets stand.
    virtual const PanelDescription& description() const = 0; ///< Of what runs.
    virtual QHash<QString, Cells> cells() const = 0; ///< Of each device or tile that is seen.
    virtual DiagnosticList problems() const = 0;     ///< What the check has against what runs.

    /// Lets the panel run that the text describes, in the place of the one that runs; devices with
    /// equal settings live on. Where it is not accepted nothing changes, and what keeps it from
    /// being so is returned.
    virtual std::optional<Diagnostic> run(const YamlEdit& text, Accept accept) = 0;
};

} // namespace norvo
