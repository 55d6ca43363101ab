// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/modbus/RegisterFormat.h"
#include "norvo/PortDefinition.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace norvo {

/// What stands behind the name of an output or input: `holding 100 uint16 x0.1`, `coil 3`.
///
/// A table and an address on the wire, from 0. For registers, in any order: a type; "abcd", "cdab",
/// "badc" or "dcba", the order of the bytes of a number ABCD; a scale "x0.1"; an offset "+5"; or
/// "bit 3" alone. All but the table and the address can be options as well.
struct ModbusPoint
{
    enum class Table { Coil, Discrete, Input, Holding };

    static const QStringList kOptions;

    /// Reads a definition. Returns what is wrong, or an empty text.
    QString define(const PortDefinition& definition);
    /// Why nothing can be written there; empty where it can.
    QString writeError() const;

    bool isOfBits() const { return table == Table::Coil || table == Table::Discrete; }
    bool isYesNo() const { return isOfBits() || bit; }
    int size() const { return isYesNo() ? 1 : format.size(); } ///< In addresses.
    int end() const { return address + size(); }               ///< Behind the last address.
    QString place() const;                                     ///< "holding 100".
    /// What stands there in the values of an answer that begins with that of `firstAddress`.
    double valueIn(const QByteArray& values, int firstAddress) const;

    Table table = Table::Holding;
    quint16 address = 0;
    std::optional<int> bit; ///< Of a register, 0: the lowest.
    RegisterFormat format;
};

} // namespace norvo
