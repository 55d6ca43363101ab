// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/DeviceManager.h"

#include <QSet>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

class QObject;
class QPluginLoader;

namespace norvo {

/// The device types of all plug-ins that were found.
///
/// A file that is named like a library and is not a plug-in for panels is reported in a line of its
/// own and left out; nothing of it is loaded. Loaded plug-ins stay loaded until the process ends.
///
/// A plug-in whose metadata list its device types, {"types": ["label", "lamp"]}, need not be loaded
/// by a panel that has none of them. One that does not say is always loaded. Where two have the
/// same type, all are: the later one's counts.
class PluginSet
{
public:
    PluginSet();
    ~PluginSet();
    PluginSet(PluginSet&&) noexcept;
    PluginSet& operator=(PluginSet&&) noexcept;

    /// Where plug-ins lie by default, in the build folder and in an installation. `programFolder`
    /// is the folder of the running program. Holds existing folders only.
    static QStringList defaultFolders(const QString& programFolder);

    /// Looks for the plug-ins of the folder, in the order of their names, and loads none. A file
    /// that was seen before, also under another name, is passed over.
    void find(const QString& folder);
    /// Loads the plug-ins that have these types, in any case; all, where one of the types is of
    /// none. A type that comes again replaces the older one.
    void need(const QStringList& types);
    void needAll();                   ///< Loads all that were found.
    void load(const QString& folder); ///< Finds and loads them.

    const DeviceManager& manager() const { return m_manager; }
    const QStringList& warnings() const { return m_warnings; } ///< One line each.
    QStringList takeWarnings() { return std::exchange(m_warnings, {}); }
    bool isEmpty() const; ///< True: no device type.

private:
    struct Found;

    void findFile(const QString& file, const QString& canonical);
    bool hasRivals() const; ///< Whether two plug-ins have the same type.
    void load(Found& found);
    void enterTypes(const Found& found);
    void warn(const QString& file, const QString& text);

    DeviceManager m_manager;
    QStringList m_warnings;
    QSet<QString> m_seenFiles;
    std::vector<Found> m_found; ///< In the order in which their types count.
    bool m_hasAll = false;      ///< That were found.
};

} // namespace norvo
