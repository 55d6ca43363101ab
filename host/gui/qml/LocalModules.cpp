// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/LocalModules.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace norvo {

namespace {

/// Whether the module is in that folder, with or without versions in the names of its folders.
bool holdsModule(const QDir& folder, const QStringList& names)
{
    if (names.isEmpty()) {
        return folder.exists("qmldir");
    }
    const QStringList entries = folder.entryList({names[0], names[0] + ".*"}, QDir::Dirs);
    return std::any_of(entries.cbegin(), entries.cend(), [&](const QString& entry) {
        return holdsModule(folder.filePath(entry), names.mid(1));
    });
}

bool namesNativeCode(const QString& qmldir)
{
    static const QRegularExpression plugin("^\\s*(optional\\s+)?plugin\\b",
                                           QRegularExpression::MultilineOption);
    QFile file(qmldir);
    return file.open(QIODevice::ReadOnly) && plugin.match(file.readAll()).hasMatch();
}

} // namespace

LocalModules::LocalModules(const QStringList& importPaths)
    : m_folder(QDir::current().canonicalPath() + "/"), m_systemPaths(importPaths)
{
    m_systemPaths.removeAll(QDir::current().canonicalPath());
}

bool LocalModules::isAside(const QString& qmldir) const
{
    static const QRegularExpression version("\\.[0-9]+(\\.[0-9]+)?$");
    if (!qmldir.startsWith(m_folder) || !QFile::exists(qmldir)) {
        return false;
    }
    QStringList names = qmldir.mid(m_folder.size()).split('/', Qt::SkipEmptyParts);
    names.removeLast();
    if (names.isEmpty()) { // beside a document that is a text, and not put there for it
        return namesNativeCode(qmldir);
    }
    for (QString& name : names) {
        name.remove(version);
    }
    return std::any_of(m_systemPaths.cbegin(), m_systemPaths.cend(),
                       [&](const QString& path) { return holdsModule(path, names); });
}

} // namespace norvo
