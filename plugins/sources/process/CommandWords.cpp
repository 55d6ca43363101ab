// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/CommandWords.h"

namespace norvo {

namespace {

class Splitter
{
public:
    explicit Splitter(const QString& command) : m_command(command) {}

    CommandWords split()
    {
        for (; m_at < m_command.size(); ++m_at) {
            if (!take(m_command.at(m_at))) {
                return {{}, QStringLiteral("nothing follows its last backslash")};
            }
        }
        if (!m_quote.isNull()) {
            return {{},
                    QStringLiteral("the quote at character %1 is not closed").arg(m_quoteAt + 1)};
        }
        endWord();
        if (m_words.isEmpty()) {
            return {{}, QStringLiteral("it names no program")};
        }
        return {m_words, {}};
    }

private:
    /// False when the character misses one that should follow it.
    bool take(QChar character)
    {
        if (escapesNext(character)) {
            if (++m_at == m_command.size()) {
                return false;
            }
            add(m_command.at(m_at));
        } else if (!m_quote.isNull() && character == m_quote) {
            m_quote = QChar();
        } else if (m_quote.isNull() && (character == '\'' || character == '"')) {
            m_quote = character;
            m_quoteAt = m_at;
            m_inWord = true;
        } else if (m_quote.isNull() && character.isSpace()) {
            endWord();
        } else {
            add(character);
        }
        return true;
    }

    bool escapesNext(QChar character) const
    {
        if (character != '\\' || m_quote == '\'') {
            return false;
        }
        const QChar next = m_at + 1 < m_command.size() ? m_command.at(m_at + 1) : QChar();
        return m_quote.isNull() || next == '"' || next == '\\';
    }

    void add(QChar character)
    {
        m_word += character;
        m_inWord = true;
    }

    void endWord()
    {
        if (m_inWord) {
            m_words += m_word;
        }
        m_word.clear();
        m_inWord = false;
    }

    const QString& m_command;
    int m_at = 0;
    QStringList m_words;
    QString m_word;
    bool m_inWord = false; ///< Also true for an empty word, "".
    QChar m_quote;         ///< The one that is open; null: none.
    int m_quoteAt = 0;
};

} // namespace

CommandWords splitCommand(const QString& command)
{
    return Splitter(command).split();
}

} // namespace norvo
