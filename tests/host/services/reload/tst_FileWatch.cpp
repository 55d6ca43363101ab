// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/reload/FileWatch.h"

#include "TestMain.h"

#include <QDir>
#include <QSaveFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>

using norvo::FileWatch;

namespace {

constexpr int kPatience = 60000; // ms

void write(const QString& name, const QByteArray& content,
           QIODevice::OpenMode mode = QIODevice::Truncate)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly | mode) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qPrintable(name));
    }
}

QByteArray read(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A watched file, and what stood in it each time that it was said to have changed.
struct Folder
{
    Folder()
    {
        write(file, "one");
        watch.watch({file});
        QObject::connect(&watch, &FileWatch::changed, [this](const QStringList& files) {
            seen.append(files == QStringList(file) ? read(file) : QByteArray("other files"));
        });
    }

    QTemporaryDir folder;
    const QString file = folder.filePath("panel.yaml");
    FileWatch watch;
    QList<QByteArray> seen;
};

/// Long enough for what is not to come.
void waitInVain()
{
    QTest::qWait(4 * FileWatch::kSettleMs);
}

} // namespace

class tst_FileWatch : public QObject
{
    Q_OBJECT

private slots:
    void eachWayOfWritingIsSeen_data();
    void eachWayOfWritingIsSeen();
    void secondChangeIsSeenAfterEachWay_data() { eachWayOfWritingIsSeen_data(); }
    void secondChangeIsSeenAfterEachWay();
    void severalStepsAreOneChange();
    void sameContentIsNoChange();
    void fileThatIsGoneHasNotChanged();
    void emptyFileWaits();
    void fileThatComesLaterIsSeen();
    void otherFilesOfTheFolderAreNone();
    void targetOfALinkIsSeen();
    void linkThatLeadsElsewhereIsSeen();
    void folderThatIsMadeLaterIsSeen();
    void fileThatIsNotWatchedAnyMoreIsNot();
};

namespace {

using Way = void (*)(const QString& file, const QByteArray& content);

void inPlace(const QString& file, const QByteArray& content)
{
    write(file, content);
}

void byRename(const QString& file, const QByteArray& content)
{
    write(file + ".new", content);
    std::rename(qPrintable(file + ".new"), qPrintable(file));
}

void byBackup(const QString& file, const QByteArray& content)
{
    QFile::remove(file + "~");
    std::rename(qPrintable(file), qPrintable(file + "~"));
    write(file, content);
}

void bySaveFile(const QString& file, const QByteArray& content)
{
    QSaveFile saved(file);
    saved.open(QIODevice::WriteOnly);
    saved.write(content);
    saved.commit();
}

void truncatedFirst(const QString& file, const QByteArray& content)
{
    write(file, {});
    QTest::qWait(2 * FileWatch::kSettleMs); // Seen, and empty.
    write(file, content);
}

void removedFirst(const QString& file, const QByteArray& content)
{
    QFile::remove(file);
    QTest::qWait(2 * FileWatch::kSettleMs);
    write(file, content);
}

void inTwoSteps(const QString& file, const QByteArray& content)
{
    write(file, content.left(1));
    QTest::qWait(FileWatch::kSettleMs / 4);
    write(file, content.mid(1), QIODevice::Append);
}

} // namespace

Q_DECLARE_METATYPE(Way)

void tst_FileWatch::eachWayOfWritingIsSeen_data()
{
    QTest::addColumn<Way>("way");
    QTest::newRow("in place") << &inPlace;
    QTest::newRow("another file takes the name") << &byRename;
    QTest::newRow("the old one becomes a backup") << &byBackup;
    QTest::newRow("saved as a whole") << &bySaveFile;
    QTest::newRow("truncated, then written") << &truncatedFirst;
    QTest::newRow("removed, then made anew") << &removedFirst;
    QTest::newRow("in two steps") << &inTwoSteps;
}

void tst_FileWatch::eachWayOfWritingIsSeen()
{
    QFETCH(Way, way);
    Folder folder;
    way(folder.file, "another");
    QTRY_COMPARE_WITH_TIMEOUT(folder.seen, QList<QByteArray>{"another"}, kPatience);
    waitInVain();
    QCOMPARE(folder.seen.size(), 1);
}

void tst_FileWatch::secondChangeIsSeenAfterEachWay()
{
    QFETCH(Way, way);
    Folder folder;
    way(folder.file, "another");
    QTRY_COMPARE_WITH_TIMEOUT(folder.seen.size(), 1, kPatience);
    write(folder.file, "a third");
    QTRY_COMPARE_WITH_TIMEOUT(folder.seen, (QList<QByteArray>{"another", "a third"}), kPatience);
}

