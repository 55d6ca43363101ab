// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace norvo {

/// Frames of Modbus RTU: a unit, a PDU and a checksum.
namespace RtuFrame {

QByteArray of(quint8 unit, const QByteArray& pdu);
/// The unit and the PDU of the frame that begins there, if its PDU has that size and the checksum
/// is right; else empty.
QByteArray contentAt(const QByteArray& bytes, int begin, int pduSize);

} // namespace RtuFrame

} // namespace norvo
