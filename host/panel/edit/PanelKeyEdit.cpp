// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/PanelKeyEdit.h"

#include "host/panel/edit/PanelTree.h"

namespace norvo {

YamlEdit::Error PanelKeyEdit::set(YamlEdit& edit, const QString& key, const QString& value)
{
    if (edit.error()) {
        return edit.error();
    }
    return PanelTree::valueOf(&edit.root(), key)
               ? edit.setText({key}, value)
               : PanelTree::insertKey(edit, key, YamlTree::text(value));
}

YamlEdit::Error PanelKeyEdit::remove(YamlEdit& edit, const QString& key)
{
    if (edit.error() || !PanelTree::valueOf(&edit.root(), key)) {
        return edit.error();
    }
    return edit.remove({key});
}

} // namespace norvo
