// SPDX-License-Identifier: GPL-3.0-or-later

#include "StateFileTest.h"
#include "TestMain.h"
#include "host/panel/state/AtomicFile.h"
#include "host/yaml/SourceText.h"

#include <sys/stat.h>

using norvo::StateFile;

namespace {

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// What a state file never does: lose what it cannot replace, and write what is not its own.
class tst_StateFileKept : public StateFileTest
{
    Q_OBJECT

private slots:
    void whatWouldNotBeReadIsNotWritten_data();
    void whatWouldNotBeReadIsNotWritten();
    void panelIsNeitherRenamedNorReplaced_data();
    void panelIsNeitherRenamedNorReplaced();
    void brokenFileThatCannotBeRenamedIsKept();
    void secondPanelIsWarnedAndSavesNothing();
    void secondPanelLeavesABrokenFile();
    void linksToOneFileAreOneFile();
    void lockEndsWithItsOwner();
    void lockFileWithContentIsNotRemoved();
    void lockFileOfAnotherKindIsNotRemoved();
    void lockFileThatTookThePlaceOfOursIsNotRemoved();
    void nameOfADeviceIsBoundedToo();
    void leftoversOfAKillAreRemoved();
    void leftoversLieBesideTheFileAndNotTheLink();
    void leftoversOfAnotherPanelAreKept();
    void pipeIsNotReplaced();

private:
    /// Opens the file as a panel does, changes it, and gives what was reported.
    QStringList reportsOf(StateFile& state)
    {
        QStringList lines;
        connect(&state, &StateFile::problem, this,
                [&lines](const QString& line) { lines += line; });
        state.read();
        state.set("button", "toggled", "true");
        state.save();
        disconnect(&state, nullptr, this, nullptr);
        return lines;
    }
};

void tst_StateFileKept::whatWouldNotBeReadIsNotWritten_data()
{
    QTest::addColumn<int>("devices");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason");
    QTest::newRow("size") << 1 << "n" << QString(norvo::kMaxTextSize / 6 + 1, QChar(1))
                          << "it is larger than 4 MiB";
    QTest::newRow("values") << 50000 << "n"
                            << ""
                            << "it has more than 100,000 values";
    QTest::newRow("name") << 1 << QString(1001, 'n') << ""
                          << "it has a name of more than 1000 characters";
}

void tst_StateFileKept::whatWouldNotBeReadIsNotWritten()
{
    QFETCH(int, devices);
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, reason);
    StateFile state(file());
    QCOMPARE(reportsOf(state), QStringList());
    const QByteArray before = content();
    QVERIFY(!before.isEmpty());
    QSignalSpy problems(&state, &StateFile::problem);
    for (int i = 0; i < devices; ++i) {
        state.set("device" + QString::number(i), name, text);
    }
    state.save();
    state.set("button", "toggled", "false");
    state.save();
    QCOMPARE(content(), before);
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0][0].toString(), file() + ": warning: the state cannot be saved: " + reason +
                                            "; tried again with the next change");
}

void tst_StateFileKept::panelIsNeitherRenamedNorReplaced_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("sound") << QByteArray("title: x\ndevices:\n  a: {device: label}\n");
    QTest::newRow("that reads as a state") << QByteArray("devices: {}\n");
    QTest::newRow("broken") << QByteArray("# a panel\nconnections: [\n");
    QTest::newRow("like JSON") << QByteArray("{\"devices\": {\"a\": {\"device\": \"label\"}}}");
}

void tst_StateFileKept::panelIsNeitherRenamedNorReplaced()
{
    QFETCH(QByteArray, text);
    fill(text);
    StateFile state(file());
    QCOMPARE(reportsOf(state),
             QStringList(file() + ": warning: this is a panel and not a saved state; the panel "
                                  "starts without it and saves nothing"));
    QVERIFY(state.state().value("devices").isEmpty());
    QCOMPARE(content(), text);
    QVERIFY(!QFile::exists(file() + ".bad"));
}

void tst_StateFileKept::brokenFileThatCannotBeRenamedIsKept()
{
    fill("[broken");
    QVERIFY(QDir(folder()).mkpath("panel.state.yaml.bad/full"));
    StateFile state(file());
    const QStringList lines = reportsOf(state);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].endsWith("it cannot be kept as " + file() +
                               ".bad, so the panel starts without it and saves nothing"),
             qPrintable(lines[0]));
    QCOMPARE(content(), QByteArray("[broken"));
}

void tst_StateFileKept::secondPanelIsWarnedAndSavesNothing()
{
    fill("button: {toggled: false}\n");
    StateFile first(file());
    QCOMPARE(reportsOf(first), QStringList());
    const QByteArray saved = content();
    StateFile second(file());
    const QStringList lines = reportsOf(second);
    QCOMPARE(lines, QStringList(file() + ": warning: another panel that runs saves its state here, "
                                         "so this one saves none; --state FILE gives it a file of "
                                         "its own"));
    second.set("button", "toggled", "maybe");
    second.save();
    QTest::qWait(2 * StateFile::kWriteDelayMs);
    QCOMPARE(content(), saved);
    QCOMPARE(second.state().value("button").value("toggled"), QString("maybe"));
}

