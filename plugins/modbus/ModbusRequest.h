// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/modbus/ModbusPoint.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

namespace norvo {

/// One request, and how the answer to it looks.
struct ModbusRequest
{
    static ModbusRequest read(ModbusPoint::Table table, int address, int size);
    /// Writes a value as an input gets it; a pulse is a yes. Nothing where it does not fit, and
    /// then `error` says why. `multiple`: by the function for several, as some servers know no
    /// other.
    static std::optional<ModbusRequest> write(const ModbusPoint& point, const QVariant& value,
                                              bool multiple, QString& error);
    static ModbusRequest writeCoil(int address, bool on, bool multiple);
    static ModbusRequest writeRegisters(int address, const RegisterFormat::Registers& registers,
                                        bool multiple);
    /// Changes one bit of a holding register in the server itself (function 22), so that nothing
    /// that changes at the same time is written back.
    static ModbusRequest writeBit(int address, int bit, bool on);

    bool fits(const QByteArray& answer) const; ///< A regular answer.
    bool isRefusedBy(const QByteArray& answer) const;

    QByteArray pdu; ///< Function code and data.
    QByteArray answerHead;
    int answerSize = 0;
};

/// "illegal data address (exception 2)".
QString exceptionText(quint8 code);

} // namespace norvo
