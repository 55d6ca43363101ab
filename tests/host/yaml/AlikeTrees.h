// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlTree.h"

#include <algorithm>

namespace norvo {

inline bool isAt(const Place& a, const Place& b)
{
    return a.line == b.line && a.column == b.column;
}

/// Whether both trees have all in common, the places of everything too.
inline bool isAlike(const YamlNode& a, const YamlNode& b)
{
    const auto isSameEntry = [](const YamlEntry& x, const YamlEntry& y) {
        return x.isAlias == y.isAlias && isAt(x.place, y.place) && isAt(x.earlier, y.earlier) &&
               x.keyMark == y.keyMark && x.mark == y.mark && bool(x.key) == bool(y.key) &&
               (!x.key || isAlike(*x.key, *y.key)) && isAlike(*x.value, *y.value);
    };
    const bool isText = a.kind == YamlNode::Kind::Text;
    return a.kind == b.kind && a.text == b.text && isAt(a.place, b.place) && a.mark == b.mark &&
           (!isText || a.begin == b.begin) && a.isCountable == b.isCountable &&
           a.isPlain == b.isPlain && a.isFlow == b.isFlow &&
           std::equal(a.entries.cbegin(), a.entries.cend(), b.entries.cbegin(), b.entries.cend(),
                      isSameEntry);
}

} // namespace norvo
