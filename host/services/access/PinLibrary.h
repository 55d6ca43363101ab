// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace norvo {

/// What PinHash is made of. It lies in a library of its own, because linking libsodium takes time
/// at every start, and few panels ask for a PIN.
struct PinLibrary
{
    QString (*make)(const QString& pin);
    bool (*fits)(const QString& pin, const QString& hash);
};

/// What the library exports. Null where libsodium is of no use.
extern "C" const PinLibrary* norvoPinLibrary();

} // namespace norvo
