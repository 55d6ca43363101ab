#include "host/program/CommandLine.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Options;

class tst_CommandLine : public QObject
{
    Q_OBJECT

private slots:
    void panelAloneIsRun();
    void everyOptionArrives();
    void pictureHasItsFileAndTime();
    void actionIsChosen_data();
    void actionIsChosen();
    void faultIsTold_data();
    void faultIsTold();
    void helpNamesEveryOption();

private:
    static Options parse(const QStringList& arguments, QString& fault)
    {
        return norvo::CommandLine::parse(QStringList("norvo-panel") + arguments, fault);
    }
};

void tst_CommandLine::panelAloneIsRun()
{
    QString fault;
    const Options options = parse({"p.yaml"}, fault);
    QCOMPARE(fault, QString());
    QCOMPARE(int(options.action), int(Options::Action::Run));
    QCOMPARE(options.panelFile, QString("p.yaml"));
    QCOMPARE(options.pluginFolders, QStringList());
    QCOMPARE(options.stateFile, QString());
    QVERIFY(options.keepsState);
    QVERIFY(!options.fullscreen);
}

void tst_CommandLine::everyOptionArrives()
{
    QString fault;
    const Options options = parse(
        {"--plugins", "a", "--plugins=b", "--state", "s.yaml", "--fullscreen", "p.yaml"}, fault);
    QCOMPARE(fault, QString());
    QCOMPARE(options.pluginFolders, (QStringList{"a", "b"}));
    QCOMPARE(options.stateFile, QString("s.yaml"));
    QVERIFY(options.fullscreen);
    QVERIFY(!parse({"p.yaml", "--no-state"}, fault).keepsState);
    QCOMPARE(fault, QString());
}

void tst_CommandLine::pictureHasItsFileAndTime()
{
    QString fault;
    const Options options = parse({"--screenshot", "o.png", "--after", "0", "p.yaml"}, fault);
    QCOMPARE(fault, QString());
    QCOMPARE(int(options.action), int(Options::Action::Screenshot));
    QCOMPARE(options.pictureFile, QString("o.png"));
    QCOMPARE(options.pictureAfterMs, 0);
    QCOMPARE(parse({"--screenshot", "o.png", "p.yaml"}, fault).pictureAfterMs, 500);
}

void tst_CommandLine::actionIsChosen_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("action");
    QTest::newRow("check") << QStringList{"--check", "p.yaml"} << int(Options::Action::Check);
    QTest::newRow("help") << QStringList{"--help"} << int(Options::Action::Help);
    QTest::newRow("h") << QStringList{"-h"} << int(Options::Action::Help);
    QTest::newRow("version") << QStringList{"--version"} << int(Options::Action::Version);
    QTest::newRow("v") << QStringList{"-v"} << int(Options::Action::Version);
}

void tst_CommandLine::actionIsChosen()
{
    QFETCH(QStringList, arguments);
    QString fault;
    QTEST(int(parse(arguments, fault).action), "action");
    QCOMPARE(fault, QString());
}

void tst_CommandLine::faultIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("fault");
    QTest::newRow("nothing") << QStringList() << "no panel file was named";
    QTest::newRow("check nothing") << QStringList{"--check"} << "no panel file was named";
    QTest::newRow("two files") << QStringList{"a", "b"}
                               << "one panel file at a time, not \"b\" as well";
    QTest::newRow("unknown option") << QStringList{"--chek", "a"} << "Unknown option 'chek'.";
    QTest::newRow("no value") << QStringList{"a", "--state"} << "Missing value after '--state'.";
    QTest::newRow("state and none") << QStringList{"--state", "s", "--no-state", "a"}
                                    << "--state and --no-state do not go together";
    QTest::newRow("check and picture") << QStringList{"--check", "--screenshot", "o", "a"}
                                       << "--check and --screenshot do not go together";
    QTest::newRow("picture and fullscreen") << QStringList{"--fullscreen", "--screenshot", "o", "a"}
                                            << "--screenshot and --fullscreen do not go together";
    QTest::newRow("after alone") << QStringList{"--after", "5", "a"}
                                 << "--after goes with --screenshot only";
    for (const char* ms : {"-1", "soon", "1.5", "", "99999999999"}) {
        QTest::addRow("after '%s'", ms)
            << QStringList{"--screenshot", "o", QString("--after=") + ms, "a"}
            << QString("--after needs a number of milliseconds, not \"%1\"").arg(ms);
    }
}

void tst_CommandLine::faultIsTold()
{
    QFETCH(QStringList, arguments);
    QString fault;
    parse(arguments, fault);
    QTEST(fault, "fault");
}

void tst_CommandLine::helpNamesEveryOption()
{
    const QString help = norvo::CommandLine::helpText();
    for (const char* option :
         {"--plugins DIR", "--state FILE", "--no-state", "--fullscreen", "--check PANEL.yaml",
          "--screenshot OUT.png PANEL.yaml", "--after MS", "--help", "--version"}) {
        QVERIFY2(help.contains(option), option);
    }
    QVERIFY(norvo::CommandLine::versionText().startsWith("norvo-panel "));
}

NORVO_GUILESS_TEST(tst_CommandLine)
#include "tst_CommandLine.moc"
