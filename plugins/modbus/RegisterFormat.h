// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace norvo {

/// How a number stands in registers of 16 bits.
struct RegisterFormat
{
    enum class Type { Int16, Uint16, Int32, Uint32, Float32, Float64 };
    using Registers = QVector<quint16>;

    static const QStringList& typeNames(); ///< In the order of Type.

    int size() const; ///< In registers.
    /// The number that stands at `registers`, size() of them.
    double decode(const quint16* registers) const;
    /// What stands for the number, rounded to the nearest; nothing where it is no number or does
    /// not fit.
    std::optional<Registers> encode(double number) const;
    QString range() const; ///< The numbers that fit: "0 to 6553.5".

    Type type = Type::Uint16;
    bool isLowWordFirst = false;
    bool areBytesSwapped = false; ///< Within each register.
    double scale = 1;             ///< number = what the registers hold * scale + offset
    double offset = 0;

private:
    double scaled(double raw) const;
    double unscaled(double number) const;
};

} // namespace norvo
