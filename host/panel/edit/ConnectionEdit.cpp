// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/ConnectionEdit.h"

#include "host/panel/edit/PanelTree.h"

namespace norvo {

namespace {

const QString kKey = QStringLiteral("connections");

QString textOf(const QString& from, const QString& to)
{
    return from + " -> " + to;
}

} // namespace

int ConnectionEdit::indexOf(const YamlEdit& edit, const ConnectionSetting& connection)
{
    const YamlNode* const list = PanelTree::valueOf(&edit.root(), kKey);
    const Place& place = connection.whole.place;
    for (size_t i = 0; list && !place.origin && i < list->entries.size(); ++i) {
        const YamlNode& value = *list->entries[i].value;
        if (value.place.line == place.line && value.place.column == place.column) {
            return int(i);
        }
    }
    return -1;
}

ConnectionEdit::Error ConnectionEdit::add(YamlEdit& edit, const QString& from, const QString& to)
{
    return addText(edit, textOf(from, to));
}

ConnectionEdit::Error ConnectionEdit::addText(YamlEdit& edit, const QString& connection)
{
    const YamlNodePtr text = YamlTree::text(connection);
    return PanelTree::valueOf(&edit.root(), kKey)
               ? edit.add({kKey}, text)
               : PanelTree::insertKey(edit, kKey, PanelTree::list({text}));
}

ConnectionEdit::Error ConnectionEdit::replace(YamlEdit& edit, int index, const QString& from,
                                              const QString& to)
{
    return edit.setText({kKey, QString::number(index)}, textOf(from, to));
}

ConnectionEdit::Error ConnectionEdit::remove(YamlEdit& edit, int index)
{
    const YamlNode* const list = PanelTree::valueOf(&edit.root(), kKey);
    const bool isLast = list && list->entries.size() == 1 && index == 0;
    return isLast ? edit.remove({kKey}) : edit.remove({kKey, QString::number(index)});
}

} // namespace norvo
