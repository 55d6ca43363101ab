// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/PanelProgram.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/file/Diagnostics.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/state/AtomicFile.h"
#include "host/panel/state/StateFile.h"
#include "host/program/streams/Console.h"
#include "host/program/Display.h"
#include "host/program/ExportHistory.h"
#include "host/program/MakePin.h"
#include "host/program/PanelInput.h"
#include "host/program/PluginSet.h"
#include "host/program/RunningPanel.h"
#include "host/program/SetParams.h"
#include "host/program/TypeListing.h"
#include "host/program/UnixSignals.h"
#include "host/texts/Language.h"
#include "host/window/PanelWindow.h"
#include "host/window/fit/Kiosk.h"
#include "host/window/touch/TapGuard.h"
#include "host/window/touch/WheelGuard.h"
#include "host/window/look/Look.h"

#include <QBuffer>
#include <QFileInfo>
#include <QScreen>
#include <QTimer>

#include <optional>
#include <utility>
#include <vector>

namespace norvo {

namespace {

constexpr QSize kMaxPicture(3840, 2160);
const QString kPinCountEnding = QStringLiteral(".pins");
constexpr int kReadAgain = -1; ///< Instead of an exit status.

/// The X server that the command line names; empty where it names none.
QString displayOf(const QStringList& qtArguments)
{
    const int option = qtArguments.lastIndexOf("-display");
    return option < 0 ? QString() : qtArguments.value(option + 1);
}

void reportAll(const Diagnostics& diagnostics)
{
    for (const Diagnostic& diagnostic : diagnostics.sorted()) {
        Console::report(diagnostic.toString());
    }
}

bool loadPlugins(PluginSet& plugins, const QStringList& further)
{
    const QStringList folders =
        PluginSet::defaultFolders(QCoreApplication::applicationDirPath()) + further;
    for (const QString& folder : folders) {
        plugins.load(folder);
    }
    for (const QString& warning : plugins.warnings()) {
        Console::report(warning);
    }
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

/// Absolute; empty where nothing is kept, as for a picture.
QString alarmFileOf(const Options& options, bool keepsState)
{
    return keepsState && options.action == Options::Action::Run
               ? QFileInfo(AlarmHistory::besideState(stateFileOf(options))).absoluteFilePath()
               : QString();
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

/// A panel on the display, or unseen for a picture, from its file to the end.
class PanelRun
{
public:
    PanelRun(const Options& options, const DeviceManager& manager, const Catalogue& catalogue)
        : m_options(options),
          m_manager(manager),
          m_knowledge(catalogue),
          m_input(options.panelFiles.constFirst()),
          m_keepsState(options.keepsState &&
                       !(m_input.isStandardInput() && options.stateFile.isEmpty())),
          m_alarmFile(alarmFileOf(options, m_keepsState)),
          m_picturePath(QFileInfo(options.pictureFile).absoluteFilePath()),
          m_auditPath(options.auditFile.isEmpty()
                          ? QString()
                          : QFileInfo(options.auditFile).absoluteFilePath()),
          m_historyPath(QFileInfo(HistorySetting::besidePanel(m_input.name())).absoluteFilePath())
    {
        QObject::connect(&m_signals, &UnixSignals::stopRequested, qApp, &QCoreApplication::quit);
        if (options.kiosk) {
            m_kiosk.emplace(*qApp, displayOf(options.qtArguments));
        }
    }

    int run(); ///< Returns the exit status.

private:
    int start();
    void settle(PanelDescription& description) const;
    int showErrors(const Diagnostics& diagnostics);
    int runPanel(PanelPlan plan, const PanelDescription& description, StateFile& state);
    int show(PanelWindow& window);
    int takePicture(PanelWindow& window) const;
    bool isPicture() const { return m_options.action == Options::Action::Screenshot; }

    const Options& m_options;
    const DeviceManager& m_manager;
    const SenseCheck m_knowledge;
    const PanelInput m_input;
    const bool m_keepsState;     ///< Standard input has no file to keep it beside.
    const QString m_alarmFile;   ///< Absolute likewise; empty: what happens to alarms is not kept.
    const QString m_picturePath; ///< Absolute: reading the panel changes the working folder.
    const QString m_auditPath;   ///< Likewise; empty: what the panel file says.
    const QString m_historyPath; ///< Likewise; where the panel file names no other.
    const UnixSignals m_signals; ///< From before anything starts; ends a wait of the start, too.
    const WheelGuard m_wheelGuard{*qApp};
    const TapGuard m_tapGuard{*qApp};
    std::optional<Kiosk> m_kiosk; ///< Where one was asked for.
};

int PanelRun::run()
{
    int status = kReadAgain;
    while (status == kReadAgain) {
        status = start();
    }
    if (m_signals.isStopRequested() && isPicture()) {
        Console::reportError("stopped before the picture was taken");
        return 1;
    }
    return status;
}

int PanelRun::start()
{
    Diagnostics diagnostics(m_input.name());
    StateFile state(m_options.stateFile.isEmpty() ? StateFile::besidePanel(m_input.name())
                                                  : m_options.stateFile,
                    isPicture() ? StateFile::Mode::ReadOnly : StateFile::Mode::ReadWrite);
    PanelDescription description = m_input.read(diagnostics);
    settle(description);
    Language::use(*qGuiApp, description.look.language);
    if (!m_options.qtArguments.contains("-style")) {
        Look::apply(*qApp, description.look);
    }
    if (m_keepsState && !diagnostics.hasErrors()) {
        QObject::connect(&state, &StateFile::problem, &Console::report);
        state.read();
    }
    PanelPlan plan =
        PanelPlan::make(description, m_manager, {state.fileName(), state.state(), state.places()},
                        diagnostics, {}, m_knowledge);
    if (m_signals.isStopRequested()) {
        return 0;
    }
    reportAll(diagnostics);
    return diagnostics.preventsStart() ? showErrors(diagnostics)
                                       : runPanel(std::move(plan), description, state);
}

/// What the command line says of what the panel file does.
void PanelRun::settle(PanelDescription& description) const
{
    description.look.theme = m_options.theme.value_or(description.look.theme);
    description.audit.file = isPicture()             ? QString()
                             : m_auditPath.isEmpty() ? description.audit.file
                                                     : m_auditPath;
    HistorySetting& history = description.history;
    const bool hasFile = !history.file.isEmpty() || !m_input.isStandardInput();
    if (history.isGiven && !hasFile && m_options.keepsState) {
        Console::report(m_input.name() + ": warning: history names no file, and a panel from "
                                         "standard input has none beside it; nothing is recorded");
    }
    history.isGiven = history.isGiven && m_options.keepsState && hasFile && !isPicture();
    history.file = history.file.isEmpty() ? m_historyPath : history.file;
}

int PanelRun::showErrors(const Diagnostics& diagnostics)
{
    PanelWindow window(QFileInfo(m_input.name()).fileName());
    if (!m_input.isStandardInput()) {
        QObject::connect(&window, &PanelWindow::readAgainRequested, qApp,
                         [] { QCoreApplication::exit(kReadAgain); });
    }
    window.showErrors(diagnostics);
    return show(window) == kReadAgain ? kReadAgain : 1;
}

int PanelRun::runPanel(PanelPlan plan, const PanelDescription& description, StateFile& state)
{
    RunningPanel running(description, m_knowledge, m_alarmFile,
                         m_keepsState ? state.fileName() + kPinCountEnding : QString());
    QObject::connect(&running.alarms(), &AlarmService::problem, &Console::report);
    QObject::connect(&running.access(), &AccessFace::problem, &Console::report);
    if (m_keepsState) {
        QObject::connect(&running.panel(), &Panel::parameterWritten, &state, &StateFile::set);
    }
    Diagnostics diagnostics(m_input.name());
    running.start(std::move(plan), diagnostics);
    if (!m_signals.isStopRequested()) {
        reportAll(diagnostics);
    }
    if (m_options.view) {
        running.serve(*m_options.view);
    }
    const int status = show(running.window());
    running.stop();
    state.save();
    return status;
}

/// To the end; returns the exit status.
int PanelRun::show(PanelWindow& window)
{
    QObject::connect(&window, &PanelWindow::closed, qApp, &QCoreApplication::quit);

    if (m_options.pictureSize.isEmpty()) {
        window.fit(isPicture() ? kMaxPicture : window.screen()->availableSize());
    } else {
        window.resize(m_options.pictureSize);
    }
    if (m_options.kiosk) {
        window.keepScreen();
    } else if (m_options.fullscreen) {
        window.coverScreen();
    } else {
        window.show();
    }
    if (isPicture()) {
        QTimer::singleShot(m_options.pictureAfterMs, &window,
                           [this, &window] { QCoreApplication::exit(takePicture(window)); });
    }
    // Events are handled during the start, too.
    return m_signals.isStopRequested() ? 0 : QCoreApplication::exec();
}

int PanelRun::takePicture(PanelWindow& window) const
{
    QBuffer picture;
    picture.open(QIODevice::WriteOnly);
    window.grab().save(&picture, m_options.pictureFormat);
    QString reason;
    if (!writeFileAtomically(m_picturePath, picture.data(), reason)) {
        Console::reportError(
            QString("the picture %1 cannot be written: %2").arg(m_options.pictureFile, reason));
        return 1;
    }
    return 0;
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
    if (!loadPlugins(plugins, options.pluginFolders)) {
        return 1;
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
        return PanelRun(options, plugins.manager(), catalogue).run();
    }
}

} // namespace norvo
