// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/QmlConversion.h"

#include "norvo/DoubleVec.h"
#include "norvo/Truncation.h"

#include <QJSValue>

#include <cmath>
#include <limits>

namespace norvo {

namespace {

bool isNumber(const QVariant& value)
{
    const int type = value.userType();
    return type == QMetaType::Float || (type >= QMetaType::Int && type <= QMetaType::Double);
}

QVariant toBool(const QVariant& value)
{
    if (value.userType() == QMetaType::Bool) {
        return value;
    }
    const QString text = value.toString();
    if (value.userType() == QMetaType::QString && (text == "true" || text == "false")) {
        return text == "true";
    }
    return isNumber(value) ? QVariant(value.toDouble() != 0) : QVariant();
}

QVariant toDouble(const QVariant& value)
{
    if (isNumber(value) || value.userType() == QMetaType::Bool) {
        return value.toDouble();
    }
    bool ok = false;
    const double number = value.toString().trimmed().toDouble(&ok);
    return ok ? QVariant(number) : QVariant();
}

QVariant toInt(const QVariant& value)
{
    const QVariant number = toDouble(value);
    return number.isValid() && !std::isnan(number.toDouble())
               ? QVariant(truncatedToInt(number.toDouble()))
               : QVariant();
}

QVariant toText(const QVariant& value)
{
    return value.canConvert<QString>() ? QVariant(value.toString()) : QVariant();
}

QVariant toNumbers(const QVariant& value)
{
    if (value.userType() == qMetaTypeId<DoubleVec>()) {
        return value;
    }
    const bool isList = value.userType() == QMetaType::QVariantList;
    if (!isList && !(value.userType() > QMetaType::User && value.canConvert<QVariantList>())) {
        return {};
    }
    const QVariantList list = value.toList();
    DoubleVec numbers;
    numbers.reserve(list.size());
    for (const QVariant& element : list) {
        const QVariant number = toDouble(element);
        numbers.append(number.isValid() ? number.toDouble()
                                        : std::numeric_limits<double>::quiet_NaN());
    }
    return QVariant::fromValue(numbers);
}

} // namespace

QVariant toQml(int type, const void* value)
{
    if (type == QMetaType::QVariant) {
        const auto& variant = *static_cast<const QVariant*>(value);
        return variant.userType() == QMetaType::QVariant
                   ? variant
                   : toQml(variant.userType(), variant.constData());
    }
    if (type == qMetaTypeId<DoubleVec>()) {
        const auto& numbers = *static_cast<const DoubleVec*>(value);
        return QVariantList(numbers.cbegin(), numbers.cend());
    }
    if (type == QMetaType::QByteArray) {
        const auto& bytes = *static_cast<const QByteArray*>(value);
        const auto* const first = reinterpret_cast<const uchar*>(bytes.constData());
        return QVariantList(first, first + bytes.size());
    }
    return QVariant(type, value);
}

QVariant fromQml(const QVariant& value)
{
    return value.userType() == qMetaTypeId<QJSValue>() ? value.value<QJSValue>().toVariant()
                                                       : value;
}

QVariant convertedTo(int type, const QVariant& value)
{
    switch (type) {
    case QMetaType::Double:
        return toDouble(value);
    case QMetaType::QString:
        return toText(value);
    case QMetaType::Bool:
        return toBool(value);
    case QMetaType::Int:
        return toInt(value);
    default:
        return type == qMetaTypeId<DoubleVec>() ? toNumbers(value) : value;
    }
}

} // namespace norvo
