// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/MisspeltIds.h"

#include "host/panel/file/EditDistance.h"
#include "host/yaml/Quote.h"

#include <QMap>

namespace norvo {

namespace {

constexpr int kMaxNames = 100; ///< Of each kind; of more, somebody has to sort out more than this.

} // namespace

void reportMisspeltIds(const PanelDescription& description, Diagnostics& diagnostics)
{
    QMap<QString, int> mentions;
    for (const ConnectionSetting& connection : description.connections) {
        ++mentions[connection.from.device.text];
        ++mentions[connection.to.device.text];
    }
    QMap<QString, Place> unmentioned;
    for (const DeviceSetting& device : description.devices) {
        const QString& id = device.id.text;
        if (mentions.remove(id) == 0 && unmentioned.size() < kMaxNames) {
            unmentioned.insert(id, device.id.place);
        }
    }
    int checked = 0;
    for (auto missing = mentions.cbegin(); missing != mentions.cend(); ++missing) {
        if (missing.value() < 2 || ++checked > kMaxNames) {
            continue;
        }
        const QString near = nearestName(missing.key(), unmentioned.keys());
        if (!near.isEmpty()) {
            diagnostics.error(
                unmentioned.value(near),
                QString("no connection mentions the device %1, and %2 of them mention "
                        "%3, which is no device; which is misspelt?")
                    .arg(inQuotes(near), QString::number(missing.value()),
                         inQuotes(missing.key())));
        }
    }
}

} // namespace norvo
