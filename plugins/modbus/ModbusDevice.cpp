// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/ModbusDevice.h"

#include "plugins/common/LineFormat.h"
#include "plugins/modbus/TcpLine.h"
#include "norvo/Categories.h"

#include <QModbusPdu>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace norvo;

namespace {

using namespace std::chrono_literals;

constexpr auto kMaxDelay = 10s; ///< Between two attempts to reach the server.
constexpr int kProbeMs = 1000;
constexpr int kHeadSize = 2; ///< Of the answer to a read request.

/// In the order of Loss.
const QStringList kLossTexts{
    "writes refused, the server is away", "writes replaced by newer ones before they were sent",
    "writes refused, the values do not fit", "writes refused by the server",
    "writes dropped, the server has gone away"};

} // namespace

ModbusDevice::ModbusDevice()
    : m_delay(kMaxDelay), m_losses(kLossTexts, [this](const QString& text) { alert(text); })
{
    ModbusSettings::declare(*this);
    m_reopenTimer.setSingleShot(true);
    m_pollTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_reopenTimer, &QTimer::timeout, this, &ModbusDevice::openLine);
    connect(&m_pollTimer, &QTimer::timeout, this, &ModbusDevice::poll);
}

ModbusDevice::~ModbusDevice() = default;

DeviceTypeInfo ModbusDevice::typeInfo()
{
    return {"Modbus", "Registers and coils of a Modbus server", {kCategoryBus}};
}

QString ModbusDevice::defineOutput(int, const QString& name, const PortDefinition& definition)
{
    ModbusPoint point;
    bool sendsChanges = false;
    QString error = unknownOption(definition, ModbusPoint::kOptions + QStringList("send"));
    error = error.isEmpty() ? point.define(definition) : error;
    error =
        error.isEmpty() ? readOption(definition, "send", "always", "changes", sendsChanges) : error;
    if (error.isEmpty()) {
        m_outputs.push_back({name, sendsChanges, {}});
        m_points.push_back(point);
    }
    return error;
}

QString ModbusDevice::defineInput(int, const QString& name, const PortDefinition& definition)
{
    ModbusPoint point;
    bool writesMultiple = false;
    QString error = unknownOption(definition, ModbusPoint::kOptions + QStringList("write"));
    error = error.isEmpty() ? point.define(definition) : error;
    error = error.isEmpty() ? point.writeError() : error;
    error = error.isEmpty() ? readOption(definition, "write", "single", "multiple", writesMultiple)
                            : error;
    if (error.isEmpty()) {
        m_inputs.push_back({name, point, writesMultiple, {}, {}});
    }
    return error;
}

bool ModbusDevice::initialise()
{
    const QString wrong = m_settings.read(*this);
    m_delay = RetryDelay(kMaxDelay);
    m_error.clear();
    m_blocks.clear();
    m_heard.clear();
    return wrong.isEmpty() || error(wrong);
}

void ModbusDevice::postInitialisation()
{
    if (isRunning()) {
        openLine();
    }
}

void ModbusDevice::preShutdown()
{
    m_losses.stop();
    m_reopenTimer.stop();
    dropLine();
}

void ModbusDevice::deinitialise()
{
    preShutdown();
}

void ModbusDevice::openLine()
{
    const std::chrono::milliseconds timeout(m_settings.timeoutMs);
    const auto unit = quint8(m_settings.unit);
    if (m_settings.isSerial()) {
        m_line = std::make_unique<RtuLine>(m_settings.serial, unit, timeout);
    } else {
        m_line = std::make_unique<TcpLine>(m_settings.host, m_settings.port, unit, timeout);
    }
    const int number = ++m_lineNumber;
    const auto connectTo = [this, number](auto signal, auto slot) {
        connect(
            m_line.get(), signal, this,
            [this, number, slot](const auto&... values) {
                if (number == m_lineNumber && isRunning()) {
                    (this->*slot)(values...);
                }
            },
            Qt::QueuedConnection);
    };
    connectTo(&ModbusLine::opened, &ModbusDevice::onOpened);
    connectTo(&ModbusLine::answered, &ModbusDevice::onAnswered);
    connectTo(&ModbusLine::unanswered, &ModbusDevice::lose);
    connectTo(&ModbusLine::broken, &ModbusDevice::lose);
    m_line->open();
}

