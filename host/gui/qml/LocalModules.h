// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace norvo {

/// Keeps the modules of the current folder behind those of the system: where both have one, Qt
/// takes the folder with the more exact version in its name, wherever it stands among the import
/// paths. A module can name native code, and the current folder was not chosen for that.
class LocalModules
{
public:
    explicit LocalModules(const QStringList& importPaths);

    /// Whether the module with that qmldir file is not to be used. From any thread.
    bool isAside(const QString& qmldir) const;

private:
    const QString m_folder; ///< With a slash at its end.
    QStringList m_systemPaths;
};

} // namespace norvo
