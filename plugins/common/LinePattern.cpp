// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/common/LinePattern.h"

#include "plugins/common/LineFormat.h"

namespace norvo {

namespace {

const QString kLimit = QStringLiteral("(*LIMIT_MATCH=100000)");

} // namespace

QString LinePattern::define(const PortDefinition& definition)
{
    if (definition.text.isEmpty()) {
        return "it is empty; write a regular expression, such as \"temperature ([-0-9.]+)\"";
    }
    m_expression.setPattern(kLimit + definition.text);
    if (!m_expression.isValid()) {
        return QString("broken regular expression: %1, at character %2")
            .arg(m_expression.errorString())
            .arg(qMax(0, m_expression.patternErrorOffset() - kLimit.size()) + 1);
    }
    return readOption(definition, "decimal", "point", "comma", m_hasComma);
}

std::optional<QString> LinePattern::valueIn(const QString& line) const
{
    const QRegularExpressionMatch match = m_expression.match(line);
    return match.hasMatch() ? std::optional(match.captured(match.capturedStart(1) >= 0 ? 1 : 0))
                            : std::nullopt;
}

QString LinePattern::numberOf(const QString& value) const
{
    return m_hasComma ? QString(value).replace(',', '.') : value;
}

} // namespace norvo
