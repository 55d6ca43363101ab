// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/options/CommandLine.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Options;

class tst_CommandLine : public QObject
{
    Q_OBJECT

private slots:
    void panelAloneIsRun();
    void everyOptionArrives();
    void kioskArrives();
    void editArrives();
    void themeArrives();
    void formAndTypeOfAListingArrive();
    void smallestAndLargestPictureAreTaken();
    void helpAndVersionAreGivenWhateverElseIsAsked();
    void changesOfParametersArrive_data();
    void changesOfParametersArrive();
    void optionsOfQtArePassedOn_data();
    void optionsOfQtArePassedOn();
    void pictureHasItsFileTimeAndSize();
    void pictureIsOfTheKindThatItsNameSays_data();
    void pictureIsOfTheKindThatItsNameSays();
    void actionIsChosen_data();
    void actionIsChosen();
    void checkTakesSeveralFiles();
    void standardInputIsAFile();
    void errorIsReported_data();
    void errorIsReported();
    void pictureOfAKindThatCannotBeWrittenIsRefused();
    void helpNamesEveryOption();

private:
    static Options parse(const QStringList& arguments, QString& error)
    {
        return norvo::CommandLine::parse(QStringList("norvo-panel") + arguments, error);
    }
};

void tst_CommandLine::panelAloneIsRun()
{
    QString error;
    const Options options = parse({"p.yaml"}, error);
    QCOMPARE(error, QString());
    QCOMPARE(int(options.action), int(Options::Action::Run));
    QCOMPARE(options.panelFiles, QStringList("p.yaml"));
    QCOMPARE(options.pluginFolders, QStringList());
    QCOMPARE(options.stateFile, QString());
    QVERIFY(options.keepsState);
    QVERIFY(!options.fullscreen);
}

void tst_CommandLine::everyOptionArrives()
{
    QString error;
    const Options options = parse({"--plugins", "a", "--plugins=b", "--state", "s.yaml", "--audit",
                                   "a.jsonl", "--fullscreen", "p.yaml"},
                                  error);
    QCOMPARE(error, QString());
    QCOMPARE(options.auditFile, QString("a.jsonl"));
    QCOMPARE(options.pluginFolders, (QStringList{"a", "b"}));
    QCOMPARE(options.stateFile, QString("s.yaml"));
    QVERIFY(options.fullscreen);
    QVERIFY(!options.verbose);
    QVERIFY(parse({"p.yaml", "--verbose"}, error).verbose);
    QVERIFY(!parse({"p.yaml", "--no-state"}, error).keepsState);
    QCOMPARE(error, QString());
}

void tst_CommandLine::editArrives()
{
    QString error;
    QVERIFY(!parse({"p.yaml"}, error).edits);
    const Options options = parse({"--edit", "p.yaml"}, error);
    QVERIFY(error.isEmpty());
    QVERIFY(options.edits);
    QVERIFY(options.action == Options::Action::Run);
}

void tst_CommandLine::kioskArrives()
{
    QString error;
    QVERIFY(!parse({"p.yaml"}, error).kiosk);
    const Options options = parse({"--kiosk", "p.yaml"}, error);
    QVERIFY(options.kiosk);
    QVERIFY(!options.fullscreen);
    QCOMPARE(int(options.action), int(Options::Action::Run));
    QCOMPARE(error, QString());
}

void tst_CommandLine::themeArrives()
{
    QString error;
    QVERIFY(!parse({"p.yaml"}, error).theme);
    QVERIFY(parse({"--theme", "dark", "p.yaml"}, error).theme == norvo::PanelLook::Theme::Dark);
    QCOMPARE(error, QString());
    parse({"--theme", "drak", "p.yaml"}, error);
    QCOMPARE(error, QString("--theme needs one of dark, light, system, not \"drak\""));
}

void tst_CommandLine::formAndTypeOfAListingArrive()
{
    QString error;
    const Options all = parse({"--describe-all", "--plugins", "a"}, error);
    QCOMPARE(int(all.format), int(norvo::Listing::Format::Text));
    QCOMPARE(all.describedType, QString());
    QCOMPARE(all.pluginFolders, QStringList("a"));
    const QMap<QString, norvo::Listing::Format> formats{
        {"text", norvo::Listing::Format::Text},
        {"markdown", norvo::Listing::Format::Markdown},
        {"json", norvo::Listing::Format::Json}};
    for (auto format = formats.cbegin(); format != formats.cend(); ++format) {
        const Options one = parse({"--describe", "button", "--format", format.key()}, error);
        QCOMPARE(int(one.format), int(format.value()));
        QCOMPARE(one.describedType, QString("button"));
    }
    QCOMPARE(error, QString());
}

