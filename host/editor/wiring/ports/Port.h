// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QVector>

namespace norvo {

/// An output or an input of a device: all its methods of one name.
struct Port
{
    Q_DECLARE_TR_FUNCTIONS(norvo::Port)

public:
    QString device; ///< Id.
    QString name;
    bool isOutput = false;
    QStringList signatures; ///< In the order of declaration.
    QString meaning;        ///< In the words of its type, or its definition; may be empty.

    QString text() const { return device + '.' + name; }
    /// "number or text"; "pulse" for nothing.
    QString carries() const;

    bool operator==(const Port& other) const; ///< The same port.
};

/// What the arguments of a signature are, in an operator's words: "number, text".
QString carriedBy(const QString& signature);

} // namespace norvo
