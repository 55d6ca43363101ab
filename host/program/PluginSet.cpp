// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/PluginSet.h"

#include "host/panel/file/Diagnostics.h"

#include "norvo/DevicePluginInterface.h"

#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QPluginLoader>

namespace norvo {

namespace {

const QString kInterface = QStringLiteral(DevicePluginInterface_iid);

bool isSharedLibrary(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) && file.read(4) == QByteArray("\177ELF");
}

} // namespace

QStringList PluginSet::defaultFolders(const QString& programFolder)
{
    QStringList folders;
    for (const char* place : {"../plugins", NORVO_INSTALLED_PLUGINS}) {
        const QString folder = QDir::cleanPath(programFolder + '/' + place);
        if (QDir(folder).exists() && !folders.contains(folder)) {
            folders.append(folder);
        }
    }
    return folders;
}

void PluginSet::load(const QString& folder)
{
    const QDir dir(folder);
    if (!dir.exists() || !dir.isReadable()) {
        warn(folder, dir.exists() ? "this plug-in folder cannot be read"
                                  : "there is no such plug-in folder");
        return;
    }
    const QStringList names = dir.entryList(QDir::Files, QDir::Name);
    for (const QString& name : names) {
        if (QLibrary::isLibrary(name)) {
            loadFile(dir.filePath(name));
        }
    }
}

void PluginSet::loadFile(const QString& file)
{
    const QString canonical = QFileInfo(file).canonicalFilePath();
    if (m_seenFiles.contains(canonical)) {
        return;
    }
    m_seenFiles.insert(canonical);
    if (!QFileInfo(file).isReadable()) {
        return warn(file, "this file cannot be read");
    }
    if (!isSharedLibrary(file)) {
        return warn(file, "this is not a shared library");
    }
    QPluginLoader loader(canonical);
    const QJsonObject metaData = loader.metaData();
    if (metaData.isEmpty()) {
        return warn(file, "this library is not a plug-in");
    }
    const QString interface = metaData.value("IID").toString();
    if (interface != kInterface) {
        return warn(file, QString("this plug-in is of another interface, \"%1\"; \"%2\" is needed")
                              .arg(interface, kInterface));
    }
    QObject* plugin = loader.instance();
    if (!plugin) {
        return warn(file, "this plug-in does not load: " + loader.errorString().simplified());
    }
    enterTypes(file, plugin);
}

void PluginSet::enterTypes(const QString& file, QObject* plugin)
{
    auto* const interface = qobject_cast<DevicePluginInterface*>(plugin);
    if (!interface) {
        return warn(file, QString("this plug-in claims the interface \"%1\" and does not have it")
                              .arg(kInterface));
    }
    const auto before = m_manager.factories();
    interface->registerDeviceType(m_manager);
    for (auto type = before.cbegin(); type != before.cend(); ++type) {
        if (m_manager.factories().value(type.key()) != type.value()) {
            warn(
                file,
                QString("its device type \"%1\" replaces that of another plug-in").arg(type.key()));
        }
    }
}

void PluginSet::warn(const QString& file, const QString& text)
{
    m_warnings.append(Diagnostic{Diagnostic::Severity::Warning, file, {}, text}.toString());
}

} // namespace norvo
