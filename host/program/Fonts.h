#pragma once

#include <QStringList>

namespace norvo {

/// Lets free families stand in for those that devices ask for by name, where a family is not among
/// the installed ones.
void substituteFonts(const QStringList& installedFamilies);

} // namespace norvo
