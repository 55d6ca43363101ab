// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/ModbusPoint.h"

#include <QtEndian>

#include <cmath>
#include <cstddef>

namespace norvo {

const QStringList ModbusPoint::kOptions{"type", "order", "bit", "scale", "offset"};

namespace {

constexpr int kMaxAddress = 65535;

const QStringList kTables{"coil", "discrete", "input", "holding"}; ///< In the order of Table.
const QStringList kOrders{"abcd", "cdab", "badc", "dcba"}; ///< Bit 0: words, bit 1: bytes swapped.

using Fields = QMap<QString, QString>; ///< By the names of ModbusPoint::kOptions.

QString put(Fields& fields, const QString& name, const QString& text)
{
    const bool isNew = !fields.contains(name);
    fields.insert(name, text);
    return isNew ? QString() : QString("the %1 is given twice").arg(name);
}

QString putWord(Fields& fields, const QString& word)
{
    if (RegisterFormat::typeNames().contains(word)) {
        return put(fields, "type", word);
    }
    if (kOrders.contains(word)) {
        return put(fields, "order", word);
    }
    if (word.startsWith('x')) {
        return put(fields, "scale", word.mid(1));
    }
    if (word.startsWith('+') || word.startsWith('-')) {
        return put(fields, "offset", word);
    }
    return QString("\"%1\" is no type (%2), no order (%3), no scale (such as x0.1), no offset "
                   "(such as +5) and no bit (such as bit 3)")
        .arg(word, RegisterFormat::typeNames().join(", "), kOrders.join(", "));
}

QString readOne(const QString& name, const QString& text, const QStringList& names, int& index)
{
    index = names.indexOf(text);
    return index >= 0 ? QString()
                      : QString("there is no %1 \"%2\"; valid names: %3")
                            .arg(name, text, names.join(", "));
}

/// A whole number from 0 to `max`, in decimal or as 0x1F.
QString readWhole(const QString& name, const QString& text, int max, int& number)
{
    bool isNumber = false;
    number = text.toInt(&isNumber, text.startsWith("0x") ? 16 : 10);
    return isNumber && number >= 0 && number <= max
               ? QString()
               : QString("the %1 \"%2\" is not a whole number from 0 to %3")
                     .arg(name, text)
                     .arg(max);
}

QString readNumber(const QString& name, const QString& text, double& number)
{
    bool isNumber = false;
    number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number)
               ? QString()
               : QString("the %1 \"%2\" is not a number").arg(name, text);
}

QString readAddress(const QString& text, int& address)
{
    const QString error = readWhole("address", text, kMaxAddress, address);
    return error.isEmpty() ? error
                           : error + "; addresses count from 0, so that register 40101 of a manual "
                                     "is holding 100";
}

QString readField(const QString& name, const QString& text, ModbusPoint& point)
{
    int index = 0;
    QString error;
    if (name == "type") {
        error = readOne(name, text, RegisterFormat::typeNames(), index);
        point.format.type = RegisterFormat::Type(index);
    } else if (name == "order") {
        error = readOne(name, text, kOrders, index);
        point.format.isLowWordFirst = index & 1;
        point.format.areBytesSwapped = index & 2;
    } else if (name == "bit") {
        error = readWhole(name, text, 15, index);
        point.bit = index;
    } else if (name == "scale") {
        error = readNumber(name, text, point.format.scale);
        if (error.isEmpty() && point.format.scale == 0) {
            error = "the scale is 0; without a scale leave it out";
        }
    } else {
        error = readNumber(name, text, point.format.offset);
    }
    return error;
}

/// What the parts, each right by itself, do not mean together.
QString contradiction(const ModbusPoint& point, const Fields& fields)
{
    const bool hasFormat = fields.size() > (fields.contains("bit") ? 1 : 0);
    if (point.isOfBits() && !fields.isEmpty()) {
        return QString("a %1 is yes or no by itself; leave out the %2")
            .arg(kTables[int(point.table)], fields.firstKey());
    }
    if (point.bit && hasFormat) {
        return "a bit is yes or no; it has no type, order, scale or offset";
    }
    if (point.format.isLowWordFirst && point.format.size() == 1) {
        return QString("a value of one register has the order abcd or badc");
    }
    if (point.end() > kMaxAddress + 1) {
        return QString("it needs %1 registers, and the last one there is has the address %2")
            .arg(point.size())
            .arg(kMaxAddress);
    }
    return {};
}

QString readText(const QStringList& words, Fields& fields)
{
    QString error;
    for (int i = 2; i < words.size() && error.isEmpty(); ++i) {
        if (words[i] != "bit") {
            error = putWord(fields, words[i]);
        } else if (++i < words.size()) {
            error = put(fields, "bit", words[i]);
        } else {
            error = "the number of the bit is missing; write bit 3";
        }
    }
    return error;
}

} // namespace

QString ModbusPoint::define(const PortDefinition& definition)
{
    const QStringList words = definition.text.simplified().toLower().split(' ');
    if (words.size() < 2) {
        return QString("\"%1\" is no table and address; write for instance holding 100 uint16 x0.1 "
                       "or coil 3")
            .arg(definition.text);
    }
    int index = 0;
    QString error = readOne("table", words[0], kTables, index);
    table = Table(index);
    error = error.isEmpty() ? readAddress(words[1], index) : error;
    address = quint16(index);

    Fields fields;
    error = error.isEmpty() ? readText(words, fields) : error;
    for (const QString& name : kOptions) {
        if (error.isEmpty() && definition.options.contains(name)) {
            error = put(fields, name, definition.options[name].trimmed().toLower());
        }
    }
    for (auto field = fields.cbegin(); field != fields.cend() && error.isEmpty(); ++field) {
        error = readField(field.key(), field.value(), *this);
    }
    return error.isEmpty() ? contradiction(*this, fields) : error;
}

QString ModbusPoint::writeError() const
{
    return table == Table::Coil || table == Table::Holding
               ? QString()
               : QString("nothing can be written to \"%1\"; an input is a coil or a holding "
                         "register")
                     .arg(kTables[int(table)]);
}

QString ModbusPoint::place() const
{
    return QString("%1 %2").arg(kTables[int(table)]).arg(address);
}

double ModbusPoint::valueIn(const QByteArray& values, int firstAddress) const
{
    const int index = address - firstAddress;
    if (isOfBits()) {
        return quint8(values[index / 8]) >> index % 8 & 1;
    }
    RegisterFormat::Registers registers(size());
    for (int i = 0; i < size(); ++i) {
        registers[i] =
            qFromBigEndian<quint16>(values.constData() + std::ptrdiff_t(2) * (index + i));
    }
    return bit ? registers[0] >> *bit & 1 : format.decode(registers.constData());
}

} // namespace norvo
