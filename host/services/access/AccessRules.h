// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/file/TypeKnowledge.h"

#include <QHash>

namespace norvo {

/// What each device of a panel asks for before it takes anything from a hand.
class AccessRules
{
public:
    struct Rule
    {
        Role role = Role::View;
        bool isConfirmed = false;
        QString question; ///< Empty: one that names the device.
    };

    AccessRules() = default; ///< Everything is free.
    AccessRules(const PanelDescription& description, const TypeKnowledge& knowledge);

    Rule of(const QString& device) const { return m_rules.value(device); }
    bool isAnyLocked() const { return m_isAnyLocked; }
    bool isAnyConfirmed() const { return m_isAnyConfirmed; }

private:
    QHash<QString, Rule> m_rules; ///< By id, of those that are not free.
    bool m_isAnyLocked = false;
    bool m_isAnyConfirmed = false;
};

} // namespace norvo
