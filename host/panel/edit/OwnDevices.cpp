// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/OwnDevices.h"

#include "host/panel/edit/PanelTree.h"

namespace norvo {

OwnDevices::OwnDevices(const YamlEdit& edit) : m_root(edit.sharedRoot())
{
    const YamlNode* const map = PanelTree::devices(edit);
    for (size_t i = 0; map && i < map->entries.size(); ++i) {
        const YamlEntry& entry = map->entries[i];
        if (entry.key && !m_nodes.contains(entry.key->text)) {
            m_nodes.insert(entry.key->text, entry.value.get());
        }
    }
}

QString OwnDevices::ownerOf(const QString& id) const
{
    if (m_nodes.contains(id)) {
        return id;
    }
    for (int dash = id.lastIndexOf('-'); dash > 0; dash = id.lastIndexOf('-', dash - 1)) {
        const YamlNode* const use = find(id.left(dash));
        if (use && PanelTree::isUse(*use)) {
            return id.left(dash);
        }
    }
    return {};
}

} // namespace norvo
