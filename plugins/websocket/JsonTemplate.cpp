// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/websocket/JsonTemplate.h"

namespace norvo {

QString JsonTemplate::define(const QString& definition)
{
    const QString text = definition.trimmed();
    m_path.reset();
    if (text.startsWith('$')) {
        return m_path.emplace().define(text);
    }
    split(text);
    return !text.isEmpty() && readJson(filled(QJsonValue(), {}).toUtf8())
               ? QString()
               : QString("it is not JSON with %1 for the value; write such as "
                         "{\"set\": %1} in single quotes, or a JSON path such as $.set");
}

void JsonTemplate::split(const QString& definition)
{
    m_pieces = definition.split("%1");
    m_isQuoted.clear();
    bool isQuoted = false;
    for (const QString& piece : qAsConst(m_pieces)) {
        for (int i = 0; i < piece.size(); ++i) {
            if (piece[i] == '"') {
                isQuoted = !isQuoted;
            } else if (isQuoted && piece[i] == '\\') {
                ++i; // The next character is nothing but itself.
            }
        }
        m_isQuoted.push_back(isQuoted);
    }
}

QString JsonTemplate::filled(const QJsonValue& value, const QString& text) const
{
    if (m_path) {
        return QString::fromUtf8(writeJson(m_path->placed(value)));
    }
    const QString bare = QString::fromUtf8(writeJson(value));
    const QString quoted = QString::fromUtf8(writeJson(text));
    QString result = m_pieces.first();
    for (int i = 1; i < m_pieces.size(); ++i) {
        result += m_isQuoted[std::size_t(i - 1)] ? quoted.mid(1, quoted.size() - 2) : bare;
        result += m_pieces[i];
    }
    return result;
}

} // namespace norvo
