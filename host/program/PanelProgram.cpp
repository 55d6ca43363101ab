#include "host/program/PanelProgram.h"

#include "host/program/Display.h"
#include "host/program/Console.h"
#include "host/program/Fonts.h"
#include "host/panel/run/Panel.h"
#include "host/panel/plan/PanelCheck.h"
#include "host/panel/file/PanelFile.h"
#include "host/window/PanelWindow.h"
#include "host/program/PluginSet.h"
#include "host/panel/file/StateFile.h"
#include "host/program/UnixSignals.h"
#include "host/panel/file/AtomicFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QFontDatabase>
#include <QScreen>
#include <QTimer>

namespace norvo {

namespace {

constexpr QSize kLargestPicture(3840, 2160);

QString titleOf(const PanelDescription& description)
{
    return description.title.text.isEmpty() ? QFileInfo(description.file).fileName()
                                            : description.title.text;
}

} // namespace

PanelProgram::PanelProgram(const Options& options) : m_options(options) {}

int PanelProgram::run()
{
    QString reason;
    const auto application = Display::open(
        m_options.action == Options::Action::Run ? Display::Kind::Screen : Display::Kind::OffScreen,
        reason);
    if (!application) {
        complain(reason);
        return 1;
    }
    substituteFonts(QFontDatabase().families());
    PluginSet plugins;
    if (!loadPlugins(plugins)) {
        return 1;
    }
    Diagnostics diagnostics(m_options.panelFile);
    const PanelDescription description = PanelFile::read(m_options.panelFile, diagnostics);
    PanelCheck::check(description, plugins.manager(), diagnostics);
    if (m_options.action == Options::Action::Check) {
        return reportCheck(diagnostics);
    }
    // From before anything is told to the very end, so that no signal cuts the stop short.
    const UnixSignals unixSignals;
    print(stderr, diagnostics);
    return diagnostics.hasErrors() ? showErrors(diagnostics, unixSignals)
                                   : runPanel(plugins.manager(), description, unixSignals);
}

bool PanelProgram::loadPlugins(PluginSet& plugins) const
{
    const QStringList folders =
        PluginSet::defaultFolders(QCoreApplication::applicationDirPath()) + m_options.pluginFolders;
    for (const QString& folder : folders) {
        plugins.load(folder);
    }
    for (const QString& warning : plugins.warnings()) {
        print(stderr, warning);
    }
    if (plugins.isEmpty()) {
        complain("there are no devices, because no plug-in was found; --plugins DIR names a folder "
                 "that holds some");
    }
    return !plugins.isEmpty();
}

int PanelProgram::reportCheck(const Diagnostics& diagnostics) const
{
    print(stdout, diagnostics);
    print(stdout, QString("%1: %2").arg(m_options.panelFile, diagnostics.summary()));
    return diagnostics.hasErrors() ? 1 : 0;
}

int PanelProgram::showErrors(const Diagnostics& diagnostics, const UnixSignals& unixSignals) const
{
    PanelWindow window(QFileInfo(m_options.panelFile).fileName());
    window.showErrors(diagnostics);
    show(window, unixSignals);
    return 1;
}

int PanelProgram::runPanel(const DeviceManager& manager, const PanelDescription& description,
                           const UnixSignals& unixSignals) const
{
    StateFile state(m_options.stateFile.isEmpty() ? StateFile::besidePanel(m_options.panelFile)
                                                  : m_options.stateFile,
                    m_options.action == Options::Action::Run ? StateFile::Mode::ReadWrite
                                                             : StateFile::Mode::ReadOnly);
    if (m_options.keepsState) {
        readState(state);
    }
    PanelWindow window(titleOf(description));
    Panel panel(manager, description, state.state());
    if (m_options.keepsState) {
        QObject::connect(&panel, &Panel::parameterWritten, &state, &StateFile::set);
    }
    panel.start(window.page());
    print(stderr, panel.diagnostics());
    const int status = show(window, unixSignals);
    panel.stop();
    state.save();
    return status;
}

void PanelProgram::readState(StateFile& state) const
{
    QObject::connect(&state, &StateFile::problem, &state,
                     [](const QString& line) { print(stderr, line); });
    state.read();
}

int PanelProgram::show(PanelWindow& window, const UnixSignals& unixSignals) const
{
    const bool isPicture = m_options.action == Options::Action::Screenshot;
    QObject::connect(&unixSignals, &UnixSignals::stopRequested, &window, [isPicture] {
        if (isPicture) {
            complain("stopped before the picture was taken");
        }
        QCoreApplication::exit(isPicture ? 1 : 0);
    });
    QObject::connect(&window, &PanelWindow::closed, qApp, &QCoreApplication::quit);

    window.fit(isPicture ? kLargestPicture : window.screen()->availableSize());
    if (m_options.fullscreen) {
        window.showFullScreen();
    } else {
        window.show();
    }
    if (isPicture) {
        QTimer::singleShot(m_options.pictureAfterMs, &window,
                           [this, &window] { QCoreApplication::exit(takePicture(window)); });
    }
    return QCoreApplication::exec();
}

int PanelProgram::takePicture(PanelWindow& window) const
{
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    window.grab().save(&png, "PNG");
    QString reason;
    if (!writeFileAtomically(m_options.pictureFile, png.data(), reason)) {
        complain(
            QString("the picture %1 cannot be written: %2").arg(m_options.pictureFile, reason));
        return 1;
    }
    return 0;
}

} // namespace norvo
