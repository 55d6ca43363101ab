// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QMetaMethod>
#include <QVector>

class QObject;

namespace norvo {

/// A signal or function of a QML item as it can be wired.
struct QmlMethod
{
    int itemIndex = -1;     ///< In the item's meta-object.
    QVector<int> itemTypes; ///< The meta types of the arguments there.
    QByteArray name;
    QVector<int> types; ///< The meta types here; another one where that is QVariant.

    bool isConverted() const { return types != itemTypes; }
    /// Whether both are wired alike, whatever item they belong to.
    bool operator==(const QmlMethod& other) const
    {
        return name == other.name && types == other.types && itemTypes == other.itemTypes;
    }
};

using QmlMethods = QVector<QmlMethod>;

/// The signals of `item` that QML declares, but for the change signals of properties. One with an
/// untyped value stands in front of its converted forms.
QmlMethods qmlSignals(const QObject& item);

/// The functions of `item` that QML declares. One that begins with an untyped value, and has at
/// most an untyped name behind, stands behind its converted forms.
QmlMethods qmlSlots(const QObject& item);

} // namespace norvo
