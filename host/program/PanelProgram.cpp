// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/PanelProgram.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/file/Diagnostics.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/state/StateFile.h"
#include "host/program/streams/Console.h"
#include "host/program/Display.h"
#include "host/program/ExportHistory.h"
#include "host/program/MakePin.h"
#include "host/program/PanelInput.h"
#include "host/program/PluginSet.h"
#include "host/program/run/PanelRun.h"
#include "host/program/SetParams.h"
#include "host/program/TypeListing.h"

#include <QCoreApplication>

#include <vector>

namespace norvo {

namespace {

bool findPlugins(PluginSet& plugins, const QStringList& further)
{
    const QStringList folders =
        PluginSet::defaultFolders(QCoreApplication::applicationDirPath()) + further;
    for (const QString& folder : folders) {
        plugins.find(folder);
    }
    Console::reportEach(plugins.takeWarnings());
    if (plugins.isEmpty()) {
        Console::reportError(
            "there are no devices, because no plug-in was found; --plugins DIR names a folder "
            "that holds some");
    }
    return !plugins.isEmpty();
}

/// Empty where no state is kept.
QString stateFileOf(const Options& options)
{
    const QString beside = StateFile::besidePanel(options.panelFiles.constFirst());
    return !options.keepsState           ? QString()
           : options.stateFile.isEmpty() ? beside
                                         : options.stateFile;
}

/// Prints what is wrong with the panel; returns whether there is an error.
bool hasErrors(const PanelInput& panel, const DeviceManager& manager, const Catalogue& catalogue)
{
    Diagnostics diagnostics(panel.name());
    PanelPlan::make(panel.read(diagnostics), manager, {}, diagnostics, {}, SenseCheck(catalogue));
    for (const Diagnostic& diagnostic : diagnostics.sorted()) {
        Console::print(diagnostic.toString());
    }
    Console::print(QString("%1: %2").arg(panel.name(), diagnostics.summary()));
    return diagnostics.hasErrors();
}

int check(const QStringList& files, const DeviceManager& manager, const Catalogue& catalogue)
{
    const std::vector<PanelInput> panels(files.cbegin(), files.cend());
    int status = 0;
    for (const PanelInput& panel : panels) {
        status = hasErrors(panel, manager, catalogue) ? 1 : status;
    }
    return status;
}

} // namespace

int runProgram(const Options& options)
{
    if (options.action == Options::Action::MakePin) {
        return makePin();
    }
    QString reason;
    const auto application = Display::open(
        options.action == Options::Action::Run ? Display::Kind::Screen : Display::Kind::OffScreen,
        options.qtArguments, reason);
    if (!application) {
        Console::reportError(reason);
        return 1;
    }
    if (options.action == Options::Action::Export) {
        return exportHistory(options);
    }
    PluginSet plugins;
    if (!findPlugins(plugins, options.pluginFolders)) {
        return 1;
    }
    const bool isShown =
        options.action == Options::Action::Run || options.action == Options::Action::Screenshot;
    if (!isShown) { // A panel that is shown loads what it needs.
        plugins.needAll();
        Console::reportEach(plugins.takeWarnings());
    }
    if (options.isListing()) {
        return listTypes(options, plugins.manager());
    }
    Display::substituteFonts();
    const Catalogue catalogue(plugins.manager());
    switch (options.action) {
    case Options::Action::Check:
        return check(options.panelFiles, plugins.manager(), catalogue);
    case Options::Action::Set:
        return setParams(options.panelFiles.constFirst(), stateFileOf(options), options.changes,
                         plugins.manager(), SenseCheck(catalogue));
    default:
        return PanelRun(options, plugins, catalogue).run();
    }
}

} // namespace norvo
