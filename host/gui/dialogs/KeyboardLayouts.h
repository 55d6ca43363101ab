// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace norvo {

/// What the three upper rows of a keyboard type, a character for each key. A row is as long with
/// shift as without; at most 12, 12 and 11 keys fit a screen of 800 pixels.
struct KeyboardLayout
{
    QString language;  ///< "de"; empty for none.
    QString shortName; ///< For the key that switches to this layout.
    QString name;
    QStringList rows;
    QStringList shiftedRows;
};

namespace KeyboardLayouts {

const QVector<KeyboardLayout>& languages();
const KeyboardLayout& symbols();
/// The language of the application property "norvoLanguage", "de" or "de_AT"; the system's where
/// that names no layout; English where neither does.
int preferred();
/// The letters that a held letter offers instead, in its case; empty for one that has none.
QString variants(QChar letter);

} // namespace KeyboardLayouts

} // namespace norvo
