// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/PortDefinition.h"

#include <QRegularExpression>
#include <QString>

#include <optional>

namespace norvo {

/// What a named output looks for in a line: a regular expression. Its first group is the value, or
/// the whole match where that takes no part.
///
/// A match may take a bounded number of steps, whatever the expression and the line: one that needs
/// more is none.
class LinePattern
{
public:
    /// What is wrong with the definition, or an empty text. Option "decimal": "point" or "comma".
    QString define(const PortDefinition& definition);

    std::optional<QString> valueIn(const QString& line) const;
    /// The value with the point that numbers are read with.
    QString numberOf(const QString& value) const;

private:
    QRegularExpression m_expression;
    bool m_hasComma = false;
};

} // namespace norvo
