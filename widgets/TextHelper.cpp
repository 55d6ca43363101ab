// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/TextHelper.h"

#include "devices/Decimals.h"

#include <sstream>

QString TextHelper::doubleToStr(double value, int precision)
{
    std::stringstream stream;
    stream.precision(norvo::decimals(precision));
    stream << std::fixed << value;
    return QString::fromStdString(stream.str());
}
