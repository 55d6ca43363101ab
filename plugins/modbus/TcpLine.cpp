// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/TcpLine.h"

#include <QtEndian>

namespace norvo {

namespace {

using namespace std::chrono_literals;

constexpr auto kOpenTime = 2s; ///< The system itself would try for minutes.
constexpr int kReadBufferSize = 65536;
constexpr int kHeadSize = 6; ///< Transaction, protocol, length of the rest.
constexpr int kMinLength = 3;
constexpr int kMaxLength = 254;

quint16 wordAt(const QByteArray& bytes, int index)
{
    return qFromBigEndian<quint16>(bytes.constData() + index);
}

QByteArray word(int value)
{
    QByteArray bytes(2, Qt::Uninitialized);
    qToBigEndian(quint16(value), bytes.data());
    return bytes;
}

} // namespace

TcpLine::TcpLine(const QString& host, quint16 port, quint8 unit, Milliseconds timeout)
    : ModbusLine(unit, timeout), m_host(host), m_port(port)
{
    m_socket.setReadBufferSize(kReadBufferSize);
    m_opening.setSingleShot(true);
    connect(&m_opening, &QTimer::timeout, this, [this] { breakOff("no connection within 2 s"); });
    connect(&m_socket, &QTcpSocket::connected, this, [this] {
        m_opening.stop();
        m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        emit opened();
    });
    connect(&m_socket, &QTcpSocket::errorOccurred, this,
            [this] { breakOff(m_socket.errorString()); });
    connect(&m_socket, &QTcpSocket::readyRead, this, &TcpLine::onReadyRead);
}

TcpLine::~TcpLine()
{
    m_socket.disconnect(this);
    m_socket.abort(); // What is still to be written must not be.
}

void TcpLine::open()
{
    m_opening.start(kOpenTime);
    m_socket.connectToHost(m_host, m_port);
}

void TcpLine::send(const QByteArray& pdu)
{
    ++m_transaction;
    m_socket.write(word(m_transaction) + word(0) + word(pdu.size() + 1) + char(unit()) + pdu);
    wait(timeout());
}

void TcpLine::onReadyRead()
{
    m_buffer += m_socket.readAll();
    while (!isBroken() && takeFrame()) {
    }
}

/// Whether there was one.
bool TcpLine::takeFrame()
{
    if (m_buffer.size() < kHeadSize) {
        return false;
    }
    const int length = wordAt(m_buffer, 4);
    if (wordAt(m_buffer, 2) != 0 || length < kMinLength || length > kMaxLength) {
        breakOff("what the server sends is not Modbus TCP");
        return false;
    }
    if (m_buffer.size() < kHeadSize + length) {
        return false;
    }
    const quint16 transaction = wordAt(m_buffer, 0);
    const QByteArray rest = m_buffer.mid(kHeadSize, length);
    m_buffer.remove(0, kHeadSize + length);
    if (transaction == m_transaction) {
        take(quint8(rest[0]), rest.mid(1));
    } else {
        note("the answer to another request came");
    }
    return true;
}

} // namespace norvo
