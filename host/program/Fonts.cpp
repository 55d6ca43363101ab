// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/Fonts.h"

#include <QFont>

namespace norvo {

namespace {

struct Substitution
{
    const char* family;
    const char* replacement;
};

constexpr Substitution kSubstitutions[] = {
    {"Digital-7", "DSEG7 Classic"},
    {"Arial", "Liberation Sans"},
    {"Courier", "Liberation Mono"},
};

} // namespace

/// Qt looks at what stands in for a family only when that family is not installed.
void substituteFonts()
{
    for (const Substitution& substitution : kSubstitutions) {
        QFont::insertSubstitution(substitution.family, substitution.replacement);
    }
}

} // namespace norvo
