// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/Label.h"

#include "devices/Decimals.h"

#include <QtNumeric>

namespace {

constexpr char kValue[] = "Value";
constexpr char kPrecision[] = "widget/precision";
constexpr QChar kEmDash(0x2014);

} // namespace

Label::Label()
{
    addParam(kValue, "");
    addParam(kFontSize, "15");
    addParam(kPrecision, "0");
    addParam(kAlignment, "center", {"center", "right", "left"});
}

QString Label::withoutValue(const QString& text)
{
    return text.contains(QLatin1String("%0")) ? text.arg(kEmDash) : text;
}

bool Label::initialise()
{
    m_text = getParam(kValue).value();
    m_hasPlaceholder = true;
    m_precision = norvo::decimals(getParam(kPrecision));
    setDescription(m_text);
    return true;
}

void Label::postInitialisation()
{
    emit output(withoutValue(m_text));
}

void Label::inputWarning(bool warning)
{
    emit outputWarning(warning);
}

void Label::input(QString val)
{
    m_text = val;
    m_hasPlaceholder = true;
    setDescription(m_text);
    emit output(m_text);
}

void Label::input(double val)
{
    if (qIsNaN(val)) {
        emit output("-");
        return;
    }
    if (!m_hasPlaceholder) {
        emit output(m_text);
        return;
    }
    const QString text = m_text.arg(QString::number(val, 'f', m_precision));
    m_hasPlaceholder = text != m_text; // Qt has warned if not; once is enough
    emit output(text);
}
