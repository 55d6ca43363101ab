// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/modbus/ModbusPoint.h"

#include <QString>

#include <utility>
#include <vector>

namespace norvo {

/// Values that are read by one request.
struct PollBlock
{
    static constexpr int kMaxRegisters = 125;
    static constexpr int kMaxBits = 2000;
    static constexpr int kMaxRegisterGap = 8; ///< Is read along: a request costs more than that.
    static constexpr int kMaxBitGap = 64;

    using Points = std::vector<ModbusPoint>;

    /// The fewest blocks for those of the points.
    static std::vector<PollBlock> merge(const Points& points, std::vector<int> members);
    /// Both halves of a block of several values, for a server that refuses the whole.
    std::pair<PollBlock, PollBlock> halves(const Points& points) const;

    QString place() const; ///< "holding 100 to 109".

    ModbusPoint::Table table = ModbusPoint::Table::Holding;
    int address = 0;
    int size = 0;
    std::vector<int> members; ///< By address; a value is never divided.
    QString error;            ///< That has been reported of it last.

private:
    PollBlock(const Points& points, std::vector<int> members);
    bool takes(const ModbusPoint& point) const;
};

} // namespace norvo
