// SPDX-License-Identifier: GPL-3.0-or-later

#include "AllTypes.h"
#include "FuzzInput.h"
#include "Harness.h"
#include "PortLine.h"
#include "norvo/PortsDevice.h"

#include <memory>

using norvo::require;

/// Lines: the type, the preset, then an output or an input each, told apart by ">" before it. Each
/// is taken, and can then be connected, or is refused with a text.
NORVO_HARNESS(PortDefinitions)
{
    norvo::FuzzInput lines(input);
    const std::unique_ptr<BaseDevice> device(
        norvo::allTypes().createDevice(QString::fromUtf8(lines.line())));
    auto* const ports = dynamic_cast<PortsDevice*>(device.get());
    const QString preset = QString::fromUtf8(lines.line());
    if (!ports) {
        return;
    }
    if (ports->params().contains("preset")) {
        ports->setParam("preset", preset);
    }
    for (int i = 0; i < 20 && !lines.rest().isEmpty(); ++i) {
        const QByteArray line = lines.line();
        const bool isInput = line.startsWith('>');
        const PortDefinition definition = norvo::portDefinitionOf(isInput ? line.mid(1) : line);
        const QString name = QString("port%1").arg(i);
        const QString wrong =
            isInput ? ports->addInput(name, definition) : ports->addOutput(name, definition);
        QString signature;
        const QObject* const end =
            isInput ? ports->getReceiver(name, signature) : ports->getProvider(name, signature);
        require(wrong.isEmpty() == (end != nullptr),
                "what is taken can be connected, nothing else");
    }
}
