#include "host/program/CommandLine.h"
#include "host/program/PanelProgram.h"

#include <QTextCodec>

#include <clocale>
#include <cstdio>

int main(int argc, char** argv)
{
    std::setlocale(LC_ALL, "");
    // File names and messages are UTF-8, even where the system was started without a locale.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));

    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    QString fault;
    const norvo::Options options = norvo::CommandLine::parse(arguments, fault);
    if (!fault.isEmpty()) {
        std::fprintf(stderr, "norvo-panel: %s; see norvo-panel --help\n", qPrintable(fault));
        return 1;
    }
    switch (options.action) {
    case norvo::Options::Action::Help:
        std::fputs(qPrintable(norvo::CommandLine::helpText()), stdout);
        return 0;
    case norvo::Options::Action::Version:
        std::fputs(qPrintable(norvo::CommandLine::versionText()), stdout);
        return 0;
    default:
        return norvo::PanelProgram(options).run();
    }
}
