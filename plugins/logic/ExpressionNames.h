// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace norvo {

/// The names that an expression refers to, as far as its text tells.
struct ExpressionNames
{
    QStringList used;         ///< Each once; neither properties, keys nor JavaScript's own words.
    QSet<QString> parameters; ///< Of functions in it; an input may have the same name.
    bool declaresOthers = false; ///< It holds statements that may declare some of them.
};

/// The text need not be a correct expression.
ExpressionNames namesIn(const QString& expression);

} // namespace norvo
