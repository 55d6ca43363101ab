// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/access/AccessRules.h"

namespace norvo {

namespace {

Role roleByKind(Control control)
{
    return control == Control::Asks || control == Control::Held ? Role::Operate : Role::View;
}

} // namespace

AccessRules::AccessRules(const PanelDescription& description, const TypeKnowledge& knowledge)
{
    for (const DeviceSetting& device : description.devices) {
        const Control control = knowledge.control(device.type.text);
        if (control == Control::None) {
            continue;
        }
        Rule rule;
        if (description.access.isGiven()) {
            rule.role = device.access.role.value_or(roleByKind(control));
        }
        rule.isConfirmed = device.access.isConfirmed && control == Control::Asks;
        rule.question = device.access.question;
        m_isAnyLocked = m_isAnyLocked || rule.role > Role::View;
        m_isAnyConfirmed = m_isAnyConfirmed || rule.isConfirmed;
        m_rules.insert(device.id.text, rule);
    }
}

} // namespace norvo
