// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <algorithm>

namespace norvo {

/// The one place in which two texts differ: the bytes of the old one from `begin` up to `oldEnd`
/// are in the new one those up to `newEnd`.
struct TextChange
{
    int begin = 0;
    int oldEnd = 0;
    int newEnd = 0;

    /// The shortest; nothing between them where both texts are equal.
    static TextChange between(const QByteArray& before, const QByteArray& after)
    {
        const int common = std::min(before.size(), after.size());
        const int begin =
            int(std::mismatch(before.cbegin(), before.cbegin() + common, after.cbegin()).first -
                before.cbegin());
        const int end = int(
            std::mismatch(before.crbegin(), before.crbegin() + (common - begin), after.crbegin())
                .first -
            before.crbegin());
        return {begin, before.size() - end, after.size() - end};
    }
};

} // namespace norvo
