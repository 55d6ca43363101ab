// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QMap>
#include <QString>

#include <utility>

/// What a panel's author writes behind the name of an output or input: `speed: holding 100`, or
/// `setPoint: {as: "set %1", resend: true}` with the text behind "as" and options beside it.
struct PortDefinition
{
    PortDefinition() = default;
    PortDefinition(QString definition, QMap<QString, QString> withOptions = {})
        : text(std::move(definition)), options(std::move(withOptions))
    {}

    QString text;                   ///< Verbatim; may be empty.
    QMap<QString, QString> options; ///< Name to text.
};