void tst_StateFileKept::secondPanelLeavesABrokenFile()
{
    StateFile first(file());
    first.read();
    fill("[broken");
    StateFile second(file());
    QCOMPARE(reportsOf(second).size(), 2);
    QCOMPARE(content(), QByteArray("[broken"));
}

void tst_StateFileKept::linksToOneFileAreOneFile()
{
    fill("a: {}\n");
    QVERIFY(QFile::link(file(), filePath("other.yaml")));
    StateFile first(file());
    first.read();
    StateFile second(filePath("other.yaml"));
    QCOMPARE(reportsOf(second).size(), 1);
}

void tst_StateFileKept::lockEndsWithItsOwner()
{
    {
        StateFile first(file());
        QCOMPARE(reportsOf(first), QStringList());
    }
    QCOMPARE(QDir(folder()).entryList(QDir::Files), QStringList("panel.state.yaml"));
    QFile left(file() + ".lock"); // As of a process that was killed.
    QVERIFY(left.open(QIODevice::WriteOnly));
    StateFile second(file());
    QCOMPARE(reportsOf(second), QStringList());
}

void tst_StateFileKept::lockFileWithContentIsNotRemoved()
{
    const QString name = file() + ".lock";
    QFile other(name);
    QVERIFY(other.open(QIODevice::WriteOnly));
    QCOMPARE(other.write("mine"), qint64(4));
    other.close();
    {
        StateFile state(file());
        QCOMPARE(reportsOf(state), QStringList());
    }
    QCOMPARE(contentOf(name), QByteArray("mine"));
    QVERIFY(content().contains("toggled"));
}

void tst_StateFileKept::lockFileOfAnotherKindIsNotRemoved()
{
    const QString name = file() + ".lock";
    QCOMPARE(mkfifo(QFile::encodeName(name), 0600), 0);
    {
        StateFile state(file());
        QCOMPARE(reportsOf(state), QStringList());
    }
    struct stat info = {};
    QCOMPARE(lstat(QFile::encodeName(name), &info), 0);
    QVERIFY(S_ISFIFO(info.st_mode));
    QVERIFY(content().contains("toggled"));
}

void tst_StateFileKept::lockFileThatTookThePlaceOfOursIsNotRemoved()
{
    const QString name = file() + ".lock";
    {
        StateFile state(file());
        state.read();
        QVERIFY(QFile::rename(name, name + ".old"));
        QVERIFY(QFile(name).open(QIODevice::WriteOnly));
    }
    QVERIFY(QFile::exists(name));
}

void tst_StateFileKept::nameOfADeviceIsBoundedToo()
{
    StateFile state(file());
    QSignalSpy problems(&state, &StateFile::problem);
    state.set(QString(1001, 'd'), "n", "");
    state.save();
    QCOMPARE(problems.size(), 1);
    QVERIFY(problems[0][0].toString().contains("it has a name of more than 1000 characters"));
    QVERIFY(!QFile::exists(file()));
}

void tst_StateFileKept::leftoversOfAKillAreRemoved()
{
    const QStringList others{"panel.state.yaml.backup", "panel.state.yaml.BACKUP",
                             "panel.state.yaml.aBcDeFg", "panel.state.yaml.aBc1eF",
                             "other.state.yaml.aBcDeF"};
    for (const QString& name : others + QStringList("panel.state.yaml.aBcDeF")) {
        QVERIFY(QFile(filePath(name)).open(QIODevice::WriteOnly));
    }
    StateFile state(file());
    state.read();
    QVERIFY(!QFile::exists(filePath("panel.state.yaml.aBcDeF")));
    for (const QString& name : others) {
        QVERIFY2(QFile::exists(filePath(name)), qPrintable(name));
    }
}

void tst_StateFileKept::leftoversLieBesideTheFileAndNotTheLink()
{
    fill("a: {}\n");
    QVERIFY(QFile::link(file(), filePath("other.yaml")));
    for (const char* name : {"panel.state.yaml.aBcDeF", "other.yaml.aBcDeF"}) {
        QVERIFY(QFile(filePath(name)).open(QIODevice::WriteOnly));
    }
    StateFile(filePath("other.yaml")).read();
    QVERIFY(!QFile::exists(filePath("panel.state.yaml.aBcDeF")));
    QVERIFY(QFile::exists(filePath("other.yaml.aBcDeF")));
}

void tst_StateFileKept::leftoversOfAnotherPanelAreKept()
{
    StateFile first(file());
    first.read();
    QVERIFY(QFile(filePath("panel.state.yaml.aBcDeF")).open(QIODevice::WriteOnly));
    StateFile(file()).read();
    StateFile(file(), StateFile::Mode::ReadOnly).read();
    QVERIFY(QFile::exists(filePath("panel.state.yaml.aBcDeF")));
}

void tst_StateFileKept::pipeIsNotReplaced()
{
    QCOMPARE(mkfifo(QFile::encodeName(file()), 0600), 0);
    QString reason;
    QVERIFY(!norvo::writeFileAtomically(file(), "text", reason));
    QCOMPARE(reason, QString("it is not a regular file"));
    StateFile state(file());
    QCOMPARE(reportsOf(state).size(), 1);
    struct stat info = {};
    QCOMPARE(lstat(QFile::encodeName(file()), &info), 0);
    QVERIFY(S_ISFIFO(info.st_mode));
}

NORVO_GUILESS_TEST(tst_StateFileKept)
#include "tst_StateFileKept.moc"