void tst_CommandLine::smallestAndLargestPictureAreTaken()
{
    QString error;
    for (const char* size : {"100x100", "8192x8192", "100x8192"}) {
        const Options options = parse({"--screenshot", "o", "--size", size, "p.yaml"}, error);
        QCOMPARE(
            QString("%1x%2").arg(options.pictureSize.width()).arg(options.pictureSize.height()),
            QString(size));
        QCOMPARE(error, QString()); // Each is a line of its own.
    }
}

void tst_CommandLine::helpAndVersionAreGivenWhateverElseIsAsked()
{
    QString error;
    QCOMPARE(int(parse({"--check", "-h"}, error).action), int(Options::Action::Help));
    QCOMPARE(int(parse({"--types", "p.yaml", "-v"}, error).action), int(Options::Action::Version));
    QCOMPARE(int(parse({"-v", "-h"}, error).action), int(Options::Action::Help));
    QCOMPARE(error, QString());
}

void tst_CommandLine::changesOfParametersArrive_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QStringList>("change");
    QTest::newRow("plain") << "a.text=Go" << QStringList{"a", "text", "Go"};
    QTest::newRow("group") << "a.widget/row=1" << QStringList{"a", "widget/row", "1"};
    QTest::newRow("empty") << "a.text=" << QStringList{"a", "text", ""};
    QTest::newRow("more points and signs") << "a.b.c=d=e.f" << QStringList{"a", "b.c", "d=e.f"};
    QTest::newRow("spaces") << " a . b = c " << QStringList{"a", "b", " c "};
}

void tst_CommandLine::changesOfParametersArrive()
{
    QFETCH(QString, argument);
    QString error;
    const Options options = parse({"--set", "x.y=1", "--set", argument, "p.yaml"}, error);
    QCOMPARE(error, QString());
    QCOMPARE(options.changes.size(), 2);
    QTEST((QStringList{options.changes[1].device, options.changes[1].param,
                       options.changes[1].value}),
          "change");
    QCOMPARE(options.panelFiles, QStringList("p.yaml"));
}

void tst_CommandLine::optionsOfQtArePassedOn_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("passedOn");
    QTest::newRow("none") << QStringList{} << QStringList{};
    QTest::newRow("platform") << QStringList{"-platform", "xcb"} << QStringList{"-platform", "xcb"};
    QTest::newRow("two dashes") << QStringList{"--platform", "xcb"}
                                << QStringList{"-platform", "xcb"};
    QTest::newRow("equals sign") << QStringList{"--style=fusion"}
                                 << QStringList{"-style", "fusion"};
    for (const char* option : {"platformpluginpath", "platformtheme", "plugin", "qwindowgeometry",
                               "geometry", "stylesheet"}) {
        const QStringList arguments{QString("-") + option, "x"};
        QTest::newRow(option) << arguments << arguments;
    }
    QTest::newRow("several") << QStringList{"-reverse", "-display", ":1", "-style", "fusion"}
                             << QStringList{"-display", ":1", "-style", "fusion", "-reverse"};
}

void tst_CommandLine::optionsOfQtArePassedOn()
{
    QFETCH(QStringList, arguments);
    QString error;
    const Options options = parse(arguments + QStringList{"--no-state", "p.yaml"}, error);
    QCOMPARE(error, QString());
    QCOMPARE(options.panelFiles, QStringList("p.yaml"));
    QTEST(options.qtArguments, "passedOn");
}

void tst_CommandLine::pictureHasItsFileTimeAndSize()
{
    QString error;
    const Options options =
        parse({"--screenshot", "o.png", "--after", "0", "--size", "1024x600", "p.yaml"}, error);
    QCOMPARE(error, QString());
    QCOMPARE(int(options.action), int(Options::Action::Screenshot));
    QCOMPARE(options.pictureFile, QString("o.png"));
    QCOMPARE(options.pictureAfterMs, 0);
    QCOMPARE(options.pictureSize, QSize(1024, 600));
    const Options plain = parse({"--screenshot", "o.png", "p.yaml"}, error);
    QCOMPARE(plain.pictureAfterMs, 500);
    QVERIFY(plain.pictureSize.isEmpty());
}

