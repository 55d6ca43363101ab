// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QQmlAbstractUrlInterceptor>
#include <QString>
#include <QStringList>

namespace norvo {

/// Keeps the modules of the current folder behind those of the system: where both have one, Qt
/// takes the folder with the more exact version in its name, wherever it stands among the import
/// paths. A module can name native code, and nobody has chosen the current folder for that.
class LocalModules : public QQmlAbstractUrlInterceptor
{
public:
    explicit LocalModules(const QStringList& importPaths);

    QUrl intercept(const QUrl& url, DataType type) override; ///< From any of the engine's threads.

private:
    bool isAside(const QString& qmldir) const;

    const QString m_folder; ///< With a slash at its end.
    QStringList m_systemPaths;
};

} // namespace norvo
