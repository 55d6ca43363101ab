// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/PanelProgram.h"

#include "host/panel/file/AtomicFile.h"
#include "host/panel/file/Diagnostics.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/file/StateFile.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/program/Console.h"
#include "host/program/Display.h"
#include "host/program/Fonts.h"
#include "host/program/PluginSet.h"
#include "host/program/UnixSignals.h"
#include "host/window/PanelPages.h"
#include "host/window/PanelWindow.h"

#include <QBuffer>
#include <QFileInfo>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace norvo {

namespace {

constexpr QSize kMaxPicture(3840, 2160);

QString titleOf(const PanelDescription& description)
{
    return description.title.text.isEmpty() ? QFileInfo(description.file).fileName()
                                            : description.title.text;
}

void report(const Diagnostics& diagnostics)
{
    for (const Diagnostic& diagnostic : diagnostics.sorted()) {
        Console::report(diagnostic.toString());
    }
}

} // namespace

PanelProgram::PanelProgram(const Options& options) : m_options(options) {}

int PanelProgram::run()
{
    QString reason;
    const auto application = Display::open(
        m_options.action == Options::Action::Run ? Display::Kind::Screen : Display::Kind::OffScreen,
        m_options.qtArguments, reason);
    if (!application) {
        Console::complain(reason);
        return 1;
    }
    substituteFonts();
    PluginSet plugins;
    if (!loadPlugins(plugins)) {
        return 1;
    }
    if (m_options.action == Options::Action::Check) {
        return check(plugins.manager());
    }
    // From before anything starts to the very end. Ends a wait of the start, too.
    const UnixSignals unixSignals;
    QObject::connect(&unixSignals, &UnixSignals::stopRequested, qApp, &QCoreApplication::quit);
    const int status = start(plugins.manager(), unixSignals);
    if (unixSignals.isStopRequested() && m_options.action == Options::Action::Screenshot) {
        Console::complain("stopped before the picture was taken");
        return 1;
    }
    return status;
}

int PanelProgram::start(const DeviceManager& manager, const UnixSignals& unixSignals) const
{
    Diagnostics diagnostics(m_options.panelFile);
    const PanelDescription description = PanelFile::read(m_options.panelFile, diagnostics);
    StateFile state(m_options.stateFile.isEmpty() ? StateFile::besidePanel(m_options.panelFile)
                                                  : m_options.stateFile,
                    m_options.action == Options::Action::Run ? StateFile::Mode::ReadWrite
                                                             : StateFile::Mode::ReadOnly);
    if (m_options.keepsState && !diagnostics.hasErrors()) {
        readState(state);
    }
    PanelPlan plan = PanelPlan::make(
        description, manager, {state.fileName(), state.state(), state.places()}, diagnostics);
    if (unixSignals.isStopRequested()) {
        return 0;
    }
    report(diagnostics);
    return diagnostics.hasErrors()
               ? showErrors(diagnostics, unixSignals)
               : runPanel(std::move(plan), titleOf(description), state, unixSignals);
}

bool PanelProgram::loadPlugins(PluginSet& plugins) const
{
    const QStringList folders =
        PluginSet::defaultFolders(QCoreApplication::applicationDirPath()) + m_options.pluginFolders;
    for (const QString& folder : folders) {
        plugins.load(folder);
    }
    for (const QString& warning : plugins.warnings()) {
        Console::report(warning);
    }
    if (plugins.isEmpty()) {
        Console::complain(
            "there are no devices, because no plug-in was found; --plugins DIR names a folder "
            "that holds some");
    }
    return !plugins.isEmpty();
}

int PanelProgram::check(const DeviceManager& manager) const
{
    Diagnostics diagnostics(m_options.panelFile);
    PanelPlan::make(PanelFile::read(m_options.panelFile, diagnostics), manager, {}, diagnostics);
    for (const Diagnostic& diagnostic : diagnostics.sorted()) {
        Console::print(diagnostic.toString());
    }
    Console::print(QString("%1: %2").arg(m_options.panelFile, diagnostics.summary()));
    return diagnostics.hasErrors() ? 1 : 0;
}

int PanelProgram::showErrors(const Diagnostics& diagnostics, const UnixSignals& unixSignals) const
{
    PanelWindow window(QFileInfo(m_options.panelFile).fileName());
    window.showErrors(diagnostics);
    show(window, unixSignals);
    return 1;
}

int PanelProgram::runPanel(PanelPlan plan, const QString& title, StateFile& state,
                           const UnixSignals& unixSignals) const
{
    PanelWindow window(title);
    auto* const pages = new PanelPages;
    (new QVBoxLayout(window.page()))->addWidget(pages);
    Panel panel(*pages);
    if (m_options.keepsState) {
        QObject::connect(&panel, &Panel::parameterWritten, &state, &StateFile::set);
    }
    Diagnostics diagnostics(m_options.panelFile);
    panel.apply(std::move(plan), diagnostics);
    if (!unixSignals.isStopRequested()) {
        report(diagnostics);
    }
    const int status = show(window, unixSignals);
    panel.stop();
    state.save();
    return status;
}

void PanelProgram::readState(StateFile& state) const
{
    QObject::connect(&state, &StateFile::problem, &state,
                     [](const QString& line) { Console::report(line); });
    state.read();
}

int PanelProgram::show(PanelWindow& window, const UnixSignals& unixSignals) const
{
    const bool isPicture = m_options.action == Options::Action::Screenshot;
    QObject::connect(&window, &PanelWindow::closed, qApp, &QCoreApplication::quit);

    if (m_options.pictureSize.isEmpty()) {
        window.fit(isPicture ? kMaxPicture : window.screen()->availableSize());
    } else {
        window.resize(m_options.pictureSize);
    }
    if (m_options.fullscreen) {
        window.coverScreen();
    } else {
        window.show();
    }
    if (isPicture) {
        QTimer::singleShot(m_options.pictureAfterMs, &window,
                           [this, &window] { QCoreApplication::exit(takePicture(window)); });
    }
    // Events are handled during the start, too.
    return unixSignals.isStopRequested() ? 0 : QCoreApplication::exec();
}

int PanelProgram::takePicture(PanelWindow& window) const
{
    QBuffer picture;
    picture.open(QIODevice::WriteOnly);
    window.grab().save(&picture, m_options.pictureFormat);
    QString reason;
    if (!writeFileAtomically(m_options.pictureFile, picture.data(), reason)) {
        Console::complain(
            QString("the picture %1 cannot be written: %2").arg(m_options.pictureFile, reason));
        return 1;
    }
    return 0;
}

} // namespace norvo