void ModbusDevice::onOpened()
{
    m_isOpen = true;
    m_run.invalidate();
    m_pollTimer.start(m_settings.pollMs);
    if (m_outputs.empty() && m_inputs.empty()) {
        setConnected(true); // Nothing can be asked.
        return;
    }
    m_sinceAnswer.invalidate();
    poll();
}

void ModbusDevice::dropLine()
{
    ++m_lineNumber;
    m_line.reset();
    m_isOpen = false;
    m_isAsking = false;
    m_isProbing = false;
    m_pollTimer.stop();
    m_nextBlock = m_blocks.size();
    m_writtenInput.reset();
    for (const int input : m_waitingInputs) {
        m_inputs[std::size_t(input)].waiting.reset();
    }
    m_waitingInputs.clear();
    for (Output& output : m_outputs) {
        output.last.reset();
    }
}

void ModbusDevice::lose(const QString& reason)
{
    const QPointer<ModbusDevice> alive(this);
    const QString written = m_writtenInput ? m_inputs[std::size_t(*m_writtenInput)].name : "";
    m_losses.add(Dropped, qint64(m_waitingInputs.size()));
    const std::chrono::milliseconds run(isConnected() && m_run.isValid() ? m_run.elapsed() : 0);
    dropLine();
    m_reopenTimer.start(m_delay.nextJittered(run));
    setConnected(false);
    if (alive && isRunning() && !written.isEmpty()) {
        reportFault(QString("input \"%1\": the write was not confirmed; whether it has arrived is "
                            "not known")
                        .arg(written));
    }
    if (alive && isRunning()) {
        report(m_error, QString("%1: %2").arg(m_settings.target, reason));
    }
}

void ModbusDevice::report(QString& last, const QString& text)
{
    if (text != std::exchange(last, text) && !text.isEmpty()) {
        reportFault(text);
    }
}

void ModbusDevice::poll()
{
    if (m_isOpen && m_nextBlock >= m_blocks.size()) {
        updateBlocks();
        m_nextBlock = 0;
        askNext();
    }
}

void ModbusDevice::updateBlocks()
{
    std::vector<int> heard;
    for (int output = 0; output < int(m_outputs.size()); ++output) {
        if (isHeard(output)) {
            heard.push_back(output);
        }
    }
    if (heard != m_heard) {
        m_heard = heard;
        m_blocks = PollBlock::merge(m_points, std::move(heard));
    }
}

void ModbusDevice::askNext()
{
    if (!m_isOpen || m_isAsking) {
        return;
    }
    if (!m_waitingInputs.empty()) {
        m_writtenInput = m_waitingInputs.front();
        m_waitingInputs.pop_front();
        Input& input = m_inputs[std::size_t(*m_writtenInput)];
        const ModbusRequest request = *std::exchange(input.waiting, std::nullopt);
        ask(request, 1); // Sent again it could come after what is newer.
    } else if (m_nextBlock < m_blocks.size()) {
        const PollBlock& block = m_blocks[m_nextBlock];
        ask(ModbusRequest::read(block.table, block.address, block.size), 1 + m_settings.retries);
    } else if (m_blocks.empty() &&
               (!m_sinceAnswer.isValid() || m_sinceAnswer.hasExpired(kProbeMs))) {
        askProbe();
    }
}

void ModbusDevice::ask(const ModbusRequest& request, int attempts)
{
    m_isAsking = true;
    m_line->ask(request, attempts);
}

/// Whatever the answer, there is one.
void ModbusDevice::askProbe()
{
    const ModbusPoint* const point = !m_points.empty()   ? &m_points.front()
                                     : !m_inputs.empty() ? &m_inputs.front().point
                                                         : nullptr;
    if (point) {
        m_isProbing = true;
        ask(ModbusRequest::read(point->table, point->address, point->size()),
            1 + m_settings.retries);
    }
}

