// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/LivePanel.h"
#include "host/panel/file/Diagnostics.h"

#include <QSet>

#include <functional>
#include <vector>

class DeviceManager;

namespace norvo {

class Catalogue;
class Node;
class PanelInput;
class RunningPanel;
class StateFile;
class TypeKnowledge;

/// Lets a running panel go on with another text in the place of the one that it was started with:
/// of its file, or of an editor. What is wrong with the text is found before anything is changed.
class Reload : public LivePanel
{
public:
    /// What the program has made, and outlives this.
    struct Parts
    {
        const PanelInput& input;
        const DeviceManager& manager;
        const Catalogue& catalogue;
        const TypeKnowledge& knowledge;
        const StateFile& state;
        RunningPanel& running;
        std::function<void(PanelDescription&)> settle; ///< What the command line says of it.
        std::function<void(const PanelLook&)> wear;    ///< Gives the program a look and language.
    };

    /// `problems` are those of the start.
    Reload(const Parts& parts, const DiagnosticList& problems);

    Panel& panel() override;
    PanelPages& pages() override;
    const PanelDescription& description() const override;
    QHash<QString, Cells> cells() const override;
    DiagnosticList problems() const override { return m_problems; }
    std::optional<Diagnostic> run(const YamlEdit& text, Accept accept) override;

    /// Whatever a start would run is accepted; false: nothing has changed. Devices that show one of
    /// `changedFiles` begin anew even where their settings are equal.
    bool run(const QByteArray& text, const QStringList& changedFiles, Diagnostics& diagnostics);
    /// Begins those devices anew, and changes nothing else.
    void restart(const QStringList& changedFiles, Diagnostics& diagnostics);

    /// Absolute paths of all that a panel is made of beside its own file: what runs, and what was
    /// last refused.
    QStringList furtherFiles() const;

private:
    using Accepts = std::function<bool(const Diagnostics&)>;

    bool run(PanelDescription description, const QStringList& changedFiles,
             Diagnostics& diagnostics, const Accepts& accepts);
    std::vector<Node*> nodesToKeep(const PanelDescription& description,
                                   const QStringList& changedFiles) const;
    std::optional<Diagnostic> newError(const Diagnostics& diagnostics) const;

    const Parts m_parts;
    DiagnosticList m_problems;
    QStringList m_furtherFiles;
};

} // namespace norvo
