#pragma once

#include "host/panel/Fault.h"

#include <cstdio>

namespace norvo {

/// How many there are of each kind: "2 errors, 1 warning"; "no faults" for none.
QString summary(const Faults& faults);

void print(FILE* stream, const QString& line);  ///< The line and its end, as UTF-8, at once.
void print(FILE* stream, const Faults& faults); ///< One line each.
void complain(const QString& text);             ///< "norvo-panel: text" on standard error.

} // namespace norvo
