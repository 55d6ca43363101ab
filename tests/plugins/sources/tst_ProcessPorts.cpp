// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/core/PortsEnds.h"
#include "ProcessSubject.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <vector>

namespace {

/// A process device whose outputs are heard; it starts with start().
struct PortsOfAProcess
{
    explicit PortsOfAProcess(const QString& command, const QString& restart = "never")
    {
        device.setObjectName("child");
        device.setParam("command", command);
        device.setParam("restart", restart);
        QObject::connect(&device, &ProcessDevice::connected,
                         [this](bool on) { notes << (on ? "connected" : "away"); });
        QObject::connect(&device, &ProcessDevice::fault,
                         [this](const QString& text) { faults << text; });
        QObject::connect(&device, &ProcessDevice::alertRaised,
                         [this](const QString& text) { alerts << text; });
    }
    ~PortsOfAProcess() { stop(); }

    void addOutput(const QString& name, const PortDefinition& definition)
    {
        QCOMPARE(device.addOutput(name, definition), QString());
        outputs.append(name);
    }
    void addInput(const QString& name, const PortDefinition& definition)
    {
        QCOMPARE(device.addInput(name, definition), QString());
    }
    void start()
    {
        while (!outputs.isEmpty()) {
            listenTo(outputs.takeFirst());
        }
        QVERIFY(device.initialise());
        device.setRunning(true);
        device.postInitialisation();
    }
    void stop()
    {
        device.setRunning(false);
        device.preShutdown();
        device.deinitialise();
    }
    template <class Value>
    void send(const QString& input, const char* form, const Value& value)
    {
        QString signature;
        QObject* const receiver = device.getReceiver(input + form, signature);
        QVERIFY(receiver);
        QVERIFY(
            QMetaObject::invokeMethod(receiver, input.toUtf8().constData(),
                                      QArgument<Value>(QByteArray(form).mid(1).chopped(1), value)));
    }

    void listenTo(const QString& name)
    {
        listeners.push_back(std::make_unique<Listener>());
        Listener* const listener = listeners.back().get();
        listener->onNote = [this, name, listener] { notes << name + ' ' + listener->notes.last(); };
        listener->listenTo(device, name);
    }

    ProcessDevice device;
    QStringList outputs;                              ///< That are not listened to yet.
    std::vector<std::unique_ptr<Listener>> listeners; ///< One for each output.
    QStringList notes;
    QStringList faults;
    QStringList alerts;
};

} // namespace

/// The named outputs and inputs of a process.
class tst_ProcessPorts : public QObject
{
    Q_OBJECT

private slots:
    void definitionsAreChecked_data();
    void definitionsAreChecked();
    void everyOutputThatMatchesSends();
    void lineGoesOnBehindAZeroByte();
    void commaMayBeTheDecimalPoint();
    void inputsWriteLines();
    void linesThatMatchNothingAreCounted();
    void outputThatNobodyHearsMatchesAsWell();
    void writeWhileItDoesNotRunIsNeverKept();
    void lastValueIsSentAgainAfterARestart();
    void valueThatWasRefusedIsNotSentAgain();
    void newPanelBeginsWithoutTheLastValue();
    void deathIsAFault_data();
    void deathIsAFault();
    void lastWordsAreThoseOfTheRunThatEnded();
    void regularEndIsNoFault();
    void programThatDoesNotStartIsAFault();
};

void tst_ProcessPorts::definitionsAreChecked_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("error");

    QTest::newRow("bracket") << "t ([0-9+"
                             << ""
                             << ""
                             << "broken regular expression: missing terminating ] for character "
                                "class, at character 9";
    QTest::newRow("star at the start")
        << "*"
        << ""
        << ""
        << "broken regular expression: quantifier does not follow a repeatable item, at character "
           "1";
    QTest::newRow("empty output") << ""
                                  << ""
                                  << ""
                                  << "it is empty; write a regular expression, such as "
                                     "\"temperature ([-0-9.]+)\"";
    QTest::newRow("resend of an output") << "t"
                                         << ""
                                         << "resend=true"
                                         << "unknown option \"resend\"; valid names: \"as\", "
                                            "\"decimal\"";
    QTest::newRow("decimal") << "t"
                             << ""
                             << "decimal=,"
                             << "option \"decimal\": \",\" is neither point nor comma";
    QTest::newRow("empty input") << QString() << ""
                                 << ""
                                 << "it is empty; write the line that is sent, with %1 for the "
                                    "value";
    QTest::newRow("two lines") << QString() << "a\nb"
                               << ""
                               << "it holds more than one line";
    QTest::newRow("resend") << QString() << "set %1"
                            << "resend=yes"
                            << "option \"resend\": \"yes\" is neither false nor true";
    QTest::newRow("good input") << QString() << "set %1"
                                << "resend=true"
                                << "";
    QTest::newRow("good output") << "^t (.*)$"
                                 << ""
                                 << "decimal=comma"
                                 << "";
}

