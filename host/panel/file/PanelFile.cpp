// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"

#include "host/panel/file/PanelReader.h"
#include "host/yaml/SourceText.h"
#include "host/yaml/YamlTree.h"

namespace norvo {

PanelDescription PanelFile::read(const QString& fileName, Diagnostics& diagnostics)
{
    QString reason;
    const auto text = readTextFile(fileName, reason);
    if (!text) {
        diagnostics.error({}, reason);
    }
    return text ? parse(*text, fileName, diagnostics) : PanelDescription{fileName, {}, {}, {}};
}

PanelDescription PanelFile::parse(const QByteArray& text, const QString& fileName,
                                  Diagnostics& diagnostics)
{
    const SourceText source(text);
    const auto tree = YamlTree::read(source);
    if (const auto* error = std::get_if<TextError>(&tree)) {
        diagnostics.error(error->place, error->text);
        return {fileName, {}, {}, {}};
    }
    return PanelReader(source, fileName, diagnostics).read(*std::get<YamlNodePtr>(tree));
}

} // namespace norvo
