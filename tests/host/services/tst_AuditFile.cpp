// SPDX-License-Identifier: GPL-3.0-or-later

#include "FullDisk.h"
#include "TestMain.h"
#include "host/services/audit/AuditFile.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <limits>

#include <sys/wait.h>
#include <unistd.h>

using norvo::AuditFile;

namespace {

/// A folder for an audit, and what the file has told.
struct Audited
{
    explicit Audited(const AuditFile::Limits& limits = {})
        : file(folder.filePath("audit.jsonl"), limits)
    {
        QObject::connect(&file, &AuditFile::problem,
                         [this](const QString& line) { problems.append(line); });
    }

    QByteArray content(const QString& name = "audit.jsonl") const
    {
        QFile read(folder.filePath(name));
        return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
    }
    QList<QJsonObject> lines(const QString& name = "audit.jsonl") const
    {
        QList<QJsonObject> objects;
        for (const QByteArray& line : content(name).split('\n')) {
            if (!line.trimmed().isEmpty()) {
                objects.append(QJsonDocument::fromJson(line).object());
            }
        }
        return objects;
    }

    QTemporaryDir folder;
    AuditFile file;
    QStringList problems;
};

} // namespace

class tst_AuditFile : public QObject
{
    Q_OBJECT

private slots:
    void lineIsJsonWithTheTimeFirst();
    void valuesKeepTheirKind();
    void notANumberIsText();
    void halfALineAtTheEndGoes();
    void halfALineThatWentTakesNoRoom();
    void fileIsRenamedBeforeItGetsTooLarge();
    void noOlderFileIsKeptWhereNoneIsWanted();
    void onlyTheOwnerMayRead();
    void secondWriterIsTold();
    void fullDiskIsToldOnceAndCounted_data();
    void fullDiskIsToldOnceAndCounted();
    void folderThatIsMissingIsToldAndTriedAgain();
    void noLineLiesOnTwoPages();
    void killLosesNoLineAndLeavesNoHalfOne();
};

void tst_AuditFile::lineIsJsonWithTheTimeFirst()
{
    Audited audited;
    audited.file.write({{"event", "value"}, {"device", "a \"b\""}, {"value", 1.5}});
    const QByteArray text = audited.content();
    QVERIFY(text.endsWith(R"(,"event":"value","device":"a \"b\"","value":1.5})"
                          "\n"));
    QVERIFY(QRegularExpression(R"(^\{"time":"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z")")
                .match(text)
                .hasMatch());
    QCOMPARE(audited.problems, QStringList());
}

void tst_AuditFile::valuesKeepTheirKind()
{
    Audited audited;
    audited.file.write({{"a", true}, {"b", 7}, {"c", 0.1}, {"d", "ä\n"}, {"e", QVariant()}});
    QJsonObject line = audited.lines().value(0);
    line.remove("time");
    QCOMPARE(line,
             (QJsonObject{{"a", true}, {"b", 7}, {"c", 0.1}, {"d", "ä\n"}, {"e", QJsonValue()}}));
}

void tst_AuditFile::notANumberIsText()
{
    Audited audited;
    audited.file.write({{"value", std::numeric_limits<double>::quiet_NaN()}});
    QCOMPARE(audited.lines().value(0)["value"], QJsonValue("nan"));
}

void tst_AuditFile::halfALineAtTheEndGoes()
{
    Audited audited;
    QFile before(audited.folder.filePath("audit.jsonl"));
    QVERIFY(before.open(QIODevice::WriteOnly));
    before.write("{\"event\":\"start\"}\n{\"event\":\"" + QByteArray(10000, 'x'));
    before.close();
    audited.file.write({{"event", "stop"}});
    QCOMPARE(audited.lines().size(), 2);
    QCOMPARE(audited.lines()[0]["event"], QJsonValue("start"));
    QCOMPARE(audited.lines()[1]["event"], QJsonValue("stop"));
}

/// With it the next line would lie on two pages and be moved by spaces.
void tst_AuditFile::halfALineThatWentTakesNoRoom()
{
    constexpr int kPage = 4096;
    const QByteArray first("{\"event\":\"start\"}\n");
    Audited audited;
    QFile before(audited.folder.filePath("audit.jsonl"));
    QVERIFY(before.open(QIODevice::WriteOnly));
    before.write(first + QByteArray(kPage - 10 - first.size(), 'x'));
    before.close();
    audited.file.write({{"event", "stop"}});
    QVERIFY2(audited.content().startsWith(first + '{'), audited.content().constData());
}

void tst_AuditFile::fileIsRenamedBeforeItGetsTooLarge()
{
    Audited audited({1000, 2});
    for (int i = 0; i < 100; ++i) {
        audited.file.write({{"value", i}});
    }
    QCOMPARE(QDir(audited.folder.path()).entryList(QDir::Files),
             (QStringList{"audit.jsonl", "audit.jsonl.1", "audit.jsonl.2"}));
    int expected = 99;
    for (const char* name : {"audit.jsonl", "audit.jsonl.1", "audit.jsonl.2"}) {
        QVERIFY(audited.content(name).size() <= 1000);
        const auto lines = audited.lines(name);
        QVERIFY(!lines.isEmpty());
        for (auto line = lines.crbegin(); line != lines.crend(); ++line) {
            QCOMPARE((*line)["value"].toInt(), expected--);
        }
    }
}

