// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/Diagnostics.h"

#include <QByteArray>
#include <QObject>
#include <QStringList>

#include <functional>

namespace norvo {

class FileFault;
class FileWatch;
class PanelInput;
class PanelWindow;
class Reload;

/// Follows the file of a running panel, and all that it names: a change is taken over, or the strip
/// of the window says what is wrong with it.
class FileReload : public QObject
{
    Q_OBJECT

public:
    /// Takes a new text of the file in place of the panel; false: the panel is to take it.
    using TakeText = std::function<bool(const QByteArray& text)>;

    /// All of them outlive this; `watch` watches the panel's file already.
    FileReload(const PanelInput& input, FileWatch& watch, Reload& reload, PanelWindow& window);

    void setTakeText(TakeText take) { m_take = std::move(take); }
    void readAgain(const QStringList& changedFiles = {});

private:
    void follow(const QStringList& files);
    void watchAll();
    void tell(const Diagnostics& diagnostics);

    const PanelInput& m_input;
    FileWatch& m_watch;
    Reload& m_reload;
    FileFault* const m_fault; ///< The window owns it.
    TakeText m_take;
};

} // namespace norvo
