// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/ModbusRequest.h"

#include <QMap>
#include <QModbusPdu>

namespace norvo {

namespace {

/// A write is confirmed by what the answer repeats of it: the address, and the value or the number
/// of values; all there is of a mask.
ModbusRequest writeOf(const QModbusRequest& request)
{
    constexpr int repeated = 5;
    const QByteArray pdu = char(request.functionCode()) + request.data();
    const bool isMask = request.functionCode() == QModbusPdu::MaskWriteRegister;
    const QByteArray answer = isMask ? pdu : pdu.left(repeated);
    return {pdu, answer, answer.size()};
}

/// Yes or no as a text, a number or a pulse says it.
std::optional<bool> yesOrNo(const QVariant& value)
{
    const QString text = value.toString().trimmed().toLower();
    if (!value.isValid() || text == "true" || text == "yes" || text == "on") {
        return true;
    }
    if (text == "false" || text == "no" || text == "off") {
        return false;
    }
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && (number == 0 || number == 1) ? std::optional(number == 1) : std::nullopt;
}

std::optional<double> numberOf(const QVariant& value)
{
    bool isNumber = false;
    const double number = value.userType() == QMetaType::QString
                              ? value.toString().trimmed().toDouble(&isNumber)
                              : value.toDouble(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace

ModbusRequest ModbusRequest::read(ModbusPoint::Table table, int address, int size)
{
    constexpr QModbusPdu::FunctionCode codes[] = {
        QModbusPdu::ReadCoils, QModbusPdu::ReadDiscreteInputs, QModbusPdu::ReadInputRegisters,
        QModbusPdu::ReadHoldingRegisters};
    const bool isOfBits =
        table == ModbusPoint::Table::Coil || table == ModbusPoint::Table::Discrete;
    const int bytes = isOfBits ? (size + 7) / 8 : 2 * size;
    const QModbusRequest request(codes[int(table)], quint16(address), quint16(size));
    const char code = char(request.functionCode());
    return {code + request.data(), QByteArray(1, code) + char(bytes), 2 + bytes};
}

std::optional<ModbusRequest> ModbusRequest::write(const ModbusPoint& point, const QVariant& value,
                                                  bool multiple, QString& error)
{
    if (point.isYesNo()) {
        const auto on = yesOrNo(value);
        error =
            on ? QString() : QString("a value that is neither yes nor no, 1 nor 0, was refused");
        return !on         ? std::nullopt
               : point.bit ? std::optional(writeBit(point.address, *point.bit, *on))
                           : std::optional(writeCoil(point.address, *on, multiple));
    }
    const auto number = numberOf(value);
    const auto registers = number ? point.format.encode(*number) : std::nullopt;
    error = registers ? QString()
            : number  ? QString("a number outside of %1 was refused").arg(point.format.range())
                      : QString("a value that is no number was refused");
    return registers ? std::optional(writeRegisters(point.address, *registers, multiple))
                     : std::nullopt;
}

ModbusRequest ModbusRequest::writeCoil(int address, bool on, bool multiple)
{
    const auto at = quint16(address);
    return multiple
               ? writeOf({QModbusPdu::WriteMultipleCoils, at, quint16(1), quint8(1), quint8(on)})
               : writeOf({QModbusPdu::WriteSingleCoil, at, quint16(on ? 0xff00 : 0)});
}

ModbusRequest ModbusRequest::writeRegisters(int address, const RegisterFormat::Registers& registers,
                                            bool multiple)
{
    const auto at = quint16(address);
    return multiple || registers.size() > 1
               ? writeOf({QModbusPdu::WriteMultipleRegisters, at, quint16(registers.size()),
                          quint8(2 * registers.size()), registers})
               : writeOf({QModbusPdu::WriteSingleRegister, at, registers[0]});
}

ModbusRequest ModbusRequest::writeBit(int address, int bit, bool on)
{
    const auto mask = quint16(1 << bit);
    return writeOf(
        {QModbusPdu::MaskWriteRegister, quint16(address), quint16(~mask), quint16(on ? mask : 0)});
}

bool ModbusRequest::fits(const QByteArray& answer) const
{
    return answer.size() == answerSize && answer.startsWith(answerHead);
}

bool ModbusRequest::isRefusedBy(const QByteArray& answer) const
{
    return answer.size() == 2 && quint8(answer[0]) == (quint8(pdu[0]) | QModbusPdu::ExceptionByte);
}

QString exceptionText(quint8 code)
{
    static const QMap<quint8, QString> names{
        {QModbusPdu::IllegalFunction, "illegal function"},
        {QModbusPdu::IllegalDataAddress, "illegal data address"},
        {QModbusPdu::IllegalDataValue, "illegal data value"},
        {QModbusPdu::ServerDeviceFailure, "server device failure"},
        {QModbusPdu::Acknowledge, "acknowledged, the server is still at it"},
        {QModbusPdu::ServerDeviceBusy, "server device busy"},
        {QModbusPdu::NegativeAcknowledge, "negative acknowledge"},
        {QModbusPdu::MemoryParityError, "memory parity error"},
        {QModbusPdu::GatewayPathUnavailable, "gateway path unavailable"},
        {QModbusPdu::GatewayTargetDeviceFailedToRespond,
         "gateway target device failed to respond"}};
    return QString("%1 (exception %2)").arg(names.value(code, "unknown reason")).arg(code);
}

} // namespace norvo
