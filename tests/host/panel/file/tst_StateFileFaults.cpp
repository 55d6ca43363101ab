#include "StateFileTest.h"
#include "TestMain.h"

#include <sys/resource.h>

#include <csignal>

using norvo::StateFile;

/// State files that do not read, and such as cannot be written.
class tst_StateFileFaults : public StateFileTest
{
    Q_OBJECT

private slots:
    void fileThatDoesNotReadIsPutAside_data();
    void fileThatDoesNotReadIsPutAside();
    void olderBadFileIsReplaced();
    void readOnlyModeTouchesNothing();
    void whatIsNoFileIsToldAndLeft();
    void failureIsToldOnceUntilAWritingSucceeds();
    void fullDiskLeavesTheOldFile();
};

void tst_StateFileFaults::fileThatDoesNotReadIsPutAside_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("reason");
    QTest::newRow("empty") << QByteArray("") << "it is empty";
    QTest::newRow("zeros") << QByteArray(64, '\0') << "";
    QTest::newRow("half a file") << QByteArray("\"b\":\n  \"toggled\": \"tr")
                                 << "illegal EOF in scalar (line 2)";
    QTest::newRow("list") << QByteArray("- a\n") << "a map is expected here (line 1)";
    QTest::newRow("text for a device") << QByteArray("a: b\n") << "a map is expected here (line 1)";
    QTest::newRow("list for a value")
        << QByteArray("a:\n  b: [c]\n") << "a text is expected here (line 2)";
    QTest::newRow("no UTF-8") << QByteArray("a: {b: \xff}\n") << "it is not UTF-8 text";
    QTest::newRow("deep") << QByteArray(100000, '[') << "";
    QTest::newRow("bomb") << QByteArray("a: &a [x, x]\nb: &b [*a, *a]\nc: [*b, *b]\n")
                          << "a map is expected here (line 1)";
    QTest::newRow("large") << QByteArray(StateFile::kSizeLimit + 1, '#')
                           << "it is larger than 4 MiB";
}

void tst_StateFileFaults::fileThatDoesNotReadIsPutAside()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, reason);
    fill(text);
    StateFile state(file());
    QSignalSpy problems(&state, &StateFile::problem);
    state.read();
    QCOMPARE(problems.size(), 1);
    const QString line = problems[0][0].toString();
    QVERIFY2(line.startsWith(file() + ": warning: the saved state does not read: " + reason),
             qPrintable(line));
    QVERIFY2(line.endsWith("it is kept as " + file() + ".bad and the panel starts without it"),
             qPrintable(line));
    QVERIFY(!line.contains('\n'));
    QVERIFY(state.state().isEmpty());
    QVERIFY(!QFile::exists(file()));
    QFile bad(file() + ".bad");
    QVERIFY(bad.open(QIODevice::ReadOnly));
    QCOMPARE(bad.readAll(), text);
}

void tst_StateFileFaults::olderBadFileIsReplaced()
{
    for (const QByteArray& text : {QByteArray("[first"), QByteArray("[second")}) {
        fill(text);
        StateFile(file()).read();
        QFile bad(file() + ".bad");
        QVERIFY(bad.open(QIODevice::ReadOnly));
        QCOMPARE(bad.readAll(), text);
    }
}

void tst_StateFileFaults::readOnlyModeTouchesNothing()
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

void tst_StateFileFaults::whatIsNoFileIsToldAndLeft()
{
    QVERIFY(QDir(folder()).mkdir("panel.state.yaml"));
    StateFile state(file());
    QSignalSpy problems(&state, &StateFile::problem);
    state.read();
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0][0].toString(),
             file() + ": warning: the saved state does not read: it is no regular file; "
                      "the panel starts without it");
    QVERIFY(QFileInfo(file()).isDir());
}

void tst_StateFileFaults::failureIsToldOnceUntilAWritingSucceeds()
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

void tst_StateFileFaults::fullDiskLeavesTheOldFile()
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

NORVO_GUILESS_TEST(tst_StateFileFaults)
#include "tst_StateFileFaults.moc"
