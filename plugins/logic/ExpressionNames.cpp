// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/ExpressionNames.h"

#include <vector>

namespace {

const QSet<QString> kDeclaringWords{"catch", "class", "const", "function", "let", "var"};
const QSet<QString> kWords{"arguments",  "await",   "break", "case",   "continue", "debugger",
                           "default",    "delete",  "do",    "else",   "export",   "extends",
                           "false",      "finally", "for",   "if",     "import",   "in",
                           "instanceof", "new",     "null",  "return", "super",    "switch",
                           "this",       "throw",   "true",  "try",    "typeof",   "void",
                           "while",      "with",    "yield"};
/// After these a slash divides, although they are words.
const QSet<QString> kValueWords{"arguments", "false", "null", "super", "this", "true"};

bool beginsName(QChar c)
{
    return c.isLetter() || c == '_' || c == '$';
}

bool isOfName(QChar c)
{
    return beginsName(c) || c.isDigit() || c.isMark();
}

struct Token
{
    enum Kind { Name, Value, Sign };
    Kind kind;
    QString text; ///< Of a name or a sign.

    bool isSign(const char* sign) const { return kind == Sign && text == sign; }
};

/// Cuts an expression into names, literals and signs; comments are left out.
class Lexer
{
public:
    explicit Lexer(const QString& text) : m_text(text) {}

    std::vector<Token> tokens()
    {
        while (m_at < m_text.size()) {
            step();
        }
        return std::move(m_tokens);
    }

private:
    QChar at(int index) const { return index < m_text.size() ? m_text[index] : QChar(); }
    bool isHere(const char* text) const
    {
        return m_text.midRef(m_at, int(qstrlen(text))) == QLatin1String(text);
    }

    void step()
    {
        const QChar c = at(m_at);
        if (c.isSpace()) {
            ++m_at;
        } else if (isHere("//")) {
            skipTo("\n");
        } else if (isHere("/*")) {
            m_at += 2;
            skipTo("*/");
        } else if (c == '"' || c == '\'') {
            skipQuoted(c);
        } else if (c == '`' || (c == '}' && !m_templates.empty() && m_templates.back() == 0)) {
            skipTemplate(c);
        } else if (beginsName(c)) {
            take(Token::Name);
        } else if (c.isDigit()) {
            take(Token::Value);
        } else if (c == '/' && !followsValue()) {
            skipRegularExpression();
        } else {
            takeSign(c);
        }
    }

    void skipTo(const char* end)
    {
        const int found = m_text.indexOf(QLatin1String(end), m_at);
        m_at = found < 0 ? m_text.size() : found + int(qstrlen(end));
    }

    void skipQuoted(QChar quote)
    {
        for (++m_at; m_at < m_text.size() && at(m_at) != quote; ++m_at) {
            m_at += at(m_at) == '\\' ? 1 : 0;
        }
        ++m_at;
        m_tokens.push_back({Token::Value, {}});
    }

    /// From its first quote, or from the end of an expression within, up to the next one.
    void skipTemplate(QChar begin)
    {
        if (begin == '}') {
            m_templates.pop_back();
            m_tokens.push_back({Token::Sign, ")"});
        }
        for (++m_at; m_at < m_text.size() && at(m_at) != '`'; ++m_at) {
            if (isHere("${")) {
                m_at += 2;
                m_templates.push_back(0);
                m_tokens.push_back({Token::Sign, "("});
                return;
            }
            m_at += at(m_at) == '\\' ? 1 : 0;
        }
        ++m_at;
        m_tokens.push_back({Token::Value, {}});
    }

    void skipRegularExpression()
    {
        bool isInSet = false;
        for (++m_at; m_at < m_text.size() && (isInSet || at(m_at) != '/'); ++m_at) {
            isInSet = at(m_at) == '[' || (isInSet && at(m_at) != ']');
            m_at += at(m_at) == '\\' ? 1 : 0;
        }
        ++m_at;
        m_tokens.push_back({Token::Value, {}});
        while (isOfName(at(m_at))) {
            ++m_at; // Its flags.
        }
    }

    /// A name, or a number, which may hold letters and a point.
    void take(Token::Kind kind)
    {
        const int begin = m_at;
        while (isOfName(at(m_at)) || (kind == Token::Value && at(m_at) == '.')) {
            ++m_at;
        }
        m_tokens.push_back({kind, m_text.mid(begin, m_at - begin)});
    }

    void takeSign(QChar c)
    {
        if (!m_templates.empty()) {
            m_templates.back() += c == '{' ? 1 : c == '}' ? -1 : 0;
        }
        const QString text = isHere("...") ? "..." : isHere("=>") ? "=>" : QString(c);
        m_at += text.size();
        m_tokens.push_back({Token::Sign, text});
    }

    bool followsValue() const
    {
        if (m_tokens.empty()) {
            return false;
        }
        const Token& last = m_tokens.back();
        return last.kind == Token::Value || last.isSign(")") || last.isSign("]") ||
               last.isSign("}") ||
               (last.kind == Token::Name &&
                (kValueWords.contains(last.text) ||
                 (!kWords.contains(last.text) && !kDeclaringWords.contains(last.text))));
    }

    const QString& m_text;
    int m_at = 0;
    std::vector<Token> m_tokens;
    std::vector<int> m_templates; ///< Of each template that is open its open braces.
};

/// The parameters of the arrow function whose arrow is that token.
void addParameters(const std::vector<Token>& tokens, std::size_t arrow, QSet<QString>& names)
{
    int depth = 0;
    for (std::size_t i = arrow; i-- > 0;) {
        depth += tokens[i].isSign(")") ? 1 : tokens[i].isSign("(") ? -1 : 0;
        if (tokens[i].kind == Token::Name) {
            names.insert(tokens[i].text);
        }
        if (depth <= 0) {
            return;
        }
    }
}

} // namespace

norvo::ExpressionNames norvo::namesIn(const QString& expression)
{
    const std::vector<Token> tokens = Lexer(expression).tokens();
    const auto isSignAt = [&tokens](std::size_t i, const char* sign) {
        return i < tokens.size() && tokens[i].isSign(sign);
    };
    ExpressionNames names;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const QString& text = tokens[i].text;
        const bool isKey = (isSignAt(i - 1, "{") || isSignAt(i - 1, ",")) && isSignAt(i + 1, ":");
        if (isSignAt(i, "=>")) {
            addParameters(tokens, i, names.parameters);
        }
        if (isSignAt(i, ")") && isSignAt(i + 1, "{")) {
            names.declaresOthers = true; // The body of a method or of a statement.
        }
        if (tokens[i].kind != Token::Name || isSignAt(i - 1, ".") || isKey) {
            continue;
        }
        names.declaresOthers = names.declaresOthers || kDeclaringWords.contains(text);
        if (!kWords.contains(text) && !kDeclaringWords.contains(text) &&
            !names.used.contains(text)) {
            names.used.append(text);
        }
    }
    return names;
}
