// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/SavedState.h"

#include "host/panel/file/EditDistance.h"
#include "host/panel/plan/KeptValue.h"
#include "host/panel/plan/Node.h"

#include "norvo/BaseDevice.h"

namespace norvo {

namespace {

using Values = QMap<QString, QString>;

void leaveAside(const SavedState& saved, const QString& device, const QString& param,
                const QString& what, Diagnostics& diagnostics)
{
    const Place place = saved.places.value(device).value(param);
    diagnostics.warningIn(saved.file, place, what + " left aside");
}

/// False where a value that was kept is none.
bool applyKeptValue(const Node& node, const Values& saved)
{
    KeptValue* const kept = node.keptValue();
    return !kept || !saved.contains(KeptValue::kValue) ||
           saved.value(KeptValue::kSettings) != kept->settings() ||
           kept->setSaved(saved.value(KeptValue::kValue));
}

void applyParams(const SavedState& saved, const QString& id, const Values& values, const Node& node,
                 Diagnostics& diagnostics)
{
    for (auto param = values.cbegin(); param != values.cend(); ++param) {
        const bool isOfKeptValue =
            param.key() == KeptValue::kValue || param.key() == KeptValue::kSettings;
        if (node.keptValue() && isOfKeptValue) {
            continue; // Together, by applyKeptValue().
        }
        if (!node.device()->getParam(param.key()).isPersistent()) {
            leaveAside(saved, id, param.key(),
                       QString("%1 does not store a parameter %2 by itself; its saved value is")
                           .arg(inQuotes(id), inQuotes(param.key())),
                       diagnostics);
        } else if (node.state() == Node::State::Created) {
            node.device()->setParam(param.key(), param.value());
        }
    }
}

} // namespace

void applySavedState(const SavedState& saved, const QHash<QString, Node*>& nodes,
                     Diagnostics& diagnostics)
{
    for (auto device = saved.values.cbegin(); device != saved.values.cend(); ++device) {
        const QString& id = device.key();
        const Node* const node = nodes.value(id);
        if (!node || !node->device()) {
            leaveAside(saved, id, {},
                       QString("there is no device %1; its saved values are").arg(inQuotes(id)),
                       diagnostics);
            continue;
        }
        applyParams(saved, id, *device, *node, diagnostics);
        if (!applyKeptValue(*node, *device)) {
            leaveAside(saved, id, KeptValue::kValue,
                       QString("the kept value %1 does not read; it is")
                           .arg(inQuotes(device->value(KeptValue::kValue))),
                       diagnostics);
        }
    }
}

} // namespace norvo
