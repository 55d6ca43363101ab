// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/RegisterFormat.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace norvo {

namespace {

using Type = RegisterFormat::Type;

template <class To, class From>
To bitsAs(From bits)
{
    static_assert(sizeof(To) == sizeof(From), "the same bits");
    To value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

double rawNumber(quint64 bits, Type type)
{
    switch (type) {
    case Type::Int16:
        return qint16(bits);
    case Type::Uint16:
        return quint16(bits);
    case Type::Int32:
        return qint32(bits);
    case Type::Uint32:
        return quint32(bits);
    case Type::Float32:
        return double(bitsAs<float>(quint32(bits)));
    case Type::Float64:
        break;
    }
    return bitsAs<double>(bits);
}

template <class Number>
std::pair<double, double> limits()
{
    return {double(std::numeric_limits<Number>::lowest()),
            double(std::numeric_limits<Number>::max())};
}

std::pair<double, double> rawLimits(Type type)
{
    switch (type) {
    case Type::Int16:
        return limits<qint16>();
    case Type::Uint16:
        return limits<quint16>();
    case Type::Int32:
        return limits<qint32>();
    case Type::Uint32:
        return limits<quint32>();
    case Type::Float32:
        return limits<float>();
    case Type::Float64:
        break;
    }
    return limits<double>();
}

/// `raw` is within the limits of the type, and whole where that is one of whole numbers.
quint64 bitsOf(double raw, Type type)
{
    if (type == Type::Float32) {
        return bitsAs<quint32>(float(raw));
    }
    return type == Type::Float64 ? bitsAs<quint64>(raw) : quint64(qint64(raw));
}

/// 10 for 0.1: a tenth of a whole number is exact as a quotient and not as a product. Else 0.
double divisorOf(double scale)
{
    const double divisor = std::round(1 / scale);
    return std::abs(scale) < 1 && std::abs(divisor * scale - 1) < 1e-12 ? divisor : 0;
}

} // namespace

const QStringList& RegisterFormat::typeNames()
{
    static const QStringList names{"int16", "uint16", "int32", "uint32", "float32", "float64"};
    return names;
}

int RegisterFormat::size() const
{
    constexpr int sizes[] = {1, 1, 2, 2, 2, 4};
    return sizes[int(type)];
}

double RegisterFormat::decode(const quint16* registers) const
{
    quint64 bits = 0;
    for (int i = 0; i < size(); ++i) {
        const quint16 word = registers[isLowWordFirst ? size() - 1 - i : i];
        bits = bits << 16 | (areBytesSwapped ? qbswap(word) : word);
    }
    return scaled(rawNumber(bits, type));
}

std::optional<RegisterFormat::Registers> RegisterFormat::encode(double number) const
{
    const bool isWhole = type != Type::Float32 && type != Type::Float64;
    const double raw = isWhole ? std::round(unscaled(number)) : unscaled(number);
    const auto [lowest, highest] = rawLimits(type);
    if (!(raw >= lowest && raw <= highest)) { // NaN as well
        return std::nullopt;
    }
    quint64 bits = bitsOf(raw, type);
    Registers registers(size());
    for (int i = size() - 1; i >= 0; --i, bits >>= 16) {
        const auto word = quint16(bits);
        registers[isLowWordFirst ? size() - 1 - i : i] = areBytesSwapped ? qbswap(word) : word;
    }
    return registers;
}

QString RegisterFormat::range() const
{
    const auto [lowest, highest] = rawLimits(type);
    const auto [first, last] = std::minmax({scaled(lowest), scaled(highest)});
    return QString("%1 to %2").arg(first, 0, 'g', 10).arg(last, 0, 'g', 10);
}

double RegisterFormat::scaled(double raw) const
{
    const double divisor = divisorOf(scale);
    return (divisor != 0 ? raw / divisor : raw * scale) + offset;
}

double RegisterFormat::unscaled(double number) const
{
    const double divisor = divisorOf(scale);
    return divisor != 0 ? (number - offset) * divisor : (number - offset) / scale;
}

} // namespace norvo
