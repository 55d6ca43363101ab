// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/access/PinHash.h"

#include "host/services/access/PinLibrary.h"

#ifdef NORVO_HAS_SODIUM
#include "host/services/ProgramPart.h"
#endif

namespace norvo {

namespace {

/// Null where the program was built without it.
const PinLibrary* load()
{
#ifdef NORVO_HAS_SODIUM
    QString error;
    const auto library = reinterpret_cast<decltype(&norvoPinLibrary)>(
        functionOfPart("libNorvoPins.so", "norvoPinLibrary", error));
    return library ? library() : nullptr;
#else
    return nullptr;
#endif
}

const PinLibrary* pins()
{
    static const PinLibrary* const library = load();
    return library;
}

} // namespace

bool PinHash::isAvailable()
{
    return pins();
}

QString PinHash::make(const QString& pin)
{
    return pins() ? pins()->make(pin) : QString();
}

bool PinHash::fits(const QString& pin, const QString& hash)
{
    return pins() && pins()->fits(pin, hash);
}

} // namespace norvo
