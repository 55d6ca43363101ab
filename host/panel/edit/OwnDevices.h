// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlEdit.h"

#include <QHash>

namespace norvo {

/// The devices and uses of templates that a panel's file has itself, for those who look for many
/// of them.
class OwnDevices
{
public:
    explicit OwnDevices(const YamlEdit& edit); ///< As the text is now.

    const YamlNode* find(const QString& id) const { return m_nodes.value(id); } ///< Null: none.
    /// The device, or the use, that has made a device of this id; empty: none.
    QString ownerOf(const QString& id) const;

private:
    YamlNodePtr m_root; ///< Keeps all below alive.
    QHash<QString, const YamlNode*> m_nodes;
};

} // namespace norvo
