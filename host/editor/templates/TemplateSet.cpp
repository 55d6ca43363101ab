// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/templates/TemplateSet.h"

#include "host/catalogue/Catalogue.h"
#include "host/panel/edit/PanelKeyEdit.h"
#include "host/panel/file/Diagnostics.h"
#include "host/panel/file/PanelFile.h"
#include "host/yaml/YamlEdit.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>

// A library's resources are known to a program once it has named them.
static void loadTemplates()
{
    Q_INIT_RESOURCE(templates);
}

namespace norvo {

namespace {

const QString kProgramFolder = QStringLiteral(":/norvo/templates");
constexpr qint64 kMaxSize = 1 << 20; // bytes
constexpr int kMaxName = 60;         // characters of a file's name

/// The lines with "#" that a file begins with, as one.
QString headOf(const QByteArray& text)
{
    QStringList words;
    for (const QString& line : QString::fromUtf8(text).split('\n')) {
        if (!line.startsWith('#')) {
            break;
        }
        words += line.mid(1).trimmed();
    }
    return words.join(' ').trimmed();
}

QString fileNameFor(const QString& title)
{
    QString name;
    for (const QChar letter : title.simplified().left(kMaxName)) {
        name += letter.isLetterOrNumber() || letter == '-' ? letter.toLower() : QChar('-');
    }
    return name;
}

} // namespace

TemplateSet::TemplateSet(const Catalogue& catalogue, const QString& panelFile)
    : m_catalogue(catalogue),
      m_besidePanel(QFileInfo(panelFile).absoluteDir().filePath("templates"))
{
    loadTemplates();
}

QString TemplateSet::ownFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           "/norvo/templates";
}

const PanelTemplate* TemplateSet::find(const QString& file) const
{
    const auto found = std::find_if(m_all.cbegin(), m_all.cend(),
                                    [&file](const PanelTemplate& one) { return one.file == file; });
    return found == m_all.cend() ? nullptr : &*found;
}

void TemplateSet::read()
{
    m_all.clear();
    readFolder(kProgramFolder, false);
    const int others = m_all.size();
    readFolder(m_besidePanel, false);
    if (QDir(ownFolder()) != QDir(m_besidePanel)) {
        readFolder(ownFolder(), true);
    }
    std::stable_sort(m_all.begin() + others, m_all.end(),
                     [](const PanelTemplate& a, const PanelTemplate& b) {
                         return a.title.localeAwareCompare(b.title) < 0;
                     });
    emit changed();
}

void TemplateSet::readFolder(const QString& folder, bool isOwn)
{
    const QFileInfoList files =
        QDir(folder).entryInfoList({"*.yaml"}, QDir::Files | QDir::Readable, QDir::Name);
    for (const QFileInfo& file : files) {
        m_all.append(readFile(file.filePath()));
        m_all.last().isOwn = isOwn;
    }
}

PanelTemplate TemplateSet::readFile(const QString& file) const
{
    PanelTemplate read;
    read.file = file;
    read.title = QFileInfo(file).completeBaseName();
    QFile device(file);
    if (!device.open(QIODevice::ReadOnly) || device.size() > kMaxSize) {
        read.fault = device.isOpen() ? tr("The file is too large") : device.errorString();
        return read;
    }
    read.text = device.readAll();
    Diagnostics diagnostics(QFileInfo(file).fileName());
    read.panel = PanelFile::parse(read.text, file, diagnostics);
    const auto error = diagnostics.firstError();
    read.fault = error ? error->toString() : QString();
    if (!read.panel.title.text.isEmpty()) {
        read.title = read.panel.title.text;
    }
    QStringList devices;
    for (const DeviceSetting& one : qAsConst(read.panel.devices)) {
        const TypeWords* const words = m_catalogue.words(one.type.text);
        if (!words && read.fault.isEmpty()) {
            read.fault = tr("It needs the type %1, which no plug-in has").arg(one.type.text);
        }
        devices += words ? words->title : one.type.text;
    }
    if (devices.isEmpty() && read.fault.isEmpty()) {
        read.fault = tr("It has no devices");
    }
    read.purpose = headOf(read.text);
    if (read.purpose.isEmpty()) {
        devices.removeDuplicates();
        read.purpose = devices.join(", ");
    }
    return read;
}

QString TemplateSet::save(const QString& title, const QByteArray& panel)
{
    const QString name = title.simplified();
    if (name.isEmpty()) {
        return tr("A template needs a name");
    }
    YamlEdit text(panel);
    if (const auto error = PanelKeyEdit::set(text, "title", name)) {
        return error->text;
    }
    const QDir folder(ownFolder());
    const QString path = folder.filePath(fileNameFor(name) + ".yaml");
    if (QFileInfo::exists(path)) {
        return tr("There is a template of that name already");
    }
    QSaveFile file(path);
    if (!QDir().mkpath(folder.path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(text.text()) != text.text().size() || !file.commit()) {
        return tr("It cannot be written to %1: %2").arg(folder.path(), file.errorString());
    }
    read();
    return {};
}

QString TemplateSet::remove(const QString& file)
{
    const PanelTemplate* const known = find(file);
    QFile there(file);
    if (!known || !known->isOwn) {
        return tr("Only templates of your own can be removed");
    }
    if (!there.remove() && there.exists()) {
        return tr("It cannot be removed: %1").arg(there.errorString());
    }
    read();
    return {};
}

} // namespace norvo
