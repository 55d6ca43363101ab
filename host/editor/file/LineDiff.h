// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVector>

namespace norvo {

/// Which lines of two texts stand in one of them only.
struct LineDiff
{
    static constexpr int kMaxLines = 2000; ///< Longer stretches that differ are marked as a whole.

    LineDiff(const QStringList& left, const QStringList& right);

    QVector<bool> onlyLeft;  ///< One for each line.
    QVector<bool> onlyRight; ///< Likewise.
};

} // namespace norvo
