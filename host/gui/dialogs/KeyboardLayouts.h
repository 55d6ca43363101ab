// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVector>

namespace norvo {

/// What the three upper rows of a keyboard type, a character for each key. The rows of all layouts
/// are kRowLengths long, with shift as without.
struct KeyboardLayout
{
    static constexpr int kRowLengths[3] = {11, 11, 9};

    QString shortName; ///< For the key that switches to this layout.
    QString name;
    QStringList rows;
    QStringList shiftedRows;
};

const QVector<KeyboardLayout>& languageLayouts();
const KeyboardLayout& symbolLayout();

} // namespace norvo
