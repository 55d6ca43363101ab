// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/view/HttpHead.h"

namespace norvo {

/// Who gets what of a view. There is nothing to send to it: it answers GET alone.
class ViewGate
{
public:
    enum class Answer {
        Page,
        Script,
        Style,
        Values,
        Stream,
        TakeCookie, ///< The token was in the address; from now on a cookie stands for it.
        TokenNeeded,
        ForeignPage, ///< Asked by the page of another host, or under another name.
        WrongMethod,
        UpgradeNeeded,
        NotFound
    };

    explicit ViewGate(const QByteArray& token); ///< Empty: none is needed, and loopback only.

    Answer answerTo(const HttpHead& head) const;
    /// The value of "Set-Cookie" that stands for the token.
    QByteArray setCookie(bool isSecure) const;

private:
    bool isAllowed(const HttpHead& head) const;

    const QByteArray m_token;
    const QByteArray m_cookie; ///< That stands for the token, which it does not tell.
};

} // namespace norvo