void tst_CommandLine::pictureIsOfTheKindThatItsNameSays_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("png") << "a/o.png" << QByteArray("png");
    QTest::newRow("jpg") << "o.jpg" << QByteArray("jpg");
    QTest::newRow("capitals") << "o.JPEG" << QByteArray("jpeg");
    QTest::newRow("two dots") << "o.png.bmp" << QByteArray("bmp");
    QTest::newRow("no ending") << "a.b/o" << QByteArray("png");
    QTest::newRow("a folder") << "." << QByteArray("png");
}

void tst_CommandLine::pictureIsOfTheKindThatItsNameSays()
{
    QFETCH(QString, file);
    QString error;
    QTEST(parse({"--screenshot", file, "p.yaml"}, error).pictureFormat, "format");
    QCOMPARE(error, QString());
}

void tst_CommandLine::actionIsChosen_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("action");
    QTest::newRow("check") << QStringList{"--check", "p.yaml"} << int(Options::Action::Check);
    QTest::newRow("set") << QStringList{"--set", "a.b=c", "p.yaml"} << int(Options::Action::Set);
    QTest::newRow("help") << QStringList{"--help"} << int(Options::Action::Help);
    QTest::newRow("h") << QStringList{"-h"} << int(Options::Action::Help);
    QTest::newRow("types") << QStringList{"--types"} << int(Options::Action::Types);
    QTest::newRow("describe") << QStringList{"--describe", "button"}
                              << int(Options::Action::Describe);
    QTest::newRow("describe all") << QStringList{"--describe-all", "--format", "json"}
                                  << int(Options::Action::DescribeAll);
    QTest::newRow("schema") << QStringList{"--schema"} << int(Options::Action::Schema);
    QTest::newRow("version") << QStringList{"--version"} << int(Options::Action::Version);
    QTest::newRow("v") << QStringList{"-v"} << int(Options::Action::Version);
}

void tst_CommandLine::actionIsChosen()
{
    QFETCH(QStringList, arguments);
    QString error;
    QTEST(int(parse(arguments, error).action), "action");
    QCOMPARE(error, QString());
}

void tst_CommandLine::checkTakesSeveralFiles()
{
    QString error;
    QCOMPARE(parse({"a", "--check", "-", "b"}, error).panelFiles, (QStringList{"a", "-", "b"}));
    QCOMPARE(error, QString());
}

void tst_CommandLine::standardInputIsAFile()
{
    QString error;
    for (const QStringList& action :
         {QStringList{}, QStringList{"--check"}, QStringList{"--screenshot", "o"}}) {
        QCOMPARE(parse(action + QStringList("-"), error).panelFiles, QStringList("-"));
        QCOMPARE(error, QString());
    }
}

