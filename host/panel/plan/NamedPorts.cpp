// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/NamedPorts.h"

#include "norvo/PortsDevice.h"

#include <QVector>

#include <algorithm>

namespace norvo {

void NamedPorts::add(const DeviceSetting& setting, BaseDevice& device)
{
    auto* const ports = dynamic_cast<PortsDevice*>(&device);
    if (!ports && !setting.ports.isEmpty()) {
        m_diagnostics.error(setting.ports.constFirst().name.place,
                            QString("a device of type %1 takes no outputs and inputs of its "
                                    "author's; leave the key away")
                                .arg(inQuotes(setting.type.text)));
    }
    // What an output is may depend on the inputs, wherever in the file they stand.
    QVector<PortSetting> inputsFirst = setting.ports;
    std::stable_partition(inputsFirst.begin(), inputsFirst.end(),
                          [](const PortSetting& port) { return !port.isOutput; });
    for (const PortSetting& port : qAsConst(inputsFirst)) {
        const QString& name = port.name.text;
        const PortDefinition definition(port.definition.text, port.options);
        const QString error = !ports          ? QString()
                              : port.isOutput ? ports->addOutput(name, definition)
                                              : ports->addInput(name, definition);
        if (ports && error.isEmpty()) {
            continue;
        }
        m_refused.insert(setting.id.text + '.' + name);
        if (ports) {
            m_diagnostics.error(port.definition.place, QString("%1 %2: %3")
                                                           .arg(port.isOutput ? "output" : "input",
                                                                inQuotes(name), error));
        }
    }
}

bool NamedPorts::isRefused(const Endpoint& end) const
{
    const QString name = end.method.text.section('(', 0, 0).trimmed();
    return m_refused.contains(end.device.text + '.' + name);
}

} // namespace norvo
