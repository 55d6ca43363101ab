// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/PollBlock.h"

#include <algorithm>
#include <tuple>

namespace norvo {

PollBlock::PollBlock(const Points& points, std::vector<int> those) : members(std::move(those))
{
    const ModbusPoint& first = points[std::size_t(members.front())];
    table = first.table;
    address = first.address;
    for (const int member : members) {
        size = std::max(size, points[std::size_t(member)].end() - address);
    }
}

std::vector<PollBlock> PollBlock::merge(const Points& points, std::vector<int> members)
{
    const auto key = [&points](int member) {
        const ModbusPoint& point = points[std::size_t(member)];
        return std::make_tuple(point.table, point.address, member);
    };
    std::sort(members.begin(), members.end(), [&key](int a, int b) { return key(a) < key(b); });
    std::vector<PollBlock> blocks;
    for (const int member : members) {
        const ModbusPoint& point = points[std::size_t(member)];
        if (blocks.empty() || !blocks.back().takes(point)) {
            blocks.push_back(PollBlock(points, {member}));
        } else {
            blocks.back().members.push_back(member);
            blocks.back().size = std::max(blocks.back().size, point.end() - blocks.back().address);
        }
    }
    return blocks;
}

/// `point` is none before the block's last one.
bool PollBlock::takes(const ModbusPoint& point) const
{
    const bool isOfBits = point.isOfBits();
    return point.table == table &&
           point.address - (address + size) <= (isOfBits ? kMaxBitGap : kMaxRegisterGap) &&
           point.end() - address <= (isOfBits ? kMaxBits : kMaxRegisters);
}

std::pair<PollBlock, PollBlock> PollBlock::halves(const Points& points) const
{
    const auto middle = members.begin() + std::ptrdiff_t(members.size() / 2);
    return {PollBlock(points, {members.begin(), middle}),
            PollBlock(points, {middle, members.end()})};
}

QString PollBlock::place() const
{
    ModbusPoint first;
    first.table = table;
    first.address = quint16(address);
    return size > 1 ? QString("%1 to %2").arg(first.place()).arg(address + size - 1)
                    : first.place();
}

} // namespace norvo
