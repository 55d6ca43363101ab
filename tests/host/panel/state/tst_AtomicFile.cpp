// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/state/AtomicFile.h"

#include "TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using norvo::writeFileAtomically;

/// A file that is replaced as a whole or not at all.
class tst_AtomicFile : public QObject
{
    Q_OBJECT

private slots:
    void newAndOldFilesAreWritten();
    void fileThatChangesMeanwhileStays();
    void failureOfTheLastStepIsOne();
    void whatIsNoFileIsLeft_data();
    void whatIsNoFileIsLeft();
    void missingFolderIsTheReason();
    void leftoversAreToldByTheirNames_data();
    void leftoversAreToldByTheirNames();
    void foldersAndLinksAreNoLeftovers();

private:
    static QByteArray contentOf(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    static void fill(const QString& name, const QByteArray& text)
    {
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    static QStringList filesIn(const QTemporaryDir& folder)
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

void tst_AtomicFile::newAndOldFilesAreWritten()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("f");
    QString reason;
    for (const QByteArray& text : {QByteArray("one"), QByteArray(100000, 'x'), QByteArray()}) {
        QVERIFY(writeFileAtomically(name, text, reason, [] { return true; }));
        QCOMPARE(contentOf(name), text);
        QVERIFY(writeFileAtomically(name, text, reason));
        QCOMPARE(contentOf(name), text);
    }
    QCOMPARE(reason, QString());
    QCOMPARE(filesIn(folder), QStringList("f"));
}

void tst_AtomicFile::fileThatChangesMeanwhileStays()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("f");
    fill(name, "old");
    QString reason;
    QVERIFY(!writeFileAtomically(name, "new", reason, [] { return false; }));
    QCOMPARE(reason, QString("the file was changed meanwhile"));
    QCOMPARE(contentOf(name), QByteArray("old"));
    QCOMPARE(filesIn(folder), QStringList("f"));
}

void tst_AtomicFile::failureOfTheLastStepIsOne()
{
    const QTemporaryDir folder;
    const QString below = folder.filePath("below");
    QVERIFY(QDir().mkdir(below));
    QString reason;
    QVERIFY(!writeFileAtomically(below + "/f", "new", reason,
                                 [&below] { return QDir(below).removeRecursively(); }));
    QCOMPARE(reason, QString("No such file or directory"));
}

void tst_AtomicFile::whatIsNoFileIsLeft_data()
{
    QTest::addColumn<bool>("isFolder");
    QTest::newRow("folder") << true;
    QTest::newRow("pipe") << false;
}

void tst_AtomicFile::whatIsNoFileIsLeft()
{
    QFETCH(bool, isFolder);
    const QTemporaryDir folder;
    const QString name = folder.filePath("f");
    QVERIFY(isFolder ? QDir().mkdir(name) : ::mkfifo(QFile::encodeName(name), 0600) == 0);
    QString reason;
    QVERIFY(!writeFileAtomically(name, "new", reason));
    QCOMPARE(reason, QString("it is not a regular file"));
    QVERIFY(QFileInfo::exists(name) && !QFileInfo(name).isFile());
}

void tst_AtomicFile::missingFolderIsTheReason()
{
    QString reason;
    QVERIFY(!writeFileAtomically("/nowhere/f", "new", reason, [] { return true; }));
    QCOMPARE(reason, QString("No such file or directory"));
}

void tst_AtomicFile::leftoversAreToldByTheirNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isLeftover");
    const auto row = [](const char* name, bool isLeftover) {
        QTest::newRow(name) << name << isLeftover;
    };
    row("p.yaml.aBcDeF", true);
    row("p.yaml.zZzzzz", true);
    row("p.yaml.abcdef", false);
    row("p.yaml.ABCDEF", false);
    row("p.yaml.aBcDe", false);
    row("p.yaml.aBcDeFg", false);
    row("p.yaml.aBcDe1", false);
    row("p.yaml.aB.DeF", false);
    row("p.yaml", false);
    row("q.yaml.aBcDeF", false);
    row("xp.yaml.aBcDeF", false);
    row("p.yamlaBcDeF", false);
    row("p.yaml.bad", false);
}

void tst_AtomicFile::leftoversAreToldByTheirNames()
{
    QFETCH(QString, name);
    QFETCH(bool, isLeftover);
    const QTemporaryDir folder;
    fill(folder.filePath(name), "x");
    norvo::removeLeftovers(folder.filePath("p.yaml"));
    QCOMPARE(filesIn(folder), isLeftover ? QStringList() : QStringList(name));
}

void tst_AtomicFile::foldersAndLinksAreNoLeftovers()
{
    const QTemporaryDir folder;
    fill(folder.filePath("own"), "x");
    QVERIFY(QDir().mkdir(folder.filePath(".p.aBcDeF")));
    QVERIFY(QFile::link(folder.filePath("own"), folder.filePath(".p.aBcDeG")));
    fill(folder.filePath(".p.aBcDeH"), "x");
    norvo::removeLeftovers(folder.filePath(".p"));
    QCOMPARE(filesIn(folder), (QStringList{".p.aBcDeF", ".p.aBcDeG", "own"}));
}

NORVO_APPLESS_TEST(tst_AtomicFile)
#include "tst_AtomicFile.moc"
