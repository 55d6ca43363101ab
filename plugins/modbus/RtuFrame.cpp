// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/RtuFrame.h"

namespace norvo {

namespace {

constexpr int kCrcSize = 2;

QByteArray crcOf(const QByteArray& bytes)
{
    quint16 crc = 0xffff;
    for (const char byte : bytes) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = quint16(crc & 1 ? (crc >> 1) ^ 0xa001 : crc >> 1);
        }
    }
    return QByteArray(1, char(crc & 0xff)) + char(crc >> 8);
}

} // namespace

QByteArray RtuFrame::of(quint8 unit, const QByteArray& pdu)
{
    const QByteArray content = char(unit) + pdu;
    return content + crcOf(content);
}

QByteArray RtuFrame::contentAt(const QByteArray& bytes, int begin, int pduSize)
{
    const int size = 1 + pduSize;
    const QByteArray content = bytes.mid(begin, size);
    const bool isFrame =
        content.size() == size && bytes.mid(begin + size, kCrcSize) == crcOf(content);
    return isFrame ? content : QByteArray();
}

} // namespace norvo