void tst_ProcessPorts::definitionsAreChecked()
{
    QFETCH(QString, output);
    QFETCH(QString, input);
    QFETCH(QString, options);

    ProcessDevice device;
    QMap<QString, QString> map;
    if (!options.isEmpty()) {
        map.insert(options.section('=', 0, 0), options.section('=', 1));
    }
    QTEST(output.isNull() ? device.addInput("x", {input, map})
                          : device.addOutput("x", {output, map}),
          "error");
}

void tst_ProcessPorts::everyOutputThatMatchesSends()
{
    PortsOfAProcess child(R"(printf 'T 21.5 heater on\nheater off\n')");
    child.addOutput("t", QString("T ([-0-9.]+)"));
    child.addOutput("heater", QString("heater (on|off)"));
    child.start();
    QTRY_VERIFY(child.notes.contains("away"));
    QCOMPARE(child.notes,
             QStringList({"connected", "t number 21.5", "t text 21.5", "heater text on",
                          "heater yes", "heater text off", "heater no", "away"}));
    QCOMPARE(child.alerts, QStringList());
}

void tst_ProcessPorts::lineGoesOnBehindAZeroByte()
{
    PortsOfAProcess child(R"(printf 'T\00021\n')");
    child.addOutput("t", QString("T.([0-9]+)"));
    child.start();
    QTRY_COMPARE(child.notes, QStringList({"connected", "t number 21", "t text 21", "away"}));
    QCOMPARE(child.alerts, QStringList());
}

void tst_ProcessPorts::commaMayBeTheDecimalPoint()
{
    PortsOfAProcess child(R"(sh -c 'echo "T 21,5"; cat')");
    child.addOutput("t", {"^T (.*)", {{"decimal", "comma"}}});
    child.addOutput("back", QString("^set .*"));
    child.addInput("set", {"set %1", {{"decimal", "comma"}}});
    child.start();
    QTRY_COMPARE(child.notes, QStringList({"connected", "t number 21.5", "t text 21,5"}));
    child.send("set", "(double)", 2.5);
    child.send("set", "(QString)", QString("3.5"));
    child.send("set", "(QString)", QString("v1.2.3"));
    QTRY_COMPARE(child.notes.mid(3),
                 QStringList({"back text set 2,5", "back text set 3,5", "back text set v1.2.3"}));
}

void tst_ProcessPorts::inputsWriteLines()
{
    PortsOfAProcess child("cat");
    child.addOutput("line", QString("^.*$"));
    child.addInput("set", QString("set %1 (%1)"));
    child.addInput("go", QString("go"));
    child.start();
    QTRY_COMPARE(child.notes, QStringList("connected"));
    child.send("set", "(double)", 1e6);
    child.send("set", "(int)", -3);
    child.send("set", "(bool)", true);
    child.send("set", "(QString)", QString("%1 x"));
    child.send("go", "(QString)", QString("whatever"));
    child.send("set", "(QString)", QString("1\nshutdown"));
    QTRY_COMPARE(
        child.notes.mid(1),
        QStringList({"line text set 1000000 (1000000)", "line text set -3 (-3)",
                     "line text set true (true)", "line text set %1 x (%1 x)", "line text go"}));
    QTRY_COMPARE(child.alerts, QStringList("inputs refused, they hold more than one line: 1"));
}

void tst_ProcessPorts::linesThatMatchNothingAreCounted()
{
    PortsOfAProcess child(
        R"(sh -c 'echo T 1; echo U 2; echo V 3; head -c 70000 /dev/zero | tr "\\0" T')");
    child.addOutput("t", QString("T"));
    child.start();
    QTRY_VERIFY(child.notes.contains("away"));
    QCOMPARE(child.notes, QStringList({"connected", "t text T", "away"}));
    QCOMPARE(child.alerts, QStringList("lines that match none of the named outputs: 3"));
}

void tst_ProcessPorts::outputThatNobodyHearsMatchesAsWell()
{
    PortsOfAProcess child("echo T 1");
    QCOMPARE(child.device.addOutput("t", QString("T")), QString());
    child.start();
    QTRY_VERIFY(child.notes.contains("away"));
    QCOMPARE(child.alerts, QStringList());
}

void tst_ProcessPorts::writeWhileItDoesNotRunIsNeverKept()
{
    PortsOfAProcess child("sh -c 'read line; echo got $line'", "always");
    child.addOutput("got", QString("^got (.*)"));
    child.addInput("set", {"%1", {{"resend", "true"}}});
    child.start();
    child.send("set", "(QString)", QString("before the start"));
    QTRY_COMPARE(child.notes, QStringList("connected"));
    QTRY_COMPARE(child.alerts, QStringList("inputs lost, the program is not running: 1"));
    QCOMPARE(child.notes, QStringList("connected"));
    child.send("set", "(QString)", QString("now"));
    QTRY_VERIFY(child.notes.contains("got text now"));
}

