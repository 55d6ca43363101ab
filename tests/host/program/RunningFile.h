// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "../BuiltTypes.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/state/StateFile.h"
#include "host/program/PanelInput.h"
#include "host/program/run/FileReload.h"
#include "host/program/run/Reload.h"
#include "host/program/run/RunningPanel.h"
#include "host/services/reload/FileWatch.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

/// A panel that runs from a file in a folder of its own, and follows it, as the program has it.
struct RunningFile
{
    explicit RunningFile(const QByteArray& text, const QSize& size = {1280, 800})
        : path(folder.filePath("panel.yaml")),
          knowledge(catalogue()),
          input(path),
          state(norvo::StateFile::besidePanel(path), norvo::StateFile::Mode::ReadOnly)
    {
        write("panel.yaml", text);
        watch.watch({path});
        norvo::Diagnostics diagnostics(path);
        running = std::make_unique<norvo::RunningPanel>(input.read(diagnostics), knowledge,
                                                        folder.filePath("alarms.jsonl"));
        running->start(norvo::PanelPlan::make(running->description(), builtTypes(), {}, diagnostics,
                                              {}, knowledge),
                       diagnostics);
        if (diagnostics.preventsStart()) {
            qFatal("%s", qPrintable(diagnostics.sorted().constFirst().toString()));
        }
        reload = std::make_unique<norvo::Reload>(
            norvo::Reload::Parts{input, builtTypes(), catalogue(), knowledge, state, *running,
                                 [](norvo::PanelDescription&) {}, [](const norvo::PanelLook&) {}},
            diagnostics.sorted());
        file = std::make_unique<norvo::FileReload>(input, watch, *reload, running->window());
        running->window().resize(size);
        running->window().show();
        settle();
    }
    ~RunningFile()
    {
        file.reset();
        running->stop();
        QDir::setCurrent(startFolder);
    }

    static const norvo::Catalogue& catalogue()
    {
        static const norvo::Catalogue catalogue(builtTypes());
        return catalogue;
    }
    static void settle()
    {
        for (int i = 0; i < 20; ++i) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// The panel, or a file beside it.
    void write(const QString& name, const QByteArray& text) const
    {
        QFile out(folder.filePath(name));
        if (!out.open(QIODevice::WriteOnly) || out.write(text) != text.size()) {
            qFatal("cannot write %s", qPrintable(out.fileName()));
        }
    }
    /// Lets another text run; it must be one that can.
    void change(const QByteArray& text)
    {
        norvo::Diagnostics diagnostics("panel.yaml");
        if (!reload->run(text, {}, diagnostics)) {
            qFatal("%s", qPrintable(diagnostics.sorted().constFirst().toString()));
        }
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    const QString startFolder = QDir::currentPath();
    const QTemporaryDir folder;
    const QString path;
    const norvo::SenseCheck knowledge;
    const norvo::PanelInput input;
    const norvo::StateFile state;
    norvo::FileWatch watch;
    std::unique_ptr<norvo::RunningPanel> running;
    std::unique_ptr<norvo::Reload> reload;
    std::unique_ptr<norvo::FileReload> file;
};
