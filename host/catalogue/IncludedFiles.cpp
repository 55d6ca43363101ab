// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/IncludedFiles.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/QmlImports.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace norvo {

namespace {

/// What leads from the panel's folder to that of another file, with a "/" at its end; empty where
/// they are one. Relative names of both are from one folder, whichever that was: what leads from
/// one to the other is the same from any.
QString pathBetween(const QString& panelFile, const QString& file)
{
    const QString from = QFileInfo(panelFile).path();
    const QString to = QFileInfo(file).path();
    const QString path = QDir::isAbsolutePath(to) && QDir::isRelativePath(from)
                             ? to
                             : QDir(from).relativeFilePath(QFileInfo(to).absoluteFilePath());
    return path.isEmpty() || path == "." ? QString() : path + '/';
}

QString rebasedFile(const QString& name, const QString& path)
{
    return name.isEmpty() || QDir::isAbsolutePath(name) ? name : QDir::cleanPath(path + name);
}

/// A program without a "/" in its name is looked for in the system's folders.
QString rebasedCommand(const QString& command, const QString& path)
{
    static const QRegularExpression firstWord(
        R"re(^\s*((?:'[^']*'|"(?:[^"\\]|\\.)*"|\\.|[^\s'"\\])+))re",
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression quoting(R"re(['"\\])re");
    static const QRegularExpression special(R"re((["\\]))re");
    const auto match = firstWord.match(command);
    const QString program = match.captured(1).remove(quoting);
    if (!program.contains('/') || program.startsWith('/')) {
        return command;
    }
    const QString quoted = '"' + QString(path).replace(special, R"(\\1)") + '"';
    return QString(command).insert(match.capturedStart(1), quoted);
}

} // namespace

void rebaseIncludedFiles(PanelDescription& description, const Catalogue& catalogue)
{
    for (int i = 0; i < description.devices.size(); ++i) {
        const DeviceSetting& device = description.devices.at(i);
        for (int j = 0; j < device.params.size(); ++j) {
            const ParamSetting& param = device.params.at(j);
            const TypeWords* const words =
                param.file.isEmpty() ? nullptr : catalogue.wordsForCheck(device.type.text);
            const ParamWords* const known = words ? words->param(param.name.text) : nullptr;
            if (!known || !(known->isFile() || known->kind == ParamKind::Command)) {
                continue;
            }
            const QString path = pathBetween(description.file, param.file);
            const QString value = param.value.text;
            if (!path.isEmpty()) { // The rest of the panel stays shared with its copies.
                description.devices[i].params[j].value.text =
                    known->isFile() ? rebasedFile(value, path) : rebasedCommand(value, path);
            }
        }
    }
}

QHash<QString, QStringList> shownFiles(PanelDescription description, const Catalogue& catalogue,
                                       const QString& folder)
{
    rebaseIncludedFiles(description, catalogue);
    QHash<QString, QStringList> files;
    for (const DeviceSetting& device : qAsConst(description.devices)) {
        const TypeWords* const words = catalogue.wordsForCheck(device.type.text);
        for (const ParamSetting& param : device.params) {
            const ParamWords* const known = words ? words->param(param.name.text) : nullptr;
            if (known && !param.value.text.isEmpty() &&
                (known->kind == ParamKind::PictureFile || known->kind == ParamKind::QmlFile)) {
                const QString file =
                    QDir::cleanPath(QDir(folder).absoluteFilePath(param.value.text));
                files[device.id.text].append(file);
                if (known->kind == ParamKind::QmlFile) {
                    files[device.id.text] += qmlImports(file);
                }
            }
        }
    }
    return files;
}

} // namespace norvo
