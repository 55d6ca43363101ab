// SPDX-License-Identifier: GPL-3.0-or-later

#include "StateFileTest.h"
#include "host/yaml/SourceText.h"
#include "TestMain.h"

#include <sys/resource.h>

#include <csignal>

using norvo::StateFile;

/// State files that cannot be parsed, and such as cannot be written.
class tst_StateFileErrors : public StateFileTest
{
    Q_OBJECT

private slots:
    void fileThatCannotBeParsedIsPutAside_data();
    void fileThatCannotBeParsedIsPutAside();
    void olderBadFileIsReplaced();
    void readOnlyModeTouchesNothing();
    void folderInItsPlaceIsReportedAndLeft();
    void failureIsReportedOnceUntilAWritingSucceeds();
    void fullDiskLeavesTheOldFile();
};

void tst_StateFileErrors::fileThatCannotBeParsedIsPutAside_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("start");
    const QString larger = ": warning: the saved state cannot be parsed: the file is larger than";
    const auto at = [](const char* place, const char* reason) {
        return QString(":%1: warning: the saved state cannot be parsed: %2").arg(place, reason);
    };
    QTest::newRow("empty") << QByteArray("")
                           << ": warning: the saved state cannot be parsed: it is empty";
    QTest::newRow("zeros") << QByteArray(64, '\0') << at("1:1", "NUL byte");
    QTest::newRow("half a file") << QByteArray("\"b\":\n  \"toggled\": \"tr")
                                 << at("2:14", "broken YAML: unterminated quoted string");
    QTest::newRow("list") << QByteArray("- a\n") << at("1:1", "a map is expected here");
    QTest::newRow("text for a device") << QByteArray("a: b\n") << at("1:4", "a map is expected");
    QTest::newRow("list for a value")
        << QByteArray("a:\n  b: [c]\n") << at("2:6", "a text is expected here");
    QTest::newRow("map for a value")
        << QByteArray("a:\n  b: {c: d}\n") << at("2:6", "a text is expected here");
    QTest::newRow("list as a key")
        << QByteArray("a:\n  ? [b]\n  : c\n") << at("2:5", "a key must be a text");
    QTest::newRow("twice") << QByteArray("a: {b: 1, b: 2}\n")
                           << at("1:11", "the key \"b\" is given twice; it is already in line 1");
    QTest::newRow("not UTF-8") << QByteArray("a: {b: \xff}\n") << at("1:8", "byte is not valid");
    QTest::newRow("deep") << QByteArray(100000, '[') << at("1:65", "nested deeper than 64 levels");
    QTest::newRow("bomb") << QByteArray("a: &a [x, x]\nb: &b [*a, *a]\nc: [*b, *b]\n")
                          << at("1:7", "a map is expected here");
    QTest::newRow("large") << QByteArray(norvo::kMaxTextSize + 1, '#') << larger;
}

void tst_StateFileErrors::fileThatCannotBeParsedIsPutAside()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, start);
    fill(text);
    StateFile state(file());
    QSignalSpy problems(&state, &StateFile::problem);
    state.read();
    QCOMPARE(problems.size(), 1);
    const QString line = problems[0][0].toString();
    QVERIFY2(line.startsWith(file() + start), qPrintable(line));
    QVERIFY2(line.endsWith("it is kept as " + file() + ".bad and the panel starts without it"),
             qPrintable(line));
    QVERIFY(!line.contains('\n'));
    QVERIFY(state.state().isEmpty());
    QVERIFY(!QFile::exists(file()));
    QFile bad(file() + ".bad");
    QVERIFY(bad.open(QIODevice::ReadOnly));
    QCOMPARE(bad.readAll(), text);
}

void tst_StateFileErrors::olderBadFileIsReplaced()
{
    for (const QByteArray& text : {QByteArray("[first"), QByteArray("[second")}) {
        fill(text);
        StateFile(file()).read();
        QFile bad(file() + ".bad");
        QVERIFY(bad.open(QIODevice::ReadOnly));
        QCOMPARE(bad.readAll(), text);
    }
}

void tst_StateFileErrors::readOnlyModeTouchesNothing()
{
    fill("[broken");
    StateFile state(file(), StateFile::Mode::ReadOnly);
    QSignalSpy problems(&state, &StateFile::problem);
    state.read();
    state.set("b", "toggled", "true");
    state.save();
    QTest::qWait(2 * StateFile::kWriteDelayMs);
    QCOMPARE(problems.size(), 1);
    QCOMPARE(content(), QByteArray("[broken"));
    QCOMPARE(QDir(folder()).entryList(QDir::Files).size(), 1);
}

void tst_StateFileErrors::folderInItsPlaceIsReportedAndLeft()
{
    QVERIFY(QDir(folder()).mkdir("panel.state.yaml"));
    StateFile state(file());
    QSignalSpy problems(&state, &StateFile::problem);
    state.read();
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0][0].toString(),
             file() + ": warning: the saved state cannot be read: this is a folder, not a file; "
                      "the panel starts without it and saves nothing");
    QVERIFY(QFileInfo(file()).isDir());
}

void tst_StateFileErrors::failureIsReportedOnceUntilAWritingSucceeds()
{
    const QString later = filePath("later");
    const QString name = later + "/p.state.yaml";
    StateFile state(name);
    QSignalSpy problems(&state, &StateFile::problem);
    state.set("b", "n", "1");
    state.save();
    state.set("b", "n", "2");
    state.save();
    QCOMPARE(problems.size(), 1);
    const QString line = problems[0][0].toString();
    QVERIFY2(line.startsWith(name + ": warning: the state cannot be saved: "), qPrintable(line));

    QVERIFY(QDir().mkdir(later));
    state.set("b", "n", "3");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(name), 1000);
    QVERIFY(QDir(later).removeRecursively());
    state.set("b", "n", "4");
    state.save();
    QCOMPARE(problems.size(), 2);
}

void tst_StateFileErrors::fullDiskLeavesTheOldFile()
{
    StateFile state(file());
    state.set("b", "n", "old");
    state.save();
    const QByteArray before = content();

    // A limit on the size of files stands in for a full disk: both end a write half-way.
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit tight{4096, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tight);
    QSignalSpy problems(&state, &StateFile::problem);
    state.set("b", "n", QString(100000, 'x'));
    state.save();
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0][0].toString(), file() +
                                            ": warning: the state cannot be saved: File too large; "
                                            "tried again with the next change");
    QCOMPARE(content(), before);

    state.save();
    QVERIFY(content().size() > 100000);
}

NORVO_GUILESS_TEST(tst_StateFileErrors)
#include "tst_StateFileErrors.moc"
