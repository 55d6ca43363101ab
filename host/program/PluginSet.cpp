// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/PluginSet.h"

#include "host/panel/file/Diagnostics.h"

#include "norvo/DevicePluginInterface.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

#include <algorithm>

namespace norvo {

/// A plug-in that is of our interface.
struct PluginSet::Found
{
    QString file;      ///< As messages name it.
    QStringList types; ///< That it lists; empty: it does not say.
    std::unique_ptr<QPluginLoader> loader;
    bool isLoaded = false; ///< Or has failed to.

    bool lists(const QString& type) const { return types.contains(type, Qt::CaseInsensitive); }
};

namespace {

const QString kInterface = QStringLiteral(DevicePluginInterface_iid);

bool isSharedLibrary(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) && file.read(4) == QByteArray("\177ELF");
}

QStringList listedTypes(const QJsonObject& metaData)
{
    return metaData.value("MetaData").toObject().value("types").toVariant().toStringList();
}

} // namespace

PluginSet::PluginSet() = default;
PluginSet::~PluginSet() = default;
PluginSet::PluginSet(PluginSet&&) noexcept = default;
PluginSet& PluginSet::operator=(PluginSet&&) noexcept = default;

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
    find(folder);
    needAll();
}

void PluginSet::find(const QString& folder)
{
    const QDir dir(folder);
    if (!dir.exists() || !dir.isReadable()) {
        warn(folder, dir.exists() ? "this plug-in folder cannot be read"
                                  : "there is no such plug-in folder");
        return;
    }
    const QString canonicalFolder = dir.canonicalPath();
    const QFileInfoList files = dir.entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        if (QLibrary::isLibrary(file.fileName())) {
            findFile(dir.filePath(file.fileName()), file.isSymLink()
                                                        ? file.canonicalFilePath()
                                                        : canonicalFolder + '/' + file.fileName());
        }
    }
}

void PluginSet::findFile(const QString& file, const QString& canonical)
{
    if (m_seenFiles.contains(canonical)) {
        return;
    }
    m_seenFiles.insert(canonical);
    auto loader = std::make_unique<QPluginLoader>(canonical);
    const QJsonObject metaData = loader->metaData();
    if (metaData.isEmpty()) {
        return warn(file, !QFileInfo(file).isReadable() ? "this file cannot be read"
                          : isSharedLibrary(file)       ? "this library is not a plug-in"
                                                        : "this is not a shared library");
    }
    const QString interface = metaData.value("IID").toString();
    if (interface != kInterface) {
        return warn(file, QString("this plug-in is of another interface, \"%1\"; \"%2\" is needed")
                              .arg(interface, kInterface));
    }
    m_hasAll = false;
    m_found.push_back({file, listedTypes(metaData), std::move(loader)});
}

/// Those that do not list their types are loaded.
bool PluginSet::hasRivals() const
{
    QSet<QString> known;
    for (const Found& found : m_found) {
        for (const QString& type : found.types) {
            if (known.contains(type.toLower()) ||
                (!found.isLoaded && m_manager.factories().contains(type))) {
                return true;
            }
            known.insert(type.toLower());
        }
    }
    return false;
}

void PluginSet::need(const QStringList& types)
{
    const auto lists = [&types](const Found& found) {
        return std::any_of(types.cbegin(), types.cend(),
                           [&found](const QString& type) { return found.lists(type); });
    };
    for (Found& found : m_found) {
        if (found.types.isEmpty()) {
            load(found);
        }
    }
    if (hasRivals()) {
        return needAll();
    }
    for (Found& found : m_found) {
        if (lists(found)) {
            load(found);
        }
    }
    if (std::any_of(types.cbegin(), types.cend(), [this](const QString& type) {
            return !m_manager.factories().contains(type);
        })) {
        needAll();
    }
}

void PluginSet::needAll()
{
    if (m_hasAll) {
        return;
    }
    m_hasAll = true;
    if (hasRivals()) { // Each has to enter its types in its turn.
        m_manager = DeviceManager();
        for (Found& found : m_found) {
            found.isLoaded = false;
        }
    }
    for (Found& found : m_found) {
        load(found);
    }
}

bool PluginSet::isEmpty() const
{
    return m_manager.factories().isEmpty() &&
           std::all_of(m_found.cbegin(), m_found.cend(),
                       [](const Found& found) { return found.isLoaded; });
}

void PluginSet::load(Found& found)
{
    if (!found.isLoaded) {
        found.isLoaded = true;
        enterTypes(found);
    }
}

void PluginSet::enterTypes(const Found& found)
{
    const QString& file = found.file;
    QObject* const plugin = found.loader->instance();
    if (!plugin) {
        return warn(file,
                    "this plug-in does not load: " + found.loader->errorString().simplified());
    }
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
