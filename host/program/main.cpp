// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/options/CommandLine.h"
#include "host/program/streams/Console.h"
#include "host/program/PanelProgram.h"
#include "host/program/streams/QtMessages.h"

#include <QTextCodec>

#include <clocale>

using norvo::Options;
namespace CommandLine = norvo::CommandLine;
namespace Console = norvo::Console;

int main(int argc, char** argv)
{
    Console::open();
    std::setlocale(LC_ALL, "");
    // File names and messages are UTF-8, even where the system was started without a locale.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));

    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    QString error;
    const Options options = CommandLine::parse(arguments, error);
    if (!error.isEmpty()) {
        Console::reportError(error + "; see norvo-panel --help");
        return 2;
    }
    switch (options.action) {
    case Options::Action::Help:
        Console::print(CommandLine::helpText());
        return 0;
    case Options::Action::Version:
        Console::print(CommandLine::versionText());
        return 0;
    default:
        break;
    }
    const norvo::QtMessages messages(options.verbose);
    return norvo::runProgram(options);
}
