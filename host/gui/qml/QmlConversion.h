// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QVariant>

namespace norvo {

/// A value of the wiring as QML is to see it: arrays of numbers and bytes as a JavaScript array.
QVariant toQml(int type, const void* value);

/// A value that came out of QML, without ties to its engine.
QVariant fromQml(const QVariant& value);

/// `value`, which has no ties to an engine, as that type. An invalid variant where it does not read
/// as one: numbers, true and false and texts that say such read as one another, arrays of numbers
/// as an array only.
QVariant convertedTo(int type, const QVariant& value);

} // namespace norvo
