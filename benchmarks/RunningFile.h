// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/SenseCheck.h"
#include "host/panel/state/StateFile.h"
#include "host/program/PanelInput.h"
#include "host/program/run/FileReload.h"
#include "host/program/run/Reload.h"
#include "host/program/run/RunningPanel.h"
#include "host/services/reload/FileWatch.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <memory>

namespace norvo {

const DeviceManager& deviceTypes(); ///< Of all plug-ins of the build.
const Catalogue& catalogue();       ///< Of them.

/// A panel that runs from a file, as the program has it.
struct RunningFile
{
    explicit RunningFile(const QByteArray& text); ///< Ends the program where it has an error.
    ~RunningFile();

    void write(const QByteArray& text) const; ///< Into the file.
    static void settle();                     ///< Lets everything that is due happen.

    QTemporaryDir folder;
    const QString path;
    const SenseCheck knowledge;
    const PanelInput input;
    StateFile state;
    FileWatch watch;
    std::unique_ptr<RunningPanel> running;
    std::unique_ptr<Reload> reload;
    std::unique_ptr<FileReload> file;
};

double milliseconds(const QElapsedTimer& clock);

} // namespace norvo
