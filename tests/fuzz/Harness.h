// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace norvo {

/// Gives a reader any bytes, and fails where what comes out breaks a rule of the reader.
///
/// The preset "fuzz" makes a program of clang's fuzzer of each; the tests run all of them over the
/// files of tests/corpora, one folder for each, which hold every input that once failed.
class Harness
{
public:
    using Run = void (*)(const QByteArray& input);

    Harness(const char* name, Run run); ///< Enters it into the program's list.
};

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

/// Ends the program, and says why, unless `holds`.
void require(bool holds, const char* rule);

/// What `run` does with a file that holds the input; it is gone afterwards.
void withFile(const QByteArray& content, void (*run)(const QString& fileName));

} // namespace norvo

/// Begins a harness: NORVO_HARNESS(StateFile) { ... }, with the bytes in `input`.
#define NORVO_HARNESS(Name)                                                                        \
    static void run##Name(const QByteArray& input);                                                \
    static const norvo::Harness harnessOf##Name(#Name, run##Name);                                 \
    static void run##Name(const QByteArray& input)
