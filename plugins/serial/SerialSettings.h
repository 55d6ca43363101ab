// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSerialPort>
#include <QString>

namespace norvo {

/// How a port is opened.
struct SerialSettings
{
    int baud = 9600;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
    QSerialPort::FlowControl flow = QSerialPort::NoFlowControl;

    /// Reads "8N1": data bits (5 to 8), parity (N, E, O, M or S) and stop bits (1, 1.5 or 2).
    /// Returns what is wrong, and nothing changes, or an empty text.
    QString readFrame(const QString& text);
    /// Returns what the port refuses, or an empty text. The port may be open.
    QString applyTo(QSerialPort& port) const;
};

} // namespace norvo
