// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/modbus/RtuLine.h"
#include "norvo/ParametersEntity.h"

#include <QString>

namespace norvo {

/// Where a server is and how it is asked, as parameters say it.
struct ModbusSettings
{
    static void declare(ParametersEntity& entity);

    /// Returns what is wrong, or an empty text.
    QString read(ParametersEntity& entity);

    bool isSerial() const { return !serial.path.isEmpty(); }

    QString target; ///< "tcp://192.168.1.20:502" or "rtu:///dev/ttyUSB0".
    QString host;
    quint16 port = 0;
    RtuLine::Settings serial;
    int unit = 0;
    int pollMs = 0;
    int timeoutMs = 0;
    int retries = 0;

private:
    QString readTarget();
};

} // namespace norvo
