// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

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

/// Ends the program, and says why, unless `holds`.
void require(bool holds, const char* rule);

/// Calls `run` with the name of a file that holds the content, and removes it.
void withFile(const QByteArray& content, const std::function<void(const QString& fileName)>& run);

} // namespace norvo

/// Begins a harness: NORVO_HARNESS(StateFile) { ... }, with the bytes in `input`.
#define NORVO_HARNESS(Name)                                                                        \
    static void run##Name(const QByteArray& input);                                                \
    static const norvo::Harness harnessOf##Name(#Name, run##Name);                                 \
    static void run##Name(const QByteArray& input)
