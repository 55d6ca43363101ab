// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace norvo {

/// PINs are kept as Argon2id hashes. Making or checking one takes 64 MiB and some hundredths of a
/// second, on a small board some tenths; so neither belongs on the window's thread.
namespace PinHash {

constexpr int kMinDigits = 4;
constexpr int kMaxDigits = 32; ///< What the PIN pad takes.

bool isAvailable(); ///< False where the program was built without libsodium.
/// What is then wrong, and what to do.
constexpr char kUnavailable[] =
    "this program was built without libsodium and can check no PIN; install it (Debian: "
    "libsodium-dev) and build the program again";
/// Empty without the memory for it.
QString make(const QString& pin);
bool fits(const QString& pin, const QString& hash);

} // namespace PinHash

} // namespace norvo