void ModbusDevice::onAnswered(const QByteArray& pdu)
{
    m_isAsking = false;
    const bool isRefused = quint8(pdu[0]) & QModbusPdu::ExceptionByte;
    const auto code = isRefused ? quint8(pdu[1]) : quint8(0);
    if (code == QModbusPdu::GatewayPathUnavailable ||
        code == QModbusPdu::GatewayTargetDeviceFailedToRespond) {
        lose(exceptionText(code));
        return;
    }
    const QPointer<ModbusDevice> alive(this);
    const int line = m_lineNumber;
    m_sinceAnswer.start();
    if (!isConnected()) {
        m_run.start();
        m_error.clear();
        setConnected(true);
    }
    if (!alive || line != m_lineNumber) {
        return;
    }
    if (m_writtenInput) {
        onWritten(pdu);
    } else if (!std::exchange(m_isProbing, false)) {
        onBlock(pdu);
    }
    if (alive && line == m_lineNumber) {
        askNext();
    }
}

void ModbusDevice::onBlock(const QByteArray& pdu)
{
    PollBlock& block = m_blocks[m_nextBlock];
    if (quint8(pdu[0]) & QModbusPdu::ExceptionByte) {
        onBlockRefused(quint8(pdu[1]));
        return;
    }
    block.error.clear();
    ++m_nextBlock;
    deliver(block.members, pdu.mid(kHeadSize), block.address);
}

void ModbusDevice::onBlockRefused(quint8 code)
{
    PollBlock& block = m_blocks[m_nextBlock];
    const bool isOfAddress =
        code == QModbusPdu::IllegalDataAddress || code == QModbusPdu::IllegalDataValue;
    if (isOfAddress && block.members.size() > 1) {
        auto [first, second] = block.halves(m_points);
        block = std::move(first);
        m_blocks.insert(m_blocks.begin() + std::ptrdiff_t(m_nextBlock) + 1, std::move(second));
        return; // The first of them is next.
    }
    ++m_nextBlock;
    const QString what =
        block.members.size() > 1
            ? block.place()
            : QString("output \"%1\" (%2)")
                  .arg(m_outputs[std::size_t(block.members[0])].name, block.place());
    report(block.error, QString("%1 cannot be read: %2").arg(what, exceptionText(code)));
}

/// A receiver may delete the device, end its running, or lose the line.
void ModbusDevice::deliver(std::vector<int> outputs, const QByteArray& data, int firstAddress)
{
    const QPointer<ModbusDevice> alive(this);
    const int line = m_lineNumber;
    for (const int output : outputs) {
        deliverOne(output, data, firstAddress);
        if (!alive || line != m_lineNumber) {
            return;
        }
    }
}

void ModbusDevice::deliverOne(int output, const QByteArray& data, int firstAddress)
{
    const ModbusPoint& point = m_points[std::size_t(output)];
    Output& named = m_outputs[std::size_t(output)];
    const double value = point.valueIn(data, firstAddress);
    if (named.sendsChanges && named.last == value) {
        return;
    }
    named.last = value;
    if (point.isYesNo()) {
        sendBool(output, value != 0);
    } else {
        sendNumber(output, value);
    }
}

void ModbusDevice::receive(int input, const QVariant& value)
{
    Input& named = m_inputs[std::size_t(input)];
    if (!isConnected()) {
        m_losses.add(WhileAway);
        return;
    }
    QString error;
    auto request = ModbusRequest::write(named.point, value, named.writesMultiple, error);
    if (!request) {
        m_losses.add(Unfit);
        report(named.error, QString("input \"%1\": %2").arg(named.name, error));
        return;
    }
    if (named.waiting) {
        m_losses.add(Replaced);
    } else {
        m_waitingInputs.push_back(input);
    }
    named.waiting = std::move(request);
    askNext();
}

void ModbusDevice::onWritten(const QByteArray& pdu)
{
    Input& input = m_inputs[std::size_t(*std::exchange(m_writtenInput, std::nullopt))];
    QString error;
    if (quint8(pdu[0]) & QModbusPdu::ExceptionByte) {
        m_losses.add(RefusedByServer);
        error = QString("input \"%1\" (%2) cannot be written: %3")
                    .arg(input.name, input.point.place(), exceptionText(quint8(pdu[1])));
    }
    report(input.error, error);
}