void tst_CommandLine::errorIsReported_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    QTest::newRow("nothing") << QStringList() << "no panel file was named";
    QTest::newRow("check nothing") << QStringList{"--check"} << "no panel file was named";
    QTest::newRow("two files") << QStringList{"a", "b"}
                               << "one panel file at a time, not \"b\" as well";
    QTest::newRow("two files for a picture") << QStringList{"--screenshot", "o", "a", "b"}
                                             << "one panel file at a time, not \"b\" as well";
    QTest::newRow("standard input twice")
        << QStringList{"--check", "-", "a", "-"} << "standard input can be read once";
    QTest::newRow("unknown option") << QStringList{"--chek", "a"} << "unknown option 'chek'";
    QTest::newRow("no value") << QStringList{"a", "--state"} << "missing value after '--state'";
    QTest::newRow("state and none") << QStringList{"--state", "s", "--no-state", "a"}
                                    << "--state and --no-state do not go together";
    QTest::newRow("check and picture") << QStringList{"--check", "--screenshot", "o", "a"}
                                       << "--check and --screenshot do not go together";
    QTest::newRow("kiosk and edit")
        << QStringList{"--edit", "--kiosk", "a"} << "--edit and --kiosk do not go together";
    QTest::newRow("edit and check")
        << QStringList{"--edit", "--check", "a"} << "--edit and --check do not go together";
    QTest::newRow("editing standard input")
        << QStringList{"--edit", "-"} << "--edit needs a file, not standard input";
    QTest::newRow("kiosk and fullscreen") << QStringList{"--fullscreen", "--kiosk", "a"}
                                          << "--fullscreen and --kiosk do not go together";
    QTest::newRow("picture and fullscreen") << QStringList{"--fullscreen", "--screenshot", "o", "a"}
                                            << "--screenshot and --fullscreen do not go together";
    QTest::newRow("check and types")
        << QStringList{"--types", "--check", "a"} << "--check and --types do not go together";
    QTest::newRow("one type and all") << QStringList{"--describe-all", "--describe", "button"}
                                      << "--describe and --describe-all do not go together";
    QTest::newRow("schema and types")
        << QStringList{"--schema", "--types"} << "--types and --schema do not go together";
    QTest::newRow("types of a panel") << QStringList{"--types", "a"}
                                      << "device types are described without a panel file, not "
                                         "with \"a\"";
    QTest::newRow("no type") << QStringList{"--describe"} << "missing value after '--describe'";
    QTest::newRow("unknown form") << QStringList{"--describe-all", "--format", "html"}
                                  << "--format needs text, markdown or json, not \"html\"";
    QTest::newRow("form alone") << QStringList{"--format", "json", "a"}
                                << "--format goes with --describe and --describe-all only";
    QTest::newRow("form of the lines") << QStringList{"--types", "--format", "json"}
                                       << "--format goes with --describe and --describe-all only";
    QTest::newRow("set and check")
        << QStringList{"--set", "a.b=c", "--check", "a"} << "--set and --check do not go together";
    for (const char* change : {"", "a", "a.b", "=", "a=b", ".b=c", "a.=c", "a=b.c"}) {
        QTest::addRow("set '%s'", change)
            << QStringList{"--set", "x.y=1", "--set", change, "a"}
            << QString("--set needs DEVICE.PARAM=VALUE like start.text=Go, not \"%1\"").arg(change);
    }
    QTest::newRow("set standard input")
        << QStringList{"--set", "a.b=c", "-"} << "--set needs a file, not standard input";
    QTest::newRow("after alone") << QStringList{"--after", "5", "a"}
                                 << "--after goes with --screenshot only";
    QTest::newRow("size alone") << QStringList{"--size", "800x480", "a"}
                                << "--size goes with --screenshot only";
    for (const char* size : {"800", "800x", "x480", "800x480x3", "99x480", "800x8193", "-800x480",
                             "800 x 480", "", "99999999999x480"}) {
        QTest::addRow("size '%s'", size)
            << QStringList{"--screenshot", "o", QString("--size=") + size, "a"}
            << QString("--size needs a width and a height from 100 to 8192 like 1024x600, not "
                       "\"%1\"")
                   .arg(size);
    }
    for (const char* ms : {"-1", "soon", "1.5", "", "99999999999"}) {
        QTest::addRow("after '%s'", ms)
            << QStringList{"--screenshot", "o", QString("--after=") + ms, "a"}
            << QString("--after needs a number of milliseconds, not \"%1\"").arg(ms);
    }
}

void tst_CommandLine::errorIsReported()
{
    QFETCH(QStringList, arguments);
    QString error;
    parse(arguments, error);
    QTEST(error, "error");
}

void tst_CommandLine::pictureOfAKindThatCannotBeWrittenIsRefused()
{
    QString error;
    parse({"--screenshot", "o.gif", "p.yaml"}, error);
    QVERIFY2(error.startsWith("a picture cannot be written as \"gif\"; valid endings: "),
             qPrintable(error));
    QVERIFY2(error.contains(" png") && error.contains(" jpg"), qPrintable(error));
}

void tst_CommandLine::helpNamesEveryOption()
{
    const QString help = norvo::CommandLine::helpText();
    for (const char* option :
         {"--plugins DIR", "--state FILE", "--no-state", "--audit FILE", "--fullscreen", "--kiosk",
          "--check PANEL.yaml...", "--screenshot OUT.png PANEL.yaml", "--types", "--describe TYPE",
          "--describe-all", "--format", "--after MS", "--size WxH", "--verbose", "-platform",
          "--help", "--version"}) {
        QVERIFY2(help.contains(option), option);
    }
    QVERIFY(norvo::CommandLine::versionText().startsWith("norvo-panel "));
}

NORVO_GUILESS_TEST(tst_CommandLine)
#include "tst_CommandLine.moc"
