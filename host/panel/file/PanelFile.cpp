#include "host/panel/file/PanelFile.h"

#include "host/panel/file/PanelReader.h"
#include "host/yaml/SourceText.h"
#include "host/yaml/YamlTree.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <tuple>

namespace norvo {

namespace {

constexpr int kSizeLimit = 4 * 1024 * 1024;

Fault error(const QString& fileName, const Place& place, const QString& text)
{
    return {Fault::Severity::Error, fileName, place, text};
}

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

/// By place. What is wrong with a value that has several aliases is told once.
Faults inOrder(Faults faults)
{
    std::stable_sort(faults.begin(), faults.end(), [](const Fault& a, const Fault& b) {
        return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
    });
    const auto end = std::unique(faults.begin(), faults.end(), [](const Fault& a, const Fault& b) {
        return std::tie(a.place.line, a.place.column, a.text) ==
               std::tie(b.place.line, b.place.column, b.text);
    });
    faults.erase(end, faults.end());
    return faults;
}

} // namespace

PanelDescription PanelFile::read(const QString& fileName, Faults& faults)
{
    PanelDescription nothing;
    nothing.file = fileName;
    const QString reason = objection(fileName);
    if (!reason.isEmpty()) {
        faults.append(error(fileName, {}, reason));
        return nothing;
    }
    QFile file(fileName);
    QByteArray text;
    if (file.open(QIODevice::ReadOnly)) {
        text = file.read(kSizeLimit + 1);
    }
    if (file.error() != QFileDevice::NoError) {
        faults.append(
            error(fileName, {}, QString("the file cannot be read: %1").arg(file.errorString())));
        return nothing;
    }
    return parse(text, fileName, faults);
}

PanelDescription PanelFile::parse(const QByteArray& text, const QString& fileName, Faults& faults)
{
    PanelDescription description;
    description.file = fileName;
    if (text.size() > kSizeLimit) {
        faults.append(error(fileName, {}, "the file is larger than 4 MiB, the limit of a panel"));
        return description;
    }
    const SourceText source(text);
    if (const auto bad = source.firstBadByte()) {
        faults.append(error(fileName, bad->place, bad->text));
        return description;
    }
    const auto tree = YamlTree::read(source);
    if (const auto* problem = std::get_if<Problem>(&tree)) {
        faults.append(error(fileName, problem->place, problem->text));
        return description;
    }
    Faults found;
    description = PanelReader(source, fileName, found).read(*std::get<YamlNodePtr>(tree));
    faults += inOrder(found);
    return description;
}

} // namespace norvo
