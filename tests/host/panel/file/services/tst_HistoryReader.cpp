// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"

#include "host/panel/Descriptions.h"
#include "TestMain.h"

#include <QtTest>

class tst_HistoryReader : public QObject
{
    Q_OBJECT

private slots:
    void signalsAreReadWithWhatIsUsualForTheRest();
    void signalsOfAMapHaveTheirSettings();
    void entriesOfAListMayBeMaps();
    void placesAreThoseOfDeviceAndSignal();
    void fileAgeAndSizeAreRead();
    void panelWithoutTheKeyHasNoHistory();
    void fileBesideThePanelIsNamedAfterIt();
    void whatIsWrongIsSaidWithItsPlace_data();
    void whatIsWrongIsSaidWithItsPlace();
};

static norvo::HistorySetting read(const QByteArray& text, QStringList* errors = nullptr)
{
    norvo::Diagnostics diagnostics("p.yaml");
    const auto panel = norvo::PanelFile::parse(text, "p.yaml", diagnostics);
    if (errors) {
        *errors = describe::lines(diagnostics);
    }
    return panel.history;
}

void tst_HistoryReader::signalsAreReadWithWhatIsUsualForTheRest()
{
    QStringList errors;
    const auto history = read("history: {signals: [boiler.output, \"pump.on(bool)\"]}\n", &errors);
    QCOMPARE(errors, QStringList());
    QVERIFY(history.isGiven);
    QCOMPARE(history.file, QString());
    QCOMPARE(history.keep, norvo::Duration(std::chrono::hours(720)));
    QCOMPARE(history.maxBytes, 500000000LL);
    QCOMPARE(history.recorded.size(), 2);
    QCOMPARE(history.recorded[0].name(), QString("boiler.output"));
    QCOMPARE(history.recorded[1].signal, QString("on(bool)"));
    QCOMPARE(history.recorded[1].name(), QString("pump.on"));
    QVERIFY(!history.recorded[0].deadband);
    QCOMPARE(history.recorded[0].every.count(), 0);
}

void tst_HistoryReader::signalsOfAMapHaveTheirSettings()
{
    QStringList errors;
    const auto history =
        read("history:\n  signals:\n    a.x: {deadband: 0.5, every: 2 s}\n    b.y:\n", &errors);
    QCOMPARE(errors, QStringList());
    QCOMPARE(history.recorded.size(), 2);
    QCOMPARE(history.recorded[0].name(), QString("a.x"));
    QCOMPARE(history.recorded[0].deadband.value_or(-1), 0.5);
    QCOMPARE(history.recorded[0].every.count(), 2000);
    QCOMPARE(history.recorded[1].name(), QString("b.y"));
    QVERIFY(!history.recorded[1].deadband);
}

void tst_HistoryReader::entriesOfAListMayBeMaps()
{
    QStringList errors;
    const auto history = read("history: {signals: [{signal: a.x, deadband: 0}, b.y]}\n", &errors);
    QCOMPARE(errors, QStringList());
    QCOMPARE(history.recorded.size(), 2);
    QCOMPARE(history.recorded[0].deadband.value_or(-1), 0.0);
}

void tst_HistoryReader::placesAreThoseOfDeviceAndSignal()
{
    const auto history = read("history:\n  signals:\n    boiler.output: {every: 1 s}\n");
    QCOMPARE(history.recorded.size(), 1);
    QCOMPARE(history.recorded[0].devicePlace.column, 5);
    QCOMPARE(history.recorded[0].signalPlace.line, 3);
    QCOMPARE(history.recorded[0].signalPlace.column, 12);
}

void tst_HistoryReader::fileAgeAndSizeAreRead()
{
    const auto history =
        read("history: {signals: [a.x], file: log/a.sqlite, keep: 1.5 d, max: 2 GB}\n");
    QCOMPARE(history.file, QString("log/a.sqlite"));
    QCOMPARE(history.keep, norvo::Duration(std::chrono::hours(36)));
    QCOMPARE(history.maxBytes, 2000000000LL);
}

void tst_HistoryReader::panelWithoutTheKeyHasNoHistory()
{
    QVERIFY(!read("title: none\n").isGiven);
}

void tst_HistoryReader::fileBesideThePanelIsNamedAfterIt()
{
    using norvo::HistorySetting;
    QCOMPARE(HistorySetting::besidePanel("a/b.c.yaml"), QString("a/b.c.history.sqlite"));
    QCOMPARE(HistorySetting::besidePanel("p.yml"), QString("./p.yml.history.sqlite"));
}

void tst_HistoryReader::whatIsWrongIsSaidWithItsPlace_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const QString wanted =
        "signals must be a list of \"device.signal\", or a map of them, each with "
        "deadband and every where wanted";
    const QString size = "max must be from 1 MB to 1000 GB with its unit, such as \"500 MB\"";
    const auto row = [](const char* name, const QByteArray& inner, const QString& error) {
        QTest::newRow(name) << "history: {" + inner + "}\n" << error;
    };
    QTest::newRow("text") << QByteArray("history: yes\n")
                          << "1:10: error: history must be a map of signals, file, keep and max";
    row("no signals", "keep: 1 h",
        "1:1: error: history lacks signals, the list of what is recorded, such as \"signals: "
        "[boiler.output]\"");
    row("empty list", "signals: []", "1:20: error: " + wanted);
    row("one text", "signals: a.x", "1:20: error: " + wanted);
    row("map without signal", "signals: [{every: 1 s}]", "1:21: error: " + wanted);
    row("device alone", "signals: [a]", "1:21: error: \"a\" names no signal; write \"a.signal\"");
    row("twice", "signals: [a.x, \"a.x(double)\"]", "1:26: error: \"a.x\" is recorded already");
    row("unknown key", "signals: [a.x], keeps: 1 h",
        "1:27: error: unknown key \"keeps\" of history; did you mean \"keep\"?");
    row("unknown setting", "signals: {a.x: {ever: 1 s}}",
        "1:27: error: unknown key \"ever\" of a recorded signal; did you mean \"every\"?");
    row("setting is a text", "signals: {a.x: 1 s}",
        "1:26: error: a signal has deadband and every, as in {every: 1 s}");
    row("deadband below nothing", "signals: {a.x: {deadband: -1}}",
        "1:37: error: deadband must be a number from 0 on");
    row("age without unit", "signals: [a.x], keep: 5",
        "1:33: error: keep lacks a unit; write \"5 ms\", \"5 s\", \"5 min\" or \"5 h\"");
    row("size without unit", "signals: [a.x], max: 500", "1:32: error: " + size);
    row("too small", "signals: [a.x], max: 0.5 MB", "1:32: error: " + size);
    row("no file", "signals: [a.x], file: \"\"",
        "1:33: error: file must name a file, such as panel.history.sqlite");
}

void tst_HistoryReader::whatIsWrongIsSaidWithItsPlace()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    QStringList errors;
    read(text, &errors);
    QCOMPARE(errors, QStringList("p.yaml:" + error));
}

NORVO_APPLESS_TEST(tst_HistoryReader)

#include "tst_HistoryReader.moc"
