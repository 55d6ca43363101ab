// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/Listing.h"
#include "host/panel/file/look/PanelLook.h"
#include "host/services/view/ViewSettings.h"

#include <QByteArray>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

#include <limits>
#include <optional>

namespace norvo {

/// A new value for a parameter in a panel file.
struct ParamChange
{
    QString device; ///< Its id.
    QString param;
    QString value;
};

/// What the program was asked to do.
struct Options
{
    enum class Action {
        Run,
        Check,
        Set,
        Screenshot,
        Types,
        Describe,
        DescribeAll,
        Schema,
        MakePin,
        Export,
        Help,
        Version
    };

    Action action = Action::Run;
    QStringList panelFiles;       ///< One, or several for a check; "-" is standard input.
    QVector<ParamChange> changes; ///< In the order of the command line.
    QString describedType;        ///< Of the action Describe.
    Listing::Format format = Listing::Format::Text;
    QStringList pluginFolders; ///< In addition to the default ones.
    QString stateFile;         ///< Empty: beside the panel file.
    bool keepsState = true;
    bool reloads = true;              ///< When the panel's file changes.
    QString auditFile;                ///< Empty: what the panel file says.
    std::optional<ViewSettings> view; ///< None: the panel is not served.
    bool fullscreen = false;
    bool kiosk = false;                    ///< On the whole screen, which nobody can leave.
    bool edits = false;                    ///< The panel, which may be new, is edited at once.
    std::optional<PanelLook::Theme> theme; ///< None: what the panel file says.
    bool verbose = false;
    QStringList qtArguments; ///< Qt's own options, as QApplication reads them.
    QString pictureFile;
    QByteArray pictureFormat; ///< What the picture file's ending says; one that Qt can write.
    QSize pictureSize;        ///< Empty: what the panel needs.
    int pictureAfterMs = 500; ///< From the start of the event loop to the picture.

    QString exportFile;    ///< "-" is standard output.
    qint64 exportFrom = 0; ///< Milliseconds since the epoch; both ends are included.
    qint64 exportTo = std::numeric_limits<qint64>::max();

    bool isListing() const ///< Of device types, without a panel.
    {
        return action == Action::Types || action == Action::Describe ||
               action == Action::DescribeAll || action == Action::Schema;
    }
};

namespace CommandLine {

/// The options that the arguments stand for; the first argument is the program's name. What is
/// wrong with them goes into `error`, which is otherwise left empty.
Options parse(const QStringList& arguments, QString& error);

QString helpText();
QString versionText();

} // namespace CommandLine

} // namespace norvo
