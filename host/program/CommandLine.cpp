#include "host/program/CommandLine.h"

#include <QCommandLineParser>

namespace norvo {

namespace {

const QCommandLineOption kPlugins("plugins", {}, "DIR");
const QCommandLineOption kState("state", {}, "FILE");
const QCommandLineOption kNoState("no-state");
const QCommandLineOption kFullscreen("fullscreen");
const QCommandLineOption kCheck("check");
const QCommandLineOption kScreenshot("screenshot", {}, "OUT.png");
const QCommandLineOption kAfter("after", {}, "MS");
const QCommandLineOption kHelp(QStringList{"h", "help"});
const QCommandLineOption kVersion(QStringList{"v", "version"});

/// Options of which the second makes no sense beside the first.
QString contradiction(const QCommandLineParser& parser)
{
    const QPair<const QCommandLineOption&, const QCommandLineOption&> pairs[] = {
        {kState, kNoState},
        {kCheck, kScreenshot},
        {kCheck, kFullscreen},
        {kScreenshot, kFullscreen},
    };
    for (const auto& pair : pairs) {
        if (parser.isSet(pair.first) && parser.isSet(pair.second)) {
            return QString("--%1 and --%2 do not go together")
                .arg(pair.first.names().constLast(), pair.second.names().constLast());
        }
    }
    if (parser.isSet(kAfter) && !parser.isSet(kScreenshot)) {
        return "--after goes with --screenshot only";
    }
    return {};
}

Options::Action actionOf(const QCommandLineParser& parser)
{
    if (parser.isSet(kHelp)) {
        return Options::Action::Help;
    }
    if (parser.isSet(kVersion)) {
        return Options::Action::Version;
    }
    if (parser.isSet(kCheck)) {
        return Options::Action::Check;
    }
    return parser.isSet(kScreenshot) ? Options::Action::Screenshot : Options::Action::Run;
}

QString panelFileOf(const QCommandLineParser& parser, QString& fault)
{
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty()) {
        fault = "no panel file was named";
        return {};
    }
    if (files.size() > 1) {
        fault = QString("one panel file at a time, not \"%1\" as well").arg(files[1]);
    }
    return files[0];
}

int pictureTime(const QCommandLineParser& parser, QString& fault)
{
    bool isNumber = false;
    const int ms = parser.value(kAfter).toInt(&isNumber);
    if (!isNumber || ms < 0) {
        fault =
            QString("--after needs a number of milliseconds, not \"%1\"").arg(parser.value(kAfter));
    }
    return ms;
}

} // namespace

Options CommandLine::parse(const QStringList& arguments, QString& fault)
{
    QCommandLineParser parser;
    parser.addOptions(
        {kPlugins, kState, kNoState, kFullscreen, kCheck, kScreenshot, kAfter, kHelp, kVersion});
    Options options;
    if (!parser.parse(arguments)) {
        fault = parser.errorText();
        return options;
    }
    options.action = actionOf(parser);
    if (options.action == Options::Action::Help || options.action == Options::Action::Version) {
        return options;
    }
    fault = contradiction(parser);
    if (!fault.isEmpty()) {
        return options;
    }
    options.pluginFolders = parser.values(kPlugins);
    options.stateFile = parser.value(kState);
    options.keepsState = !parser.isSet(kNoState);
    options.fullscreen = parser.isSet(kFullscreen);
    options.pictureFile = parser.value(kScreenshot);
    if (parser.isSet(kAfter)) {
        options.pictureAfterMs = pictureTime(parser, fault);
    }
    if (fault.isEmpty()) {
        options.panelFile = panelFileOf(parser, fault);
    }
    return options;
}

QString CommandLine::helpText()
{
    return QStringLiteral(
        R"(Runs an operator panel from a text file.

norvo-panel [options] PANEL.yaml                 runs the panel
norvo-panel --check PANEL.yaml                   tells every fault of the panel, no window;
                                                 exit status 1 when one of them is an error
norvo-panel --screenshot OUT.png PANEL.yaml      runs the panel unseen and leaves a picture of it

  --plugins DIR      looks for device plug-ins in DIR, too; can be given several times
  --state FILE       keeps what devices store in FILE, not in PANEL.state.yaml beside the panel
  --no-state         keeps nothing from one run to the next
  --fullscreen       covers the whole screen; F11 changes to and fro, Escape leaves it
  --after MS         takes the picture after so many milliseconds (500)
  -h, --help         shows this text
  -v, --version      shows the version

Errors and warnings go to standard error, those that --check finds to standard output. SIGINT and SIGTERM stop
the panel as closing its window does. A display is needed to run a panel and for nothing else.
)");
}

QString CommandLine::versionText()
{
    return QStringLiteral("norvo-panel " NORVO_VERSION "\n");
}

} // namespace norvo
