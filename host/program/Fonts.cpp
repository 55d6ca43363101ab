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

void substituteFonts(const QStringList& installedFamilies)
{
    for (const Substitution& substitution : kSubstitutions) {
        if (!installedFamilies.contains(substitution.family, Qt::CaseInsensitive)) {
            QFont::insertSubstitution(substitution.family, substitution.replacement);
        }
    }
}

} // namespace norvo
