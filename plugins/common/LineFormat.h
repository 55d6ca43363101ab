// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/PortDefinition.h"

#include <QString>

namespace norvo {

/// What a named input writes: a line in which "%1" stands for the value.
class LineFormat
{
public:
    /// What is wrong with the definition, or an empty text. Options: "decimal", "point" or "comma";
    /// "resend", "true" or "false".
    QString define(const PortDefinition& definition);

    QString lineFor(QString value) const;
    /// Whether the last line is to be written again when the other side has started again.
    bool isResent() const { return m_isResent; }

private:
    QString m_format;
    bool m_hasComma = false;
    bool m_isResent = false;
};

/// Reads an option that has two texts: false for the first one, which is also that of a definition
/// without it. Returns what is wrong, or an empty text.
QString readOption(const PortDefinition& definition, const QString& name, const QString& first,
                   const QString& second, bool& isSecond);

} // namespace norvo
