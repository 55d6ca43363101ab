#include "widgets/TextHelper.h"

#include <sstream>

QString TextHelper::doubleToStr(double value, int precision)
{
    std::stringstream stream;
    stream.precision(precision);
    stream << std::fixed << value;
    return QString::fromStdString(stream.str());
}
