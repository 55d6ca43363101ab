// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>

#include <optional>

namespace norvo {

/// The head of a request as a browser sends it. Names of fields are in small letters.
struct HttpHead
{
    static constexpr int kMaxSize = 8192; ///< Bytes, with the empty line that ends it.

    QByteArray method;
    QByteArray path;  ///< Without what follows "?".
    QByteArray query; ///< What follows it.
    QHash<QByteArray, QByteArray> fields;

    QByteArray queryValue(const QByteArray& name) const; ///< Percent signs resolved.
    QByteArray cookie(const QByteArray& name) const;
    QByteArray bearer() const; ///< The token of "Authorization: Bearer".
    QByteArray hostName() const { return nameOf(fields.value("host")); } ///< Without the port.
    QByteArray originName() const; ///< Of the page that asks; empty: it does not say.
    bool isUpgrade() const;        ///< To a WebSocket.

    /// None for what is no head.
    static std::optional<HttpHead> parse(const QByteArray& text);

private:
    static QByteArray nameOf(const QByteArray& hostAndPort);
};

} // namespace norvo