void tst_AuditFile::noOlderFileIsKeptWhereNoneIsWanted()
{
    Audited audited({200, 0});
    for (int i = 0; i < 20; ++i) {
        audited.file.write({{"value", i}});
    }
    QCOMPARE(QDir(audited.folder.path()).entryList(QDir::Files), QStringList("audit.jsonl"));
    QCOMPARE(audited.lines().last()["value"].toInt(), 19);
}

void tst_AuditFile::onlyTheOwnerMayRead()
{
    Audited audited;
    audited.file.write({});
    QCOMPARE(QFile::permissions(audited.folder.filePath("audit.jsonl")) &
                 (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
             QFile::Permissions());
}

void tst_AuditFile::secondWriterIsTold()
{
    Audited audited;
    audited.file.write({{"event", "start"}});
    AuditFile second(audited.folder.filePath("audit.jsonl"), {});
    QStringList problems;
    connect(&second, &AuditFile::problem, [&](const QString& line) { problems.append(line); });
    second.write({{"event", "start"}});
    second.write({{"event", "stop"}});
    QCOMPARE(problems.size(), 1);
    QVERIFY(problems[0].contains("another program writes this audit"));
    QCOMPARE(audited.lines().size(), 1);
}

void tst_AuditFile::fullDiskIsToldOnceAndCounted_data()
{
    QTest::addColumn<int>("room");
    for (const int room : {0, 1, 5}) {
        QTest::addRow("%d bytes are left", room) << room;
    }
}

void tst_AuditFile::fullDiskIsToldOnceAndCounted()
{
    QFETCH(int, room);
    Audited audited;
    audited.file.write({{"event", "start"}});
    const QByteArray before = audited.content();
    {
        const FullDisk full(before.size() + room);
        audited.file.write({{"event", "value"}});
        audited.file.write({{"event", "value"}});
    }
    QCOMPARE(audited.problems.size(), 1);
    QVERIFY2(audited.problems[0].contains("the audit cannot be written"),
             qPrintable(audited.problems[0]));
    QCOMPARE(audited.content(), before);
    audited.file.write({{"event", "stop"}});
    const auto lines = audited.lines();
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines[1]["event"], QJsonValue("lost"));
    QCOMPARE(lines[1]["value"], QJsonValue(2));
    QCOMPARE(lines[2]["event"], QJsonValue("stop"));
}

void tst_AuditFile::folderThatIsMissingIsToldAndTriedAgain()
{
    QTemporaryDir folder;
    AuditFile file(folder.filePath("below/audit.jsonl"), {});
    QStringList problems;
    connect(&file, &AuditFile::problem, [&](const QString& line) { problems.append(line); });
    file.write({{"event", "start"}});
    QCOMPARE(problems.size(), 1);
    QDir(folder.path()).mkdir("below");
    file.write({{"event", "stop"}});
    QFile read(folder.filePath("below/audit.jsonl"));
    QVERIFY(read.open(QIODevice::ReadOnly));
    QCOMPARE(read.readAll().count('\n'), 2);
    QCOMPARE(problems.size(), 1);
}

void tst_AuditFile::noLineLiesOnTwoPages()
{
    constexpr int kPage = 4096;
    Audited audited;
    for (int i = 0; i < 300; ++i) {
        audited.file.write({{"value", i}, {"text", QString(i % 90, 'x')}});
    }
    audited.file.write({{"value", 300}, {"text", QString(3000, 'x')}});
    int begin = 0;
    int next = 0;
    for (const QByteArray& line : audited.content().split('\n')) {
        const int first = begin + line.indexOf('{');
        begin += line.size() + 1;
        if (line.contains('{')) {
            QCOMPARE((begin - 1) / kPage, first / kPage);
            QCOMPARE(QJsonDocument::fromJson(line).object()["value"].toInt(-1), next++);
        }
    }
    QCOMPARE(next, 301);
}

void tst_AuditFile::killLosesNoLineAndLeavesNoHalfOne()
{
    constexpr int kKills = 200;
    for (int round = 0; round < kKills; ++round) {
        constexpr AuditFile::Limits limits{20000, 20};
        Audited audited(limits);
        int ends[2];
        QCOMPARE(::pipe(ends), 0);
        const pid_t child = ::fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            AuditFile file(audited.folder.filePath("audit.jsonl"), limits);
            for (int i = 0;; ++i) {
                file.write({{"value", i}});
                if (::write(ends[1], &i, sizeof i) != sizeof i) {
                    ::_exit(1);
                }
            }
        }
        ::close(ends[1]);
        ::usleep(useconds_t(200 + round * 37 % 5000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        int last = -1;
        for (int i = 0; ::read(ends[0], &i, sizeof i) == sizeof i;) {
            last = i;
        }
        ::close(ends[0]);
        int next = -1;
        for (int number = limits.kept; number >= 0; --number) {
            const QString name =
                number > 0 ? "audit.jsonl." + QString::number(number) : QString("audit.jsonl");
            const QByteArray text = audited.content(name);
            QVERIFY(text.mid(text.lastIndexOf('\n') + 1).trimmed().isEmpty());
            for (const QJsonObject& line : audited.lines(name)) {
                // The oldest that is kept is the first.
                next = next < 0 ? line["value"].toInt(-1) : next;
                QCOMPARE(line["value"].toInt(-1), next++);
            }
        }
        QVERIFY2(qMax(next, 0) > last,
                 qPrintable(QString("%1 written, %2 read").arg(last + 1).arg(next)));
    }
}

NORVO_GUILESS_TEST(tst_AuditFile)
#include "tst_AuditFile.moc"
