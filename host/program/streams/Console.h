// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace norvo {

/// Everything that the program writes for its user. Control characters are written as escapes, so
/// that no value can steer a terminal.
namespace Console {

/// The first thing in main(). A reader of standard output or standard error that goes away does not
/// end the process, and a stream that was closed when it started is none of the files that it
/// opens.
void open();

void print(const QString& line);   ///< On standard output; waits for a slow reader.
void report(const QString& lines); ///< On standard error; never waits. From any thread.
void reportEach(const QStringList& texts);
void reportError(const QString& text); ///< "norvo-panel: text", likewise.

/// Gives messages a moment to leave; comes by itself at exit().
void finish();

} // namespace Console

} // namespace norvo
