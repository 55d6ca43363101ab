// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/signals/Outputs.h"

#include "norvo/BaseDevice.h"

namespace norvo {

QStringList tellingOutputs(const BaseDevice& device)
{
    const QStringList outputs = device.grabMethods({}, QMetaMethod::Signal, false);
    QStringList chosen;
    QStringList names;
    for (const QString& output : outputs) {
        const QString name = output.section('(', 0, 0);
        if (!names.contains(name)) {
            names.append(name);
            const QString text = name + "(QString)";
            chosen.append(outputs.contains(text) ? text : output);
        }
    }
    return chosen;
}

} // namespace norvo
