// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QVector>

/// An array in a table of test data. A bare one has two names in a process that holds the plot
/// library, and Qt Test, which compares them, may meet either.
struct ArrayColumn
{
    QVector<double> values;
};

Q_DECLARE_METATYPE(ArrayColumn)
