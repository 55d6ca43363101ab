#pragma once

#include "host/panel/file/Diagnostics.h"

#include <cstdio>

namespace norvo {

void print(FILE* stream, const QString& line); ///< The line and its end, as UTF-8, at once.
void print(FILE* stream, const Diagnostics& diagnostics); ///< One line each.
void complain(const QString& text); ///< "norvo-panel: text" on standard error.

} // namespace norvo
