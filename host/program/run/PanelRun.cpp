// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/run/PanelRun.h"

#include "host/catalogue/Catalogue.h"
#include "host/panel/state/AtomicFile.h"
#include "host/panel/state/StateFile.h"
#include "host/program/PluginSet.h"
#include "host/program/run/FileReload.h"
#include "host/program/run/PanelEditing.h"
#include "host/program/run/Reload.h"
#include "host/program/run/RunningPanel.h"
#include "host/program/streams/Console.h"
#include "host/texts/Language.h"
#include "host/window/PanelWindow.h"
#include "host/window/look/Look.h"

#include <QBuffer>
#include <QFileInfo>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

constexpr QSize kMaxPicture(3840, 2160);
const QString kPinCountEnding = QStringLiteral(".pins");
constexpr int kReadAgain = -1; ///< Instead of an exit status.

QString absolute(const QString& file)
{
    return file.isEmpty() ? QString() : QFileInfo(file).absoluteFilePath();
}

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

QStringList typesOf(const PanelDescription& description)
{
    QStringList types;
    for (const DeviceSetting& device : description.devices) {
        types.append(device.type.text);
    }
    types.removeDuplicates();
    return types;
}

} // namespace

PanelRun::PanelRun(const Options& options, PluginSet& plugins, const Catalogue& catalogue)
    : m_options(options),
      m_plugins(plugins),
      m_catalogue(catalogue),
      m_knowledge(catalogue),
      m_input(options.panelFiles.constFirst()),
      m_keepsState(options.keepsState &&
                   !(m_input.isStandardInput() && options.stateFile.isEmpty())),
      m_stateFile(options.stateFile.isEmpty() ? StateFile::besidePanel(m_input.name())
                                              : options.stateFile),
      m_alarmFile(m_keepsState && !isPicture() ? absolute(AlarmHistory::besideState(m_stateFile))
                                               : QString()),
      m_picturePath(absolute(options.pictureFile)),
      m_auditPath(absolute(options.auditFile)),
      m_historyPath(absolute(HistorySetting::besidePanel(m_input.name())))
{
    QObject::connect(&m_signals, &UnixSignals::stopRequested, qApp, &QCoreApplication::quit);
    if (options.kiosk) {
        m_kiosk.emplace(*qApp, displayOf(options.qtArguments));
    }
}

bool PanelRun::isWatched() const
{
    return m_options.reloads && !isPicture() && !m_input.isStandardInput();
}

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
    StateFile state(m_stateFile,
                    isPicture() ? StateFile::Mode::ReadOnly : StateFile::Mode::ReadWrite);
    if (isWatched()) {
        m_watch.watch({m_input.path()});
    }
    PanelDescription description = read(diagnostics);
    settle(description);
    wear(description.look);
    if (m_keepsState && !diagnostics.hasErrors()) {
        QObject::connect(&state, &StateFile::problem, &Console::report);
        state.read();
    }
    needTypes(description);
    chooseSurface(description);
    PanelPlan plan = PanelPlan::make(description, m_plugins.manager(),
                                     {state.fileName(), state.state(), state.places()}, diagnostics,
                                     {}, m_knowledge);
    if (m_signals.isStopRequested()) {
        return 0;
    }
    reportAll(diagnostics);
    return diagnostics.preventsStart() ? showErrors(diagnostics)
                                       : runPanel(std::move(plan), description, diagnostics, state);
}

/// One that is edited may be new.
PanelDescription PanelRun::read(Diagnostics& diagnostics) const
{
    const auto text =
        m_options.edits ? PanelEditing::newText(m_input.path()) : std::optional<QByteArray>();
    return text ? m_input.parse(*text, diagnostics) : m_input.read(diagnostics);
}

/// A style that is set anew has every widget look at itself again.
void PanelRun::wear(const PanelLook& look)
{
    if (!m_worn || m_worn->language != look.language) {
        Language::use(*qGuiApp, look.language);
    }
    const bool isNew = !m_worn || m_worn->theme != look.theme || m_worn->touch != look.touch ||
                       m_worn->fit != look.fit;
    if (isNew && !m_options.qtArguments.contains("-style")) {
        Look::apply(*qApp, look);
    }
    m_worn = look;
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

void PanelRun::needTypes(const PanelDescription& description) const
{
    m_plugins.need(typesOf(description));
    Console::reportEach(m_plugins.takeWarnings());
}

/// A window that OpenGL may draw to has the display's loaded with it, which takes more memory than
/// a whole panel, and longer than its start. What comes to need it later is drawn without.
void PanelRun::chooseSurface(const PanelDescription& description) const
{
    const QStringList types = typesOf(description);
    const bool mayUseOpenGl =
        std::any_of(types.cbegin(), types.cend(), [this](const QString& type) {
            const TypeWords* const words = m_catalogue.wordsForCheck(type);
            return !words || words->purpose.isEmpty() || words->drawsByOpenGl;
        });
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets, !mayUseOpenGl);
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

int PanelRun::runPanel(PanelPlan plan, const PanelDescription& description, Diagnostics& found,
                       StateFile& state)
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
    Reload reload({m_input, m_plugins.manager(), m_catalogue, m_knowledge, state, running,
                   [this](PanelDescription& changed) {
                       settle(changed);
                       needTypes(changed);
                   },
                   [this](const PanelLook& look) { wear(look); }},
                  found.sorted() + diagnostics.sorted());
    std::optional<FileReload> file;
    if (isWatched()) {
        file.emplace(m_input, m_watch, reload, running.window());
    }
    std::optional<PanelEditing> editing;
    if (!m_options.kiosk && !isPicture() && !m_input.isStandardInput()) {
        editing.emplace(
            PanelEditing::Parts{m_input, m_catalogue, reload, running, file ? &*file : nullptr});
        QObject::connect(&*editing, &PanelEditing::beginning, &*editing, [this] {
            m_plugins.needAll();
            Console::reportEach(m_plugins.takeWarnings());
        });
    }
    if (editing && m_options.edits) {
        editing->begin();
    }
    const int status = show(running.window());
    editing.reset();
    file.reset();
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

} // namespace norvo
