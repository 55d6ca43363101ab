// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/access/PinLibrary.h"

#include <sodium.h>

namespace norvo {

namespace {

QString make(const QString& pin)
{
    const QByteArray digits = pin.toUtf8();
    char hash[crypto_pwhash_STRBYTES] = {};
    const bool isMade = crypto_pwhash_str(hash, digits.constData(), size_t(digits.size()),
                                          crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                          crypto_pwhash_MEMLIMIT_INTERACTIVE) == 0;
    return isMade ? QString::fromLatin1(hash) : QString();
}

bool fits(const QString& pin, const QString& hash)
{
    const QByteArray digits = pin.toUtf8();
    const QByteArray text = hash.toLatin1();
    return text.size() < int(crypto_pwhash_STRBYTES) &&
           crypto_pwhash_str_verify(text.constData(), digits.constData(), size_t(digits.size())) ==
               0;
}

} // namespace

extern "C" Q_DECL_EXPORT const PinLibrary* norvoPinLibrary()
{
    static constexpr PinLibrary library{make, fits};
    return sodium_init() >= 0 ? &library : nullptr;
}

} // namespace norvo
