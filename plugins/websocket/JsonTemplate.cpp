// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/websocket/JsonTemplate.h"

namespace norvo {

namespace {

/// Of the sequence that begins with the backslash there, whole or not.
int escapeLength(const QString& text, int backslash)
{
    return text.mid(backslash + 1, 1) == "u" ? 6 : 2;
}

} // namespace

QString JsonTemplate::define(const QString& definition)
{
    const QString text = definition.trimmed();
    m_path.reset();
    if (text.startsWith('$')) {
        return m_path.emplace().define(text);
    }
    if (!split(text)) {
        return "a backslash stands directly before %1 and would take in the value; write two "
               "for one that is sent";
    }
    return !text.isEmpty() && readJson(filled(QJsonValue(), {}).toUtf8())
               ? QString()
               : QString("it is not JSON with %1 for the value; write such as "
                         "{\"set\": %1} in single quotes, or a JSON path such as $.set");
}

/// False: a place is within an escape sequence.
bool JsonTemplate::split(const QString& definition)
{
    m_pieces = definition.split("%1");
    m_isQuoted.clear();
    bool isQuoted = false;
    for (const QString& piece : qAsConst(m_pieces)) {
        int next = 0;
        while (next < piece.size()) {
            if (piece[next] == '"') {
                isQuoted = !isQuoted;
            }
            next += isQuoted && piece[next] == '\\' ? escapeLength(piece, next) : 1;
        }
        const bool isLast = m_isQuoted.size() + 1 == std::size_t(m_pieces.size());
        if (next > piece.size() && !isLast) {
            return false;
        }
        m_isQuoted.push_back(isQuoted);
    }
    return true;
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
