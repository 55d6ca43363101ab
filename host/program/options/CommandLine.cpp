// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/options/CommandLine.h"

#include "host/panel/file/look/LookReader.h"
#include "host/program/ExportHistory.h"
#include "host/program/PanelInput.h"
#include "host/program/options/ServeOptions.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <QFileInfo>
#include <QImageWriter>
#include <QRegularExpression>

#include <algorithm>

namespace norvo {

namespace {

const QCommandLineOption kPlugins("plugins", {}, "DIR");
const QCommandLineOption kState("state", {}, "FILE");
const QCommandLineOption kNoState("no-state");
const QCommandLineOption kNoReload("no-reload");
const QCommandLineOption kAudit("audit", {}, "FILE");
const QCommandLineOption kFullscreen("fullscreen");
const QCommandLineOption kKiosk("kiosk");
const QCommandLineOption kTheme("theme", {}, "THEME");
const QCommandLineOption kEdit("edit");
const QCommandLineOption kCheck("check");
const QCommandLineOption kSet("set", {}, "DEVICE.PARAM=VALUE");
const QCommandLineOption kScreenshot("screenshot", {}, "OUT.png");
const QCommandLineOption kTypes("types");
const QCommandLineOption kDescribe("describe", {}, "TYPE");
const QCommandLineOption kDescribeAll("describe-all");
const QCommandLineOption kSchema("schema");
const QCommandLineOption kMakePin("make-pin");
const QCommandLineOption kExport("export", {}, "OUT.csv");
const QCommandLineOption kFrom("from", {}, "TIME");
const QCommandLineOption kTo("to", {}, "TIME");
const QCommandLineOption kFormat("format", {}, "FORMAT");
const QCommandLineOption kAfter("after", {}, "MS");
const QCommandLineOption kSize("size", {}, "WxH");
const QCommandLineOption kVerbose("verbose");
const QCommandLineOption kHelp(QStringList{"h", "help"});
const QCommandLineOption kVersion(QStringList{"v", "version"});

constexpr int kMinPictureSide = 100; ///< Pixels; the scroll bars alone need some.
constexpr int kMaxPictureSide = 8192;

/// What QApplication takes from its command line, for one who runs a panel.
const QList<QCommandLineOption> kQtOptions{
    QCommandLineOption("platform", {}, "NAME"),
    QCommandLineOption("platformpluginpath", {}, "DIR"),
    QCommandLineOption("platformtheme", {}, "NAME"),
    QCommandLineOption("plugin", {}, "NAME"),
    QCommandLineOption("display", {}, "DISPLAY"),
    QCommandLineOption("qwindowgeometry", {}, "GEOMETRY"),
    QCommandLineOption("geometry", {}, "GEOMETRY"),
    QCommandLineOption("style", {}, "NAME"),
    QCommandLineOption("stylesheet", {}, "FILE"),
    QCommandLineOption("reverse"),
};

QStringList qtArguments(const QCommandLineParser& parser)
{
    QStringList arguments;
    for (const QCommandLineOption& option : kQtOptions) {
        const QString name = option.names().constFirst();
        if (parser.isSet(option)) {
            arguments += '-' + name;
            arguments +=
                option.valueName().isEmpty() ? QStringList() : QStringList(parser.value(option));
        }
    }
    return arguments;
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
    if (parser.isSet(kTypes)) {
        return Options::Action::Types;
    }
    if (parser.isSet(kDescribe)) {
        return Options::Action::Describe;
    }
    if (parser.isSet(kDescribeAll)) {
        return Options::Action::DescribeAll;
    }
    if (parser.isSet(kSet)) {
        return Options::Action::Set;
    }
    if (parser.isSet(kSchema)) {
        return Options::Action::Schema;
    }
    if (parser.isSet(kMakePin)) {
        return Options::Action::MakePin;
    }
    if (parser.isSet(kExport)) {
        return Options::Action::Export;
    }
    return parser.isSet(kScreenshot) ? Options::Action::Screenshot : Options::Action::Run;
}

/// Options of which no two make sense beside each other.
const QList<QList<QCommandLineOption>> kAlternatives{
    {kState, kNoState},
    {kSet, kCheck, kScreenshot, kFullscreen, kKiosk, kTypes, kDescribe, kDescribeAll, kSchema,
     kMakePin, kExport},
    {kEdit, kSet, kCheck, kScreenshot, kKiosk, kTypes, kDescribe, kDescribeAll, kSchema, kMakePin,
     kExport},
};

QString contradiction(const QCommandLineParser& parser)
{
    for (const auto& alternatives : kAlternatives) {
        QStringList set;
        for (const QCommandLineOption& option : alternatives) {
            set += parser.isSet(option) ? QStringList("--" + option.names().constLast())
                                        : QStringList();
        }
        if (set.size() > 1) {
            return QString("%1 and %2 do not go together").arg(set[0], set[1]);
        }
    }
    if (parser.isSet(kFormat) && !parser.isSet(kDescribe) && !parser.isSet(kDescribeAll)) {
        return "--format goes with --describe and --describe-all only";
    }
    if (parser.isSet("serve") && actionOf(parser) != Options::Action::Run) {
        return "--serve goes with a panel that runs only";
    }
    for (const QCommandLineOption* option : {&kAfter, &kSize}) {
        if (parser.isSet(*option) && !parser.isSet(kScreenshot)) {
            return QString("--%1 goes with --screenshot only").arg(option->names().constLast());
        }
    }
    for (const QCommandLineOption* option : {&kFrom, &kTo}) {
        if (parser.isSet(*option) && !parser.isSet(kExport)) {
            return QString("--%1 goes with --export only").arg(option->names().constLast());
        }
    }
    return {};
}

/// Spaces around the names are no part of them; all behind the "=" is the value.
QVector<ParamChange> paramChanges(const QStringList& values, QString& error)
{
    QVector<ParamChange> changes;
    for (const QString& value : values) {
        const int equals = value.indexOf('=');
        const int point = value.left(equals).indexOf('.');
        const ParamChange change{value.left(std::max(point, 0)).trimmed(),
                                 value.mid(point + 1, equals - point - 1).trimmed(),
                                 value.mid(equals + 1)};
        if (equals < 0 || change.device.isEmpty() || change.param.isEmpty()) {
            error =
                QString("--set needs DEVICE.PARAM=VALUE like start.text=Go, not \"%1\"").arg(value);
        }
        changes += change;
    }
    return changes;
}

QStringList panelFilesOf(const QCommandLineParser& parser, QString& error)
{
    QStringList files = parser.positionalArguments();
    if (files.isEmpty()) {
        error = "no panel file was named";
    } else if (files.size() > 1 && !parser.isSet(kCheck)) {
        error = QString("one panel file at a time, not \"%1\" as well").arg(files[1]);
    } else if (files.contains(PanelInput::kStandardInput) && parser.isSet(kSet)) {
        error = "--set needs a file, not standard input";
    } else if (files.contains(PanelInput::kStandardInput) && parser.isSet(kEdit)) {
        error = "--edit needs a file, not standard input";
    } else if (files.count(PanelInput::kStandardInput) > 1) {
        error = "standard input can be read once";
    }
    return files;
}

void readListingOptions(const QCommandLineParser& parser, Options& options, QString& error)
{
    const QMap<QString, Listing::Format> formats{{"text", Listing::Format::Text},
                                                 {"markdown", Listing::Format::Markdown},
                                                 {"json", Listing::Format::Json}};
    const QString format = parser.isSet(kFormat) ? parser.value(kFormat) : QString("text");
    if (!formats.contains(format)) {
        error = QString("--format needs text, markdown or json, not \"%1\"").arg(format);
    } else if (!parser.positionalArguments().isEmpty()) {
        error = QString("device types are described without a panel file, not with \"%1\"")
                    .arg(parser.positionalArguments().constFirst());
    }
    options.format = formats.value(format);
    options.describedType = parser.value(kDescribe);
}

int pictureTime(const QString& value, QString& error)
{
    bool isNumber = false;
    const int ms = value.toInt(&isNumber);
    if (!isNumber || ms < 0) {
        error = QString("--after needs a number of milliseconds, not \"%1\"").arg(value);
    }
    return ms;
}

QSize pictureSize(const QString& value, QString& error)
{
    static const QRegularExpression pattern("^(\\d{1,5})x(\\d{1,5})$");
    const auto match = pattern.match(value);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const QSize least(kMinPictureSide, kMinPictureSide);
    const QSize most(kMaxPictureSide, kMaxPictureSide);
    if (size.expandedTo(least).boundedTo(most) != size) {
        error = QString("--size needs a width and a height from %1 to %2 like 1024x600, not \"%3\"")
                    .arg(kMinPictureSide)
                    .arg(kMaxPictureSide)
                    .arg(value);
    }
    return size;
}

/// A name without an ending is a PNG's.
QByteArray pictureFormat(const QString& file, QString& error)
{
    const QByteArray format = QFileInfo(file).suffix().toLower().toUtf8();
    const QList<QByteArray> formats = QImageWriter::supportedImageFormats();
    if (!format.isEmpty() && !formats.contains(format)) {
        error = QString("a picture cannot be written as \"%1\"; valid endings: %2")
                    .arg(QString::fromUtf8(format), QString::fromLatin1(formats.join(", ")));
    }
    return format.isEmpty() ? QByteArray("png") : format;
}

void readPictureOptions(const QCommandLineParser& parser, Options& options, QString& error)
{
    options.pictureFile = parser.value(kScreenshot);
    options.pictureFormat = pictureFormat(options.pictureFile, error);
    if (parser.isSet(kAfter)) {
        options.pictureAfterMs = pictureTime(parser.value(kAfter), error);
    }
    if (parser.isSet(kSize)) {
        options.pictureSize = pictureSize(parser.value(kSize), error);
    }
}

qint64 momentOf(const QCommandLineParser& parser, const QCommandLineOption& option,
                qint64 otherwise, QString& error)
{
    if (!parser.isSet(option)) {
        return otherwise;
    }
    const auto moment = toMoment(parser.value(option), QDateTime::currentDateTime());
    if (!moment) {
        error =
            QString("--%1 needs a time such as 2026-03-01T12:00, 2026-03-01T12:00:00Z or \"1 h\" "
                    "ago, not \"%2\"")
                .arg(option.names().constLast(), parser.value(option));
    }
    return moment.value_or(otherwise);
}

void readExportOptions(const QCommandLineParser& parser, Options& options, QString& error)
{
    options.exportFile = parser.value(kExport);
    options.exportFrom = momentOf(parser, kFrom, options.exportFrom, error);
    options.exportTo = momentOf(parser, kTo, options.exportTo, error);
    if (error.isEmpty() && options.exportFrom > options.exportTo) {
        error = "--from is later than --to";
    }
}

std::optional<PanelLook::Theme> themeNamed(const QString& name, QString& error)
{
    const auto found = themeNames().constFind(name);
    if (found != themeNames().constEnd()) {
        return *found;
    }
    error = QString("--theme needs one of %1, not \"%2\"")
                .arg(QStringList(themeNames().keys()).join(", "), name);
    return std::nullopt;
}

/// Qt's text, as the middle of a line.
QString inLine(QString text)
{
    text.replace(0, 1, text.left(1).toLower());
    return text.endsWith('.') ? text.chopped(1) : text;
}

} // namespace

Options CommandLine::parse(const QStringList& arguments, QString& error)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions); // As Qt's own are.
    parser.addOptions({kPlugins,  kState,       kNoState, kNoReload,   kAudit,  kFullscreen, kKiosk,
                       kTheme,    kCheck,       kSet,     kScreenshot, kAfter,  kSize,       kTypes,
                       kDescribe, kDescribeAll, kSchema,  kMakePin,    kExport, kFrom,       kTo,
                       kFormat,   kVerbose,     kHelp,    kVersion,    kEdit});
    parser.addOptions(ServeOptions::all());
    parser.addOptions(kQtOptions);
    Options options;
    if (!parser.parse(arguments)) {
        error = inLine(parser.errorText());
        return options;
    }
    options.action = actionOf(parser);
    if (options.action == Options::Action::Help || options.action == Options::Action::Version) {
        return options;
    }
    error = contradiction(parser);
    options.pluginFolders = parser.values(kPlugins);
    options.stateFile = parser.value(kState);
    options.keepsState = !parser.isSet(kNoState);
    options.reloads = !parser.isSet(kNoReload);
    options.auditFile = parser.value(kAudit);
    options.fullscreen = parser.isSet(kFullscreen);
    options.kiosk = parser.isSet(kKiosk);
    options.edits = parser.isSet(kEdit);
    options.verbose = parser.isSet(kVerbose);
    if (error.isEmpty() && parser.isSet(kTheme)) {
        options.theme = themeNamed(parser.value(kTheme), error);
    }
    if (error.isEmpty()) {
        options.view = ServeOptions::read(parser, error);
    }
    options.qtArguments = qtArguments(parser);
    if (error.isEmpty() && options.action == Options::Action::Screenshot) {
        readPictureOptions(parser, options, error);
    }
    if (error.isEmpty() && options.action == Options::Action::Export) {
        readExportOptions(parser, options, error);
    }
    if (error.isEmpty()) {
        options.changes = paramChanges(parser.values(kSet), error);
    }
    if (error.isEmpty() && options.isListing()) {
        readListingOptions(parser, options, error);
    } else if (error.isEmpty() && options.action != Options::Action::MakePin) {
        options.panelFiles = panelFilesOf(parser, error);
    }
    return options;
}

QString CommandLine::versionText()
{
    return QStringLiteral("norvo-panel " NORVO_VERSION);
}

} // namespace norvo
