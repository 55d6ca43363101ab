// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/run/FileReload.h"

#include "host/program/PanelInput.h"
#include "host/program/run/Reload.h"
#include "host/program/streams/Console.h"
#include "host/services/reload/FileWatch.h"
#include "host/window/PanelWindow.h"
#include "host/window/reload/FileFault.h"
#include "host/window/strip/PanelStrip.h"
#include "host/yaml/SourceText.h"

#include <algorithm>

namespace norvo {

FileReload::FileReload(const PanelInput& input, FileWatch& watch, Reload& reload,
                       PanelWindow& window)
    : m_input(input), m_watch(watch), m_reload(reload), m_fault(new FileFault)
{
    window.strip().addPart(m_fault, 1);
    connect(m_fault, &FileFault::readAgainRequested, this, [this] { readAgain(); });
    connect(&m_watch, &FileWatch::changed, this, &FileReload::follow);
    watchAll();
}

void FileReload::watchAll()
{
    m_watch.watch(QStringList(m_input.path()) + m_reload.furtherFiles());
}

void FileReload::follow(const QStringList& files)
{
    const QStringList included = m_reload.description().included;
    const bool isOfPanel = std::any_of(files.cbegin(), files.cend(), [&](const QString& file) {
        return file == m_input.path() || included.contains(file);
    });
    if (isOfPanel || !m_fault->isHidden()) {
        readAgain(files);
        return;
    }
    Diagnostics diagnostics(m_input.name());
    m_reload.restart(files, diagnostics);
    tell(diagnostics);
}

void FileReload::readAgain(const QStringList& changedFiles)
{
    Diagnostics diagnostics(m_input.name());
    QString reason;
    const auto text = readTextFile(m_input.path(), reason);
    if (!text) {
        diagnostics.error({}, reason);
    } else if (m_take && m_take(*text)) {
        return;
    } else {
        m_reload.run(*text, changedFiles, diagnostics);
    }
    tell(diagnostics);
}

void FileReload::tell(const Diagnostics& diagnostics)
{
    const DiagnosticList all = diagnostics.sorted();
    for (const Diagnostic& diagnostic : all) {
        Console::report(diagnostic.toString());
    }
    m_fault->show(all);
    watchAll();
}

} // namespace norvo