void tst_FileWatch::severalStepsAreOneChange()
{
    Folder folder;
    for (int i = 0; i < 10; ++i) {
        write(folder.file, "more", QIODevice::Append);
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE_WITH_TIMEOUT(folder.seen.size(), 1, kPatience);
    QCOMPARE(folder.seen.constFirst(), "one" + QByteArray("more").repeated(10));
}

void tst_FileWatch::sameContentIsNoChange()
{
    Folder folder;
    byRename(folder.file, "one");
    waitInVain();
    QVERIFY(folder.seen.isEmpty());
    write(folder.file, "two");
    QTRY_COMPARE_WITH_TIMEOUT(folder.seen.size(), 1, kPatience);
}

void tst_FileWatch::fileThatIsGoneHasNotChanged()
{
    Folder folder;
    QFile::remove(folder.file);
    waitInVain();
    QVERIFY(folder.seen.isEmpty());
}

void tst_FileWatch::emptyFileWaits()
{
    Folder folder;
    write(folder.file, {});
    waitInVain();
    QVERIFY(folder.seen.isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(folder.seen, QList<QByteArray>{""}, kPatience);
}

void tst_FileWatch::fileThatComesLaterIsSeen()
{
    Folder folder;
    const QString later = folder.folder.filePath("pumps.yaml");
    folder.watch.watch({folder.file, later});
    const QSignalSpy changed(&folder.watch, &FileWatch::changed);
    write(later, "pumps");
    QTRY_COMPARE_WITH_TIMEOUT(changed.size(), 1, kPatience);
    QCOMPARE(changed[0][0].toStringList(), QStringList(later));
}

void tst_FileWatch::otherFilesOfTheFolderAreNone()
{
    Folder folder;
    write(folder.folder.filePath("other"), "other");
    write(folder.folder.filePath("other"), "more", QIODevice::Append);
    waitInVain();
    QVERIFY(folder.seen.isEmpty());
}

void tst_FileWatch::targetOfALinkIsSeen()
{
    Folder folder;
    QDir(folder.folder.path()).mkdir("shared");
    const QString target = folder.folder.filePath("shared/real.yaml");
    const QString link = folder.folder.filePath("link.yaml");
    write(target, "one");
    QFile::link("shared/real.yaml", link);
    folder.watch.watch({link});
    const QSignalSpy changed(&folder.watch, &FileWatch::changed);
    write(target, "two");
    QTRY_COMPARE_WITH_TIMEOUT(changed.size(), 1, kPatience);
    byRename(target, "three");
    QTRY_COMPARE_WITH_TIMEOUT(changed.size(), 2, kPatience);
    QCOMPARE(changed[1][0].toStringList(), QStringList(link));
}

void tst_FileWatch::linkThatLeadsElsewhereIsSeen()
{
    Folder folder;
    const QString link = folder.folder.filePath("link.yaml");
    const QString other = folder.folder.filePath("other.yaml");
    write(other, "other");
    QFile::link(folder.file, link);
    folder.watch.watch({link});
    const QSignalSpy changed(&folder.watch, &FileWatch::changed);
    QFile::link(other, link + ".new");
    std::rename(qPrintable(link + ".new"), qPrintable(link));
    QTRY_COMPARE_WITH_TIMEOUT(changed.size(), 1, kPatience);
    write(other, "and on");
    QTRY_COMPARE_WITH_TIMEOUT(changed.size(), 2, kPatience);
}

void tst_FileWatch::folderThatIsMadeLaterIsSeen()
{
    Folder folder;
    const QString deep = folder.folder.filePath("a/b/pumps.yaml");
    folder.watch.watch({deep});
    const QSignalSpy changed(&folder.watch, &FileWatch::changed);
    QVERIFY(QDir(folder.folder.path()).mkpath("a/b"));
    write(deep, "pumps");
    QTRY_COMPARE_WITH_TIMEOUT(changed.size(), 1, kPatience);
}

void tst_FileWatch::fileThatIsNotWatchedAnyMoreIsNot()
{
    Folder folder;
    folder.watch.watch({});
    write(folder.file, "two");
    waitInVain();
    QVERIFY(folder.seen.isEmpty());
}

NORVO_TEST(tst_FileWatch)
#include "tst_FileWatch.moc"
