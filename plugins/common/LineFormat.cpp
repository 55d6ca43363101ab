// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/common/LineFormat.h"

namespace norvo {

QString readOption(const PortDefinition& definition, const QString& name, const QString& first,
                   const QString& second, bool& isSecond)
{
    const QString text = definition.options.value(name, first);
    isSecond = text == second;
    return isSecond || text == first ? QString()
                                     : QString("option \"%1\": \"%2\" is neither %3 nor %4")
                                           .arg(name, text, first, second);
}

QString LineFormat::define(const PortDefinition& definition)
{
    m_format = definition.text;
    if (m_format.isEmpty()) {
        return "it is empty; write the line that is sent, with %1 for the value";
    }
    if (m_format.contains('\n') || m_format.contains('\r')) {
        return "it holds more than one line";
    }
    const QString error = readOption(definition, "resend", "false", "true", m_isResent);
    return error.isEmpty() ? readOption(definition, "decimal", "point", "comma", m_hasComma)
                           : error;
}

QString LineFormat::lineFor(QString value) const
{
    bool isNumber = false;
    value.toDouble(&isNumber);
    if (m_hasComma && isNumber) {
        value.replace('.', ',');
    }
    return QString(m_format).replace("%1", value);
}

} // namespace norvo