void tst_ProcessPorts::lastValueIsSentAgainAfterARestart()
{
    // Each run echoes what it gets and ends when it is told to.
    PortsOfAProcess child(
        R"(sh -c 'while read line; do echo "> $line"; [ "$line" = end ] && exit 0; done')",
        "always");
    child.addOutput("got", QString("^> (.*)"));
    child.addInput("speed", {"speed %1", {{"resend", "true"}}});
    child.addInput("other", {"other %1", {{"resend", "true"}}});
    child.addInput("once", QString("once %1"));
    child.addInput("end", QString("end"));
    child.start();
    QTRY_COMPARE(child.notes, QStringList("connected"));
    child.send("speed", "(double)", 1.0);
    child.send("once", "(double)", 5.0);
    child.send("speed", "(double)", 2.5);
    child.send("end", "(QString)", QString());
    QTRY_VERIFY(child.notes.contains("away"));
    QCOMPARE(child.notes, QStringList({"connected", "got text speed 1", "got text once 5",
                                       "got text speed 2.5", "got text end", "away"}));
    child.notes.clear();
    QTRY_COMPARE(child.notes, QStringList({"connected", "got text speed 2.5"}));
    QCOMPARE(child.faults, QStringList());
}

void tst_ProcessPorts::valueThatWasRefusedIsNotSentAgain()
{
    PortsOfAProcess child(R"(sh -c 'read line; echo "> $line"; sleep 0.3; exit 3')", "always");
    child.addOutput("got", QString("^> (.*)"));
    child.addInput("speed", {"speed %1", {{"resend", "true"}}});
    child.start();
    QTRY_COMPARE(child.notes, QStringList("connected"));
    child.send("speed", "(double)", 1.0);
    QTRY_VERIFY(child.notes.contains("away"));
    child.send("speed", "(double)", 2.0);
    child.notes.clear();
    QTRY_VERIFY(child.notes.size() >= 2);
    QCOMPARE(child.notes.mid(0, 2), QStringList({"connected", "got text speed 1"}));
    QTRY_VERIFY(child.alerts.contains("inputs lost, the program is not running: 1"));
}

void tst_ProcessPorts::newPanelBeginsWithoutTheLastValue()
{
    PortsOfAProcess child("cat");
    child.addOutput("got", QString(".*"));
    child.addInput("speed", {"speed %1", {{"resend", "true"}}});
    child.start();
    QTRY_COMPARE(child.notes, QStringList("connected"));
    child.send("speed", "(double)", 1.0);
    QTRY_VERIFY(child.notes.contains("got text speed 1"));
    child.stop();
    child.notes.clear();
    child.start();
    QTRY_VERIFY(child.device.isRunning());
    child.send("speed", "(double)", 7.0); // lost: it has not started yet
    QTRY_COMPARE(child.alerts, QStringList("inputs lost, the program is not running: 1"));
    QCOMPARE(child.notes.filter("speed"), QStringList());
}

void tst_ProcessPorts::deathIsAFault_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("fault");

    QTest::newRow("status") << "sh -c 'exit 3'"
                            << "the program has ended with exit status 3";
    QTest::newRow("status above 128") << "sh -c 'exit 200'"
                                      << "the program has ended with exit status 200";
    QTest::newRow("signal") << "sh -c 'kill -9 $$'"
                            << "signal 9 (Killed) has ended the program";
    QTest::newRow("last words") << R"(sh -c 'echo one >&2; printf "No \033 port\n\n" >&2; exit 1')"
                                << "the program has ended with exit status 1; it wrote last: No "
                                   "\\x1b port";
}

void tst_ProcessPorts::deathIsAFault()
{
    QFETCH(QString, command);

    PortsOfAProcess child(command);
    child.start();
    QTRY_VERIFY(!child.faults.isEmpty());
    QTEST(child.faults.join('|'), "fault");
    QCOMPARE(child.alerts, child.faults);
    QCOMPARE(child.notes, QStringList({"connected", "away"}));
}

void tst_ProcessPorts::lastWordsAreThoseOfTheRunThatEnded()
{
    const QTemporaryDir folder;
    const QString mark = folder.filePath("mark");
    PortsOfAProcess child(
        QString("sh -c '[ -e %1 ] || echo broken >&2; touch %1; exit 3'").arg(mark), "always");
    child.start();
    QTRY_VERIFY(child.faults.size() >= 2);
    const QString death = "the program has ended with exit status 3";
    QCOMPARE(child.faults.mid(0, 2), QStringList({death + "; it wrote last: broken", death}));
}

void tst_ProcessPorts::regularEndIsNoFault()
{
    PortsOfAProcess child("sh -c 'echo bye >&2'");
    child.start();
    QTRY_VERIFY(child.notes.contains("away"));
    QCoreApplication::processEvents();
    QCOMPARE(child.faults, QStringList());
}

void tst_ProcessPorts::programThatDoesNotStartIsAFault()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("text");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("neither a program nor a script\n");
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    PortsOfAProcess child(path);
    child.start();
    QTRY_VERIFY(!child.faults.isEmpty());
    QCOMPARE(child.faults, QStringList("cannot start \"" + path + "\": Exec format error"));
    QCOMPARE(child.notes, QStringList("away"));
}

NORVO_GUILESS_TEST(tst_ProcessPorts)
#include "tst_ProcessPorts.moc"
