// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/Param.h"

#include "norvo/Readings.h"
#include "norvo/Truncation.h"

#include <QRegularExpression>

#include <utility>

using norvo::readBool;
using norvo::readDouble;

namespace {

/// Ends the error about a text that is nearly a number.
QString adviceOnNumber(const QString& text)
{
    static const QRegularExpression withUnit(R"(^\s*[-+]?\d+(\.\d+)?\s*[^\d\s.,]+\s*$)");
    const QString withPoint = QString(text).replace(',', '.');
    if (withPoint != text && readDouble(withPoint)) {
        return "; write it with a point, " + withPoint.trimmed();
    }
    return withUnit.match(text).hasMatch() ? "; write it without the unit" : "";
}

} // namespace

Param::Param(QString name, QString defaultText, QStringList options, bool flag,
             EnabledConditions enabledConditions)
    : m_name(std::move(name)),
      m_value(defaultText),
      m_default(std::move(defaultText)),
      m_options(std::move(options)),
      m_enabledConditions(std::move(enabledConditions)),
      m_flag(flag)
{}

Param::operator QString() const
{
    return m_value;
}

Param::operator bool() const
{
    return readBool(m_value).value_or(false);
}

Param::operator int() const
{
    bool ok = false;
    const int number = m_value.trimmed().toInt(&ok);
    return ok ? number : norvo::truncatedToInt(double(*this));
}

Param::operator double() const
{
    return readDouble(m_value).value_or(0.0);
}

void Param::addEnabledCondition(QString otherParam, QStringList enablingValues)
{
    m_enabledConditions.insert(otherParam, enablingValues);
}

QString Param::fault() const
{
    if (m_default == "true" || m_default == "false") {
        return readBool(m_value) ? QString()
                                 : QString("\"%1\" is neither true nor false").arg(m_value);
    }
    if (readDouble(m_default) && !readDouble(m_value)) {
        return QString("\"%1\" is not a number%2").arg(m_value, adviceOnNumber(m_value));
    }
    return {};
}
