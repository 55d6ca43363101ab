// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "StoredHistory.h"
#include "TestMain.h"
#include "host/program/ExportHistory.h"
#include "host/services/history/HistoryWriter.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace norvo;

namespace {

constexpr qint64 kTime = 1'700'000'000'007; // 2023-11-14T22:13:20.007Z

struct Exported
{
    explicit Exported(const QByteArray& panelText = "history: {signals: [a.x]}\n")
        : panel(folder.filePath("p.yaml")), history(folder.filePath("p.history.sqlite"))
    {
        QFile file(panel);
        file.open(QIODevice::WriteOnly);
        file.write(panelText);
    }

    /// Runs the program; `more` stands before the panel's name.
    int run(const QStringList& more)
    {
        PanelProcess program(more + QStringList(panel));
        const int status = program.runToEnd();
        output = program.readAllStandardOutput();
        errors = program.errorLines().join('\n');
        return status;
    }

    QTemporaryDir folder;
    const QString panel;
    const QString history;
    QByteArray output;
    QString errors;
};

} // namespace

/// What --export writes.
class tst_NorvoPanelExport : public QObject
{
    Q_OBJECT

private slots:
    void everyKindOfValueHasItsForm();
    void timesLimitWhatIsWritten();
    void timeWithoutValuesIsATableWithoutLines();
    void fileIsWrittenWholeOrNotAtAll();
    void runningPanelIsReadToo();
    void whatCannotBeExportedIsSaidInALine_data();
    void whatCannotBeExportedIsSaidInALine();
    void fullOutputIsAnError();
    void timesAreReadInSeveralForms_data();
    void timesAreReadInSeveralForms();
};

void tst_NorvoPanelExport::everyKindOfValueHasItsForm()
{
    Exported exported;
    QVERIFY(storeHistory(exported.history, {"a.x", "b.y"},
                         {{1, {kTime, HistoryValue::of(0.1)}},
                          {0, {kTime, HistoryValue::of(1e300)}},
                          {0, {kTime + 1000, HistoryValue::of(QString("say \"a,b\"\n\u00e4"))}},
                          {0, {kTime + 2000, HistoryValue::gap()}},
                          {0, {kTime + 3000, HistoryValue::of(true)}},
                          {0, {kTime + 4000, HistoryValue::of(false)}}}));
    QCOMPARE(exported.run({"--export", "-"}), 0);
    QCOMPARE(exported.output,
             QByteArray("time,signal,value\r\n"
                        "2023-11-14T22:13:20.007Z,a.x,1e+300\r\n"
                        "2023-11-14T22:13:21.007Z,a.x,\"say \"\"a,b\"\"\n\u00e4\"\r\n"
                        "2023-11-14T22:13:22.007Z,a.x,\r\n"
                        "2023-11-14T22:13:23.007Z,a.x,true\r\n"
                        "2023-11-14T22:13:24.007Z,a.x,false\r\n"
                        "2023-11-14T22:13:20.007Z,b.y,0.1\r\n"));
    QCOMPARE(exported.errors, QString());
}

void tst_NorvoPanelExport::timesLimitWhatIsWritten()
{
    Exported exported;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    QVERIFY(storeHistory(exported.history, {"a.x"},
                         {{0, {kTime, HistoryValue::of(1.0)}},
                          {0, {kTime + 1000, HistoryValue::of(2.0)}},
                          {0, {now - 1000, HistoryValue::of(3.0)}}}));
    QCOMPARE(exported.run({"--export", "-", "--from", "2023-11-14T22:13:21Z", "--to", "2 h"}), 0);
    QCOMPARE(exported.output.split('\n').mid(1),
             QList<QByteArray>({"2023-11-14T22:13:21.007Z,a.x,2\r", ""}));
    QCOMPARE(exported.run({"--export", "-", "--from", "1 h"}), 0);
    QVERIFY2(exported.output.endsWith("Z,a.x,3\r\n"), exported.output.constData());
    QCOMPARE(exported.output.count('\n'), 2);
}

void tst_NorvoPanelExport::timeWithoutValuesIsATableWithoutLines()
{
    Exported exported;
    QVERIFY(storeHistory(exported.history, {"a.x"}, {{0, {kTime, HistoryValue::of(1.0)}}}));
    QCOMPARE(exported.run({"--export", "-", "--from", "2023-11-15T00:00:00Z"}), 0);
    QCOMPARE(exported.output, QByteArray("time,signal,value\r\n"));
    QCOMPARE(exported.errors, QString());
}

