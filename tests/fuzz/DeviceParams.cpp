// SPDX-License-Identifier: GPL-3.0-or-later

#include "AllTypes.h"
#include "FuzzInput.h"
#include "Harness.h"
#include "norvo/BaseDevice.h"

#include <QObject>

#include <memory>

using norvo::require;

/// Lines: the type, then parameters, "name=value"; all lines behind the last "=" are of its value.
/// A device takes them, or says why not; QML documents are programs and left out.
NORVO_HARNESS(DeviceParams)
{
    norvo::FuzzInput lines(input);
    const QString type = QString::fromUtf8(lines.line());
    const std::unique_ptr<BaseDevice> device(
        type.startsWith("qml") ? nullptr : norvo::allTypes().createDevice(type));
    if (!device) {
        return;
    }
    while (!lines.rest().isEmpty()) {
        QByteArray line = lines.line();
        if (!lines.rest().contains('=')) {
            line += '\n' + lines.rest();
            lines = norvo::FuzzInput(QByteArray());
        }
        const QString param = QString::fromUtf8(line);
        device->setParam(param.section('=', 0, 0), param.section('=', 1));
    }
    int errors = 0;
    QObject::connect(device.get(), &BaseDevice::errorOccurred, [&errors] { ++errors; });
    const bool isReady = device->initialise();
    require(isReady || errors > 0 || !device->paramFaults().isEmpty(),
            "it is known why a device does not start");
    device->preShutdown();
    device->deinitialise();
}
