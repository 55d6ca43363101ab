#include "widgets/TextHelper.h"

#include "widgets/ReadoutStyle.h"

#include <sstream>

QString TextHelper::doubleToStr(double value, int precision)
{
    std::stringstream stream;
    stream.precision(ReadoutStyle::decimals(precision));
    stream << std::fixed << value;
    return QString::fromStdString(stream.str());
}
