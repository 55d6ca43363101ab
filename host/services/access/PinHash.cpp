// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/access/PinHash.h"

#ifdef NORVO_HAS_SODIUM

#include <sodium.h>

namespace norvo {

bool PinHash::isAvailable()
{
    static const bool isReady = sodium_init() >= 0;
    return isReady;
}

QString PinHash::make(const QString& pin)
{
    const QByteArray digits = pin.toUtf8();
    char hash[crypto_pwhash_STRBYTES] = {};
    const bool isMade =
        isAvailable() && crypto_pwhash_str(hash, digits.constData(), size_t(digits.size()),
                                           crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                           crypto_pwhash_MEMLIMIT_INTERACTIVE) == 0;
    return isMade ? QString::fromLatin1(hash) : QString();
}

bool PinHash::fits(const QString& pin, const QString& hash)
{
    const QByteArray digits = pin.toUtf8();
    const QByteArray text = hash.toLatin1();
    return isAvailable() && text.size() < int(crypto_pwhash_STRBYTES) &&
           crypto_pwhash_str_verify(text.constData(), digits.constData(), size_t(digits.size())) ==
               0;
}

} // namespace norvo

#else

namespace norvo {

bool PinHash::isAvailable()
{
    return false;
}

QString PinHash::make(const QString& /*pin*/)
{
    return {};
}

bool PinHash::fits(const QString& /*pin*/, const QString& /*hash*/)
{
    return false;
}

} // namespace norvo

#endif
