// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/DropDownListDevice.h"

#include "norvo/Truncation.h"

#include <QScopedValueRollback>

#include <cmath>

namespace {

constexpr char kOptions[] = "options";
constexpr char kSeparator[] = "separator";

} // namespace

DropDownListDevice::DropDownListDevice()
{
    addParam(kOptions, "value1|value2");
    addParam(kSeparator, "|");
    addParam(kEmitOnInit, "false");
    addParam(kLabel, "");
    addParam(kLabelSize, "12");
    addParam(kSize, "16");
}

QStringList DropDownListDevice::choices()
{
    return getParam(kOptions).value().split(getParam(kSeparator).value(), Qt::SkipEmptyParts,
                                            Qt::CaseInsensitive);
}

bool DropDownListDevice::initialise()
{
    return choices().isEmpty() ? error("Cant't parse options string") : true;
}

void DropDownListDevice::input(int index)
{
    if (m_isPassingIndex || m_index == index) {
        return;
    }
    const QScopedValueRollback<bool> guard(m_isPassingIndex, true);
    m_index = index;
    emit output(index);
    emit output(double(index));
}

void DropDownListDevice::input(double index)
{
    input(norvo::truncatedToInt(std::floor(index + 0.5))); // qRound() knows no end of int
}

void DropDownListDevice::input(QString item)
{
    if (m_isPassingItem || m_item == item) {
        return;
    }
    const QScopedValueRollback<bool> guard(m_isPassingItem, true);
    m_item = item;
    emit output(item);
}
