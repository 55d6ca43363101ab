// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/Console.h"

#include "host/program/BackgroundWriter.h"
#include "host/yaml/Quote.h"

#include <QStringList>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace norvo {

namespace {

/// Never destroyed; see there.
BackgroundWriter& errors()
{
    static auto* const writer = new BackgroundWriter(STDERR_FILENO);
    return *writer;
}

QByteArray printable(const QString& text)
{
    QByteArray lines;
    for (const QString& line : text.split('\n')) {
        lines += onOneLine(line).toUtf8() + '\n';
    }
    return lines;
}

} // namespace

void Console::open()
{
    // Here for the whole process: a write to a reader that is gone then fails and does no more.
    std::signal(SIGPIPE, SIG_IGN);
    for (int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0) {
            ::open("/dev/null", O_RDWR); // Takes the lowest number that is free: this one.
        }
    }
    std::atexit(finish);
}

void Console::print(const QString& line)
{
    std::fputs(printable(line).constData(), stdout);
    std::fflush(stdout);
}

void Console::report(const QString& lines)
{
    errors().write(printable(lines));
}

void Console::complain(const QString& text)
{
    report("norvo-panel: " + text);
}

void Console::finish()
{
    errors().finish();
}

} // namespace norvo
