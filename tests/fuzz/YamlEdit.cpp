// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlEdit.h"
#include "EditAndUndo.h"
#include "FuzzInput.h"
#include "Harness.h"

using norvo::require;
using norvo::YamlEdit;
using norvo::YamlNode;
namespace YamlTree = norvo::YamlTree;

namespace {

/// An entry of the tree, by choices of the input.
YamlEdit::Path pathIn(const YamlNode& root, norvo::FuzzInput& choices)
{
    YamlEdit::Path path;
    const YamlNode* node = &root;
    for (int depth = choices.choice(6); depth > 0 && !node->entries.empty(); --depth) {
        const int index = choices.choice(int(node->entries.size()));
        const norvo::YamlEntry& entry = node->entries[size_t(index)];
        path += entry.key ? entry.key->text : QString::number(index);
        node = entry.value.get();
    }
    return path;
}

YamlEdit::Error editAny(YamlEdit& edit, norvo::FuzzInput& choices, const QString& text)
{
    const int kind = choices.choice(8);
    const YamlEdit::Path path = pathIn(edit.root(), choices);
    const auto value = YamlTree::text(text);
    switch (kind) {
    case 0:
        return edit.remove(path);
    case 1:
        return edit.renameKey(path, text);
    case 2:
        return edit.insert(path, text, value);
    case 3:
        return edit.insertFirst(path, text, YamlTree::map({{text, value}}));
    case 4:
        return edit.add(path, value, choices.choice(4) - 1);
    case 5:
        return edit.unfold(path);
    case 6:
        return edit.setTexts({{path, text}, {pathIn(edit.root(), choices), "x"}});
    default:
        return edit.setText(path, text);
    }
}

} // namespace

/// First line: choices; second: the text to write; then the YAML text. What an edit leaves reads as
/// the edit's own tree, an edit that is refused changes nothing, and undoing gives equal bytes.
NORVO_HARNESS(YamlEdit)
{
    norvo::FuzzInput parts(input);
    norvo::FuzzInput choices(parts.line());
    const QString text = QString::fromUtf8(parts.line());
    const QByteArray before = parts.rest();
    YamlEdit edit(before);
    if (edit.error()) {
        return;
    }
    const auto editOnce = [&] { return editAny(edit, choices, text); };
    norvo::editAndUndo(edit, 1 + choices.choice(3), editOnce, [&](const QByteArray& previous) {
        const auto tree = YamlTree::read(norvo::SourceText(edit.text()));
        const auto* const root = std::get_if<norvo::YamlNodePtr>(&tree);
        require(root && YamlTree::isSame(**root, edit.root()), "an edit's text reads as its tree");
        const YamlEdit similar(edit.text(), YamlEdit(previous));
        require(!similar.error() && YamlTree::isSame(similar.root(), edit.root()),
                "a text reads the same from one that is similar");
    });
}
