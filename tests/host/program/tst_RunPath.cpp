// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include <QDirIterator>
#include <QProcess>
#include <QtTest>

/// Where what was built looks for its libraries. An entry that is empty or relative stands for the
/// folder one happens to be in, and a library planted there would be loaded.
class tst_RunPath : public QObject
{
    Q_OBJECT

private slots:
    void noEntryDependsOnTheCurrentFolder_data();
    void noEntryDependsOnTheCurrentFolder();
};

namespace {

bool isProgramOrLibrary(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(4) == QByteArray("\177ELF");
}

/// The entries of all run paths of the file; none where it has no run path.
QStringList runPath(const QString& file)
{
    QProcess readelf;
    readelf.start("readelf", {"--wide", "--dynamic", file});
    if (!readelf.waitForFinished() || readelf.exitCode() != 0) {
        qFatal("readelf fails on %s", qPrintable(file));
    }
    const QString text = QString::fromUtf8(readelf.readAllStandardOutput());
    static const QRegularExpression pattern(R"(\((?:RUNPATH|RPATH)\).*\[(.*)\])");
    QStringList entries;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        entries += matches.next().captured(1).split(':');
    }
    return entries;
}

} // namespace

void tst_RunPath::noEntryDependsOnTheCurrentFolder_data()
{
    QTest::addColumn<QString>("file");
    int found = 0;
    for (const char* folder : {"bin", "lib", "plugins", "tests"}) {
        QDirIterator files(QString(NORVO_BUILD_DIR "/") + folder, QDir::Files | QDir::NoSymLinks,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            if (!file.contains("/CMakeFiles/") && isProgramOrLibrary(file)) {
                QTest::newRow(qPrintable(QDir(NORVO_BUILD_DIR).relativeFilePath(file))) << file;
                ++found;
            }
        }
    }
    QVERIFY(found > 5);
}

void tst_RunPath::noEntryDependsOnTheCurrentFolder()
{
    QFETCH(QString, file);
    for (const QString& entry : runPath(file)) {
        QVERIFY2(entry.startsWith('/') || entry == "$ORIGIN" || entry.startsWith("$ORIGIN/"),
                 qPrintable('"' + entry + '"'));
    }
}

NORVO_GUILESS_TEST(tst_RunPath)
#include "tst_RunPath.moc"
