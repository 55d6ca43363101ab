// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QVector>

/// An array of numbers as devices pass it to one another; shared by reference count.
using DoubleVec = QVector<double>;

/// Declares the array to the meta-type system under the name "DoubleVec", registered on first use.
///
/// Written out rather than with Qt's macro because the type is not flagged movable. It must stay
/// hidden in every library that includes it: the plot library exports a function of the same name
/// that registers the same C++ type under another name.
template <>
struct QMetaTypeId<DoubleVec>
{
    enum { Defined = 1 };

    static int qt_metatype_id()
    {
        static QBasicAtomicInt registered = Q_BASIC_ATOMIC_INITIALIZER(0);
        if (const int id = registered.loadAcquire()) {
            return id;
        }
        using Functions = QtMetaTypePrivate::QMetaTypeFunctionHelper<DoubleVec>;
        const int id = QMetaType::registerNormalizedType(
            QByteArrayLiteral("DoubleVec"), Functions::Destruct, Functions::Construct,
            int(sizeof(DoubleVec)),
            QMetaType::NeedsConstruction | QMetaType::NeedsDestruction |
                QMetaType::WasDeclaredAsMetaType,
            nullptr);
        registered.storeRelease(id);
        return id;
    }
};
