// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace norvo {

/// Takes a harness's input apart: settings first, and what remains is the text.
class FuzzInput
{
public:
    explicit FuzzInput(const QByteArray& bytes) : m_bytes(bytes) {}

    int choice(int count) ///< Below `count`, from one byte; 0 at the end.
    {
        return m_at < m_bytes.size() ? int(quint8(m_bytes.at(m_at++))) % count : 0;
    }
    QByteArray line() ///< Up to the next line feed.
    {
        const int end = m_bytes.indexOf('\n', m_at);
        const QByteArray text = m_bytes.mid(m_at, end < 0 ? -1 : end - m_at);
        m_at = end < 0 ? m_bytes.size() : end + 1;
        return text;
    }
    QByteArray rest() const { return m_bytes.mid(m_at); }

private:
    QByteArray m_bytes;
    int m_at = 0;
};

} // namespace norvo