void tst_NorvoPanelExport::fileIsWrittenWholeOrNotAtAll()
{
    Exported exported;
    const QString table = exported.folder.filePath("out.csv");
    QCOMPARE(exported.run({"--export", table}), 1);
    QVERIFY(!QFile::exists(table));
    QVERIFY(storeHistory(exported.history, {"a.x"}, {{0, {kTime, HistoryValue::of(1.0)}}}));
    QCOMPARE(exported.run({"--export", table}), 0);
    QFile file(table);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("time,signal,value\r\n2023-11-14T22:13:20.007Z,a.x,1\r\n"));
}

void tst_NorvoPanelExport::runningPanelIsReadToo()
{
    Exported exported;
    HistoryWriter writer(exported.history, {"a.x"}, {1LL << 50, 1'000'000'000});
    writer.add({0, {ClockReading::bootNow(), HistoryValue::of(5.0)}});
    QTRY_VERIFY(exported.run({"--export", "-"}) == 0 && exported.output.endsWith(",a.x,5\r\n"));
}

void tst_NorvoPanelExport::whatCannotBeExportedIsSaidInALine_data()
{
    QTest::addColumn<QByteArray>("panel");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("error");
    const QByteArray good("history: {signals: [a.x]}\n");
    const QStringList all{"--export", "-"};
    QTest::newRow("no history") << QByteArray("title: a\n") << all << 1 << "has no history";
    QTest::newRow("no file") << good << all << 1 << "there is no such file";
    QTest::newRow("not a panel") << QByteArray("- a\n") << all << 1 << "p.yaml:1:1: error";
    QTest::newRow("no time") << good << all + QStringList{"--from", "noon"} << 2
                             << "--from needs a time such as";
    QTest::newRow("wrong order") << good << all + QStringList{"--from", "1 h", "--to", "2 h"} << 2
                                 << "--from is later than --to";
    QTest::newRow("alone") << good << QStringList{"--from", "1 h"} << 2
                           << "--from goes with --export only";
}

void tst_NorvoPanelExport::whatCannotBeExportedIsSaidInALine()
{
    QFETCH(QByteArray, panel);
    QFETCH(QStringList, options);
    QFETCH(int, status);
    QFETCH(QString, error);
    Exported exported(panel);
    QCOMPARE(exported.run(options), status);
    QVERIFY2(exported.errors.contains(error), qPrintable(exported.errors));
    QCOMPARE(exported.errors.count('\n'), 0);
    QCOMPARE(exported.output, QByteArray());
}

void tst_NorvoPanelExport::fullOutputIsAnError()
{
    Exported exported;
    QVERIFY(storeHistory(exported.history, {"a.x"}, {{0, {kTime, HistoryValue::of(1.0)}}}));
    PanelProcess program({"--export", "-", exported.panel});
    program.setStandardOutputFile("/dev/full");
    QCOMPARE(program.runToEnd(), 1);
    QVERIFY(program.errorLines().join('\n').contains("cannot be written"));
}

void tst_NorvoPanelExport::timesAreReadInSeveralForms_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("time");
    QTest::newRow("UTC") << "2023-11-14T22:13:20Z" << 1'700'000'000'000LL;
    QTest::newRow("zone") << "2023-11-14T23:13:20.5+01:00" << 1'700'000'000'500LL;
    QTest::newRow("ago") << "1 h" << 1'699'996'400'000LL;
    QTest::newRow("local") << "2023-11-14T22:13"
                           << QDateTime({2023, 11, 14}, {22, 13}).toMSecsSinceEpoch();
    QTest::newRow("day") << "2023-11-14" << QDateTime({2023, 11, 14}, {0, 0}).toMSecsSinceEpoch();
    QTest::newRow("word") << "yesterday" << -1LL;
    QTest::newRow("number") << "5" << -1LL;
}

void tst_NorvoPanelExport::timesAreReadInSeveralForms()
{
    QFETCH(QString, text);
    QFETCH(qint64, time);
    const auto now = QDateTime::fromMSecsSinceEpoch(1'700'000'000'000LL);
    QCOMPARE(toMoment(text, now).value_or(-1), time);
}

NORVO_GUILESS_TEST(tst_NorvoPanelExport)

#include "tst_NorvoPanelExport.moc"
