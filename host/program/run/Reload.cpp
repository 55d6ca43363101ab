// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/run/Reload.h"

#include "host/catalogue/IncludedFiles.h"
#include "host/panel/file/NewProblems.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/state/StateFile.h"
#include "host/program/PanelInput.h"
#include "host/program/run/RunningPanel.h"
#include "host/yaml/YamlEdit.h"

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

bool isError(const Diagnostic& diagnostic)
{
    return diagnostic.severity == Diagnostic::Severity::Error;
}

QStringList included(const PanelDescription& description, const Catalogue& catalogue,
                     const QString& folder)
{
    QStringList files = description.included;
    const auto shown = shownFiles(description, catalogue, folder);
    for (const QStringList& ofDevice : shown) {
        files += ofDevice;
    }
    return files;
}

} // namespace

Reload::Reload(const Parts& parts, const DiagnosticList& problems)
    : m_parts(parts),
      m_problems(problems),
      m_furtherFiles(included(description(), parts.catalogue, parts.input.folder()))
{}

Panel& Reload::panel()
{
    return m_parts.running.panel();
}

PanelPages& Reload::pages()
{
    return m_parts.running.pages();
}

const PanelDescription& Reload::description() const
{
    return m_parts.running.description();
}

QHash<QString, Cells> Reload::cells() const
{
    return m_parts.running.panel().cells();
}

QStringList Reload::furtherFiles() const
{
    QStringList files = m_furtherFiles;
    files.removeDuplicates();
    return files;
}

std::optional<Diagnostic> Reload::run(const YamlEdit& text, Accept accept)
{
    Diagnostics diagnostics(m_parts.input.name());
    std::optional<Diagnostic> refusal;
    run(m_parts.input.parse(text, diagnostics), {}, diagnostics, [&](const Diagnostics& found) {
        if (accept == Accept::Better) {
            refusal = newError(found);
        }
        if (!refusal && found.preventsStart()) {
            const DiagnosticList all = found.sorted();
            refusal = *std::find_if(all.cbegin(), all.cend(), isError);
        }
        return !refusal;
    });
    return refusal;
}

std::optional<Diagnostic> Reload::newError(const Diagnostics& diagnostics) const
{
    const DiagnosticList added = newProblems(m_problems, diagnostics.sorted());
    const auto error = std::find_if(added.cbegin(), added.cend(), isError);
    return error == added.cend() ? std::optional<Diagnostic>() : *error;
}

bool Reload::run(const QByteArray& text, const QStringList& changedFiles, Diagnostics& diagnostics)
{
    return run(m_parts.input.parse(text, diagnostics), changedFiles, diagnostics,
               [](const Diagnostics& found) { return !found.preventsStart(); });
}

void Reload::restart(const QStringList& changedFiles, Diagnostics& diagnostics)
{
    run(description(), changedFiles, diagnostics,
        [](const Diagnostics& found) { return !found.preventsStart(); });
}

bool Reload::run(PanelDescription description, const QStringList& changedFiles,
                 Diagnostics& diagnostics, const Accepts& accepts)
{
    RunningPanel& running = m_parts.running;
    m_parts.settle(description);
    m_furtherFiles = included(description, m_parts.catalogue, m_parts.input.folder());
    PanelPlan plan =
        PanelPlan::make(description, m_parts.manager,
                        {m_parts.state.fileName(), m_parts.state.state(), m_parts.state.places()},
                        diagnostics, nodesToKeep(description, changedFiles), m_parts.knowledge);
    if (!accepts(diagnostics)) {
        m_furtherFiles +=
            included(running.description(), m_parts.catalogue, m_parts.input.folder());
        return false;
    }
    m_parts.wear(description.look);
    running.change(description, std::move(plan), diagnostics);
    m_problems = diagnostics.sorted();
    return true;
}

std::vector<Node*> Reload::nodesToKeep(const PanelDescription& description,
                                       const QStringList& changedFiles) const
{
    if (m_parts.running.needsNewDevices(description)) {
        return {};
    }
    std::vector<Node*> nodes = m_parts.running.panel().nodes();
    if (!changedFiles.isEmpty()) {
        const auto shown = shownFiles(description, m_parts.catalogue, m_parts.input.folder());
        const auto showsChanged = [&](const Node* node) {
            const QStringList files = shown.value(node->id());
            return std::any_of(files.cbegin(), files.cend(),
                               [&](const QString& file) { return changedFiles.contains(file); });
        };
        nodes.erase(std::remove_if(nodes.begin(), nodes.end(), showsChanged), nodes.end());
    }
    return nodes;
}

} // namespace norvo
