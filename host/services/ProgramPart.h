// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QtGlobal>

namespace norvo {

/// A function that a library of the program's exports, which is loaded now: a part that not every
/// panel needs. Null where it is not there; `error` then says why.
QFunctionPointer functionOfPart(const QString& library, const char* function, QString& error);

} // namespace norvo
