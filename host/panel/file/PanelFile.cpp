#include "host/panel/file/PanelFile.h"

#include "host/panel/file/PanelReader.h"
#include "host/yaml/SourceText.h"
#include "host/yaml/YamlTree.h"

#include <QFile>
#include <QFileInfo>

namespace norvo {

namespace {

constexpr int kSizeLimit = 4 * 1024 * 1024;

/// Why the file cannot be a panel file; empty when it can.
QString objection(const QString& fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists()) {
        return "there is no such file";
    }
    if (info.isDir()) {
        return "this is a folder, not a panel file";
    }
    return info.isFile() ? QString() : QString("this is no regular file");
}

} // namespace

PanelDescription PanelFile::read(const QString& fileName, Diagnostics& diagnostics)
{
    PanelDescription nothing;
    nothing.file = fileName;
    const QString reason = objection(fileName);
    if (!reason.isEmpty()) {
        diagnostics.error({}, reason);
        return nothing;
    }
    QFile file(fileName);
    QByteArray text;
    if (file.open(QIODevice::ReadOnly)) {
        text = file.read(kSizeLimit + 1);
    }
    if (file.error() != QFileDevice::NoError) {
        diagnostics.error({}, QString("the file cannot be read: %1").arg(file.errorString()));
        return nothing;
    }
    return parse(text, fileName, diagnostics);
}

PanelDescription PanelFile::parse(const QByteArray& text, const QString& fileName,
                                  Diagnostics& diagnostics)
{
    PanelDescription description;
    description.file = fileName;
    if (text.size() > kSizeLimit) {
        diagnostics.error({}, "the file is larger than 4 MiB, the limit of a panel");
        return description;
    }
    const SourceText source(text);
    if (const auto bad = source.firstBadByte()) {
        diagnostics.error(bad->place, bad->text);
        return description;
    }
    const auto tree = YamlTree::read(source);
    if (const auto* problem = std::get_if<Problem>(&tree)) {
        diagnostics.error(problem->place, problem->text);
        return description;
    }
    return PanelReader(source, fileName, diagnostics).read(*std::get<YamlNodePtr>(tree));
}

} // namespace norvo
