// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/modbus/ModbusLine.h"

#include <QTcpSocket>

namespace norvo {

/// Modbus TCP. Each request has a number that its answer repeats; late answers are told by it.
class TcpLine : public ModbusLine
{
    Q_OBJECT

public:
    TcpLine(const QString& host, quint16 port, quint8 unit, Milliseconds timeout);
    ~TcpLine() override;

    void open() override;

protected:
    void send(const QByteArray& pdu) override;

private:
    void onReadyRead();
    bool takeFrame();

    const QString m_host;
    const quint16 m_port;
    QTcpSocket m_socket;
    QTimer m_opening;
    QByteArray m_buffer;
    quint16 m_transaction = 0;
};

} // namespace norvo
