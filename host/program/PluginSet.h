// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/DeviceManager.h"

#include <QSet>
#include <QStringList>

class QObject;

namespace norvo {

/// The device types of all plug-ins that were found.
///
/// A file that is named like a library and is not a plug-in for panels is reported in a line of its
/// own and left out; nothing of it is loaded. Loaded plug-ins stay loaded until the process ends.
class PluginSet
{
public:
    /// Where plug-ins lie by default, in the build folder and in an installation. `programFolder`
    /// is the folder of the running program. Holds existing folders only.
    static QStringList defaultFolders(const QString& programFolder);

    /// Loads every plug-in of the folder, in the order of their names. A file that was seen before,
    /// also under another name, is passed over. A type that comes again replaces the older one.
    void load(const QString& folder);

    const DeviceManager& manager() const { return m_manager; }
    const QStringList& warnings() const { return m_warnings; }       ///< One line each.
    bool isEmpty() const { return m_manager.factories().isEmpty(); } ///< True: no device type.

private:
    void loadFile(const QString& file);
    void enterTypes(const QString& file, QObject* plugin);
    void warn(const QString& file, const QString& text);

    DeviceManager m_manager;
    QStringList m_warnings;
    QSet<QString> m_seenFiles;
};

} // namespace norvo
