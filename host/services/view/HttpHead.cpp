// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/view/HttpHead.h"

#include <QList>
#include <QUrl>
#include <QUrlQuery>

namespace norvo {

std::optional<HttpHead> HttpHead::parse(const QByteArray& text)
{
    const int end = text.indexOf("\r\n\r\n");
    const QList<QByteArray> lines = text.left(end).split('\n');
    const QList<QByteArray> first = lines.constFirst().trimmed().split(' ');
    if (end < 0 || first.size() != 3 || !first[1].startsWith('/') ||
        !first[2].startsWith("HTTP/1.")) {
        return std::nullopt;
    }
    HttpHead head;
    head.method = first[0];
    const int mark = first[1].indexOf('?');
    head.path = mark < 0 ? first[1] : first[1].left(mark);
    head.query = mark < 0 ? QByteArray() : first[1].mid(mark + 1);
    for (const QByteArray& line : lines.mid(1)) {
        const int colon = line.indexOf(':');
        if (colon <= 0) {
            return std::nullopt;
        }
        head.fields.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    return head;
}

QByteArray HttpHead::queryValue(const QByteArray& name) const
{
    const QUrlQuery parts(QString::fromLatin1(query));
    return parts.queryItemValue(QString::fromLatin1(name), QUrl::FullyDecoded).toUtf8();
}

QByteArray HttpHead::cookie(const QByteArray& name) const
{
    const QList<QByteArray> cookies = fields.value("cookie").split(';');
    for (const QByteArray& cookie : cookies) {
        const int equals = cookie.indexOf('=');
        if (equals > 0 && cookie.left(equals).trimmed() == name) {
            return cookie.mid(equals + 1).trimmed();
        }
    }
    return {};
}

QByteArray HttpHead::bearer() const
{
    const QByteArray field = fields.value("authorization");
    return field.left(7).toLower() == "bearer " ? field.mid(7).trimmed() : QByteArray();
}

QByteArray HttpHead::nameOf(const QByteArray& hostAndPort)
{
    return hostAndPort.startsWith('[') ? hostAndPort.left(hostAndPort.indexOf(']') + 1)
                                       : hostAndPort.split(':').constFirst().toLower();
}

QByteArray HttpHead::originName() const
{
    const QByteArray origin = fields.value("origin");
    const int slashes = origin.indexOf("://");
    const QByteArray name = slashes < 1 ? origin : nameOf(origin.mid(slashes + 3));
    return name.isEmpty() ? origin : name; // One that cannot be understood is none of ours.
}

bool HttpHead::isUpgrade() const
{
    return fields.value("upgrade").toLower() == "websocket" &&
           fields.value("connection").toLower().contains("upgrade");
}

} // namespace norvo
