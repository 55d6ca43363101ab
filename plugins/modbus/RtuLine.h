// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/modbus/ModbusLine.h"

#include <QSerialPort>

namespace norvo {

/// Modbus RTU on a serial line.
///
/// An answer does not tell which request it answers. So after a time-out, and at first, nothing is
/// asked before the line has been silent for the time of one time-out; what comes until then is a
/// late answer, and dropped.
class RtuLine : public ModbusLine
{
    Q_OBJECT

public:
    struct Settings
    {
        QString path;
        int baud = 19200;
        QSerialPort::Parity parity = QSerialPort::EvenParity;
        QSerialPort::StopBits stopBits = QSerialPort::OneStop;
    };

    RtuLine(const Settings& settings, quint8 unit, Milliseconds timeout);
    ~RtuLine() override;

    void open() override;

protected:
    void send(const QByteArray& pdu) override;
    void onTimeout() override;

private:
    void writeFrame();
    void onReadyRead();
    void onError(QSerialPort::SerialPortError error);
    bool takeFrame(int begin);

    QSerialPort m_port;
    QTimer m_silence; ///< Ends when the line has been silent for long enough.
    QByteArray m_frame;
    QByteArray m_buffer;
    bool m_isLate = true; ///< An answer to an older request can still come.
};

} // namespace norvo
