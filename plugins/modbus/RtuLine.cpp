// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/RtuLine.h"

#include "plugins/modbus/RtuFrame.h"

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMaxNoise = 600; ///< Bytes that are kept in search of an answer.
constexpr int kExceptionSize = 2;

/// Between two frames the line is silent for three and a half characters of 11 bits, and for 1.75
/// ms at least.
ModbusLine::Milliseconds gapAt(int baud)
{
    return ModbusLine::Milliseconds(std::max(2, 38500 / std::max(1, baud) + 1));
}

} // namespace

RtuLine::RtuLine(const Settings& settings, quint8 unit, Milliseconds timeout)
    : ModbusLine(unit, timeout)
{
    m_port.setPortName(settings.path);
    m_port.setBaudRate(settings.baud);
    m_port.setParity(settings.parity);
    m_port.setStopBits(settings.stopBits);
    m_silence.setSingleShot(true);
    m_silence.setTimerType(Qt::PreciseTimer);
    connect(&m_silence, &QTimer::timeout, this, &RtuLine::writeFrame);
    connect(&m_port, &QSerialPort::readyRead, this, &RtuLine::onReadyRead);
    connect(&m_port, &QSerialPort::errorOccurred, this, &RtuLine::onError);
}

RtuLine::~RtuLine()
{
    m_port.disconnect(this);
    if (m_port.isOpen()) {
        m_port.clear(QSerialPort::Output); // What is still to be written must not be.
    }
}

void RtuLine::open()
{
    if (m_port.open(QIODevice::ReadWrite)) {
        emit opened();
    }
}

void RtuLine::send(const QByteArray& pdu)
{
    m_frame = RtuFrame::of(unit(), pdu);
    m_silence.start(m_isLate ? timeout() : gapAt(m_port.baudRate()));
    wait(2 * timeout()); // For a line that is never silent.
}

void RtuLine::writeFrame()
{
    m_isLate = false;
    m_buffer.clear();
    m_port.write(m_frame);
    wait(timeout());
}

void RtuLine::onTimeout()
{
    m_silence.stop();
    m_isLate = true;
}

void RtuLine::onReadyRead()
{
    const QByteArray bytes = m_port.readAll();
    if (m_silence.isActive()) {
        m_silence.start();
        note("a late answer or noise came");
        return;
    }
    if (!isAsked()) {
        return;
    }
    m_buffer = (m_buffer + bytes).right(kMaxNoise);
    note("what came is no answer, or its checksum is wrong");
    for (int begin = 0; begin < m_buffer.size() && !takeFrame(begin); ++begin) {
    }
}

/// Whether an answer begins there. Noise may stand before it.
bool RtuLine::takeFrame(int begin)
{
    for (const int size : {request().answerSize, kExceptionSize}) {
        const QByteArray content = RtuFrame::contentAt(m_buffer, begin, size);
        if (!content.isEmpty()) {
            return take(quint8(content[0]), content.mid(1));
        }
    }
    return false;
}

void RtuLine::onError(QSerialPort::SerialPortError error)
{
    if (error != QSerialPort::NoError && error != QSerialPort::TimeoutError) {
        breakOff(m_port.errorString());
    }
}

} // namespace norvo
