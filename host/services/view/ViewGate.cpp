// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/view/ViewGate.h"

#include <QCryptographicHash>

namespace norvo {

namespace {

const QByteArray kCookieName = QByteArrayLiteral("norvo-view");

QByteArray hashOf(const QByteArray& text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex();
}

/// Takes as long for a text that begins right as for any other.
bool isSame(const QByteArray& a, const QByteArray& b)
{
    const QByteArray hashA = hashOf(a);
    const QByteArray hashB = hashOf(b);
    int difference = 0;
    for (int i = 0; i < hashA.size(); ++i) {
        difference |= hashA[i] ^ hashB[i];
    }
    return difference == 0;
}

bool isLoopback(const QByteArray& name)
{
    return name == "localhost" || name == "127.0.0.1" || name == "[::1]";
}

} // namespace

ViewGate::ViewGate(const QByteArray& token)
    : m_token(token), m_cookie(token.isEmpty() ? QByteArray() : hashOf("cookie of " + token))
{}

bool ViewGate::isAllowed(const HttpHead& head) const
{
    return m_token.isEmpty() || isSame(head.cookie(kCookieName), m_cookie) ||
           isSame(head.bearer(), m_token) || isSame(head.queryValue("token"), m_token);
}

QByteArray ViewGate::setCookie(bool isSecure) const
{
    return kCookieName + '=' + m_cookie + "; Path=/; HttpOnly; SameSite=Strict" +
           (isSecure ? "; Secure" : "");
}

ViewGate::Answer ViewGate::answerTo(const HttpHead& head) const
{
    if (head.method != "GET") {
        return Answer::WrongMethod;
    }
    // Without a token a page from elsewhere, open in a browser of this machine, could look too.
    if (m_token.isEmpty() && (!isLoopback(head.hostName()) ||
                              !(head.originName().isEmpty() || isLoopback(head.originName())))) {
        return Answer::ForeignPage;
    }
    if (!isAllowed(head)) {
        return Answer::TokenNeeded;
    }
    if (head.path == "/") {
        const bool hasToken = !m_token.isEmpty() && !head.queryValue("token").isEmpty();
        return hasToken ? Answer::TakeCookie : Answer::Page;
    }
    if (head.path == "/stream") {
        return head.isUpgrade() ? Answer::Stream : Answer::UpgradeNeeded;
    }
    static const QHash<QByteArray, Answer> files{
        {"/view.js", Answer::Script}, {"/view.css", Answer::Style}, {"/values", Answer::Values}};
    return files.value(head.path, Answer::NotFound);
}

} // namespace norvo
