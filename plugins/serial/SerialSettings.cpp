// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/serial/SerialSettings.h"

#include <QHash>
#include <QRegularExpression>

namespace norvo {

QString SerialSettings::readFrame(const QString& text)
{
    static const QRegularExpression form("^\\s*([5-8])([NEOMS])(1|1\\.5|2)\\s*$",
                                         QRegularExpression::CaseInsensitiveOption);
    static const QHash<QString, QSerialPort::Parity> parities{{"N", QSerialPort::NoParity},
                                                              {"E", QSerialPort::EvenParity},
                                                              {"O", QSerialPort::OddParity},
                                                              {"M", QSerialPort::MarkParity},
                                                              {"S", QSerialPort::SpaceParity}};
    static const QHash<QString, QSerialPort::StopBits> stops{{"1", QSerialPort::OneStop},
                                                             {"1.5", QSerialPort::OneAndHalfStop},
                                                             {"2", QSerialPort::TwoStop}};
    const auto match = form.match(text);
    if (!match.hasMatch()) {
        return QString("\"%1\" is no frame; write data bits, parity (N, E, O, M or S) and stop "
                       "bits, such as 8N1 or 7E2")
            .arg(text);
    }
    dataBits = QSerialPort::DataBits(match.captured(1).toInt());
    parity = parities.value(match.captured(2).toUpper());
    stopBits = stops.value(match.captured(3));
    return {};
}

QString SerialSettings::applyTo(QSerialPort& serialPort) const
{
    if (!serialPort.setBaudRate(baud)) {
        return QString("the port refuses %1 baud").arg(baud);
    }
    if (!serialPort.setDataBits(dataBits) || !serialPort.setParity(parity) ||
        !serialPort.setStopBits(stopBits)) {
        return "the port refuses the frame";
    }
    return serialPort.setFlowControl(flow) ? QString() : "the port refuses the flow control";
}

} // namespace norvo
