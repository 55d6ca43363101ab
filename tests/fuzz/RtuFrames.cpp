// SPDX-License-Identifier: GPL-3.0-or-later

#include "FuzzInput.h"
#include "Harness.h"
#include "PortLine.h"
#include "plugins/modbus/ModbusRequest.h"
#include "plugins/modbus/RtuFrame.h"

using norvo::ModbusPoint;
using norvo::ModbusRequest;
using norvo::require;
namespace RtuFrame = norvo::RtuFrame;

/// First line: what stands behind an output's name; then what comes on a serial line. What is found
/// in it is a frame as it would be written, and a frame is found behind any noise.
NORVO_HARNESS(RtuFrames)
{
    norvo::FuzzInput parts(input);
    ModbusPoint point;
    if (!point.define(norvo::portDefinitionOf(parts.line())).isEmpty()) {
        return;
    }
    const auto request = ModbusRequest::read(point.table, point.address, point.size());
    const QByteArray bytes = parts.rest();
    for (int begin = 0; begin <= bytes.size(); ++begin) {
        const QByteArray content = RtuFrame::contentAt(bytes, begin, request.answerSize);
        const QByteArray pdu = content.mid(1);
        require(content.isEmpty() ||
                    bytes.mid(begin).startsWith(RtuFrame::of(quint8(content[0]), pdu)),
                "what is found is a frame");
        if (!content.isEmpty() && request.fits(pdu)) {
            point.valueIn(pdu.mid(2), point.address);
        }
    }
    const QByteArray answer =
        request.answerHead +
        bytes.leftJustified(255, 'x').left(request.answerSize - request.answerHead.size());
    const QByteArray line = bytes + RtuFrame::of(7, answer);
    require(RtuFrame::contentAt(line, bytes.size(), answer.size()) == char(7) + answer,
            "a frame is found behind any noise");
}
