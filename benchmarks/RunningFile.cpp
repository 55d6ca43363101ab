// SPDX-License-Identifier: GPL-3.0-or-later

#include "benchmarks/RunningFile.h"

#include "host/catalogue/Catalogue.h"
#include "host/program/PluginSet.h"
#include "host/window/PanelWindow.h"

#include <QCoreApplication>
#include <QFile>

namespace norvo {

const DeviceManager& deviceTypes()
{
    static PluginSet plugins;
    if (plugins.isEmpty()) {
        plugins.load(NORVO_BUILD_DIR "/plugins");
    }
    return plugins.manager();
}

const Catalogue& catalogue()
{
    static const Catalogue catalogue(deviceTypes());
    return catalogue;
}

RunningFile::RunningFile(const QByteArray& text)
    : path(folder.filePath("panel.yaml")),
      knowledge(catalogue()),
      input(path),
      state(StateFile::besidePanel(path), StateFile::Mode::ReadOnly)
{
    write(text);
    watch.watch({path});
    Diagnostics diagnostics(path);
    running = std::make_unique<RunningPanel>(input.read(diagnostics), knowledge, QString());
    running->start(
        PanelPlan::make(running->description(), deviceTypes(), {}, diagnostics, {}, knowledge),
        diagnostics);
    if (diagnostics.hasErrors()) {
        qFatal("%s", qPrintable(diagnostics.sorted().constFirst().toString()));
    }
    reload = std::make_unique<Reload>(Reload::Parts{input, deviceTypes(), catalogue(), knowledge,
                                                    state, *running, [](PanelDescription&) {},
                                                    [](const PanelLook&) {}},
                                      diagnostics.sorted());
    file = std::make_unique<FileReload>(input, watch, *reload, running->window());
    running->window().resize(1280, 800);
    running->window().show();
    settle();
}

RunningFile::~RunningFile()
{
    file.reset();
    running->stop();
}

void RunningFile::write(const QByteArray& text) const
{
    QFile to(path);
    if (!to.open(QIODevice::WriteOnly) || to.write(text) != text.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

void RunningFile::settle()
{
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
}

double milliseconds(const QElapsedTimer& clock)
{
    return double(clock.nsecsElapsed()) * 1e-6;
}

} // namespace norvo
