// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryWriter.h"

#include "TestMain.h"

#include <QTemporaryDir>

#include <csignal>
#include <future>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace norvo;

namespace {

constexpr int kPatience = 60000; // ms, under sanitizers, too.

constexpr HistoryStore::Limits kLimits{1000LL * 24 * 3600 * 1000, 500'000'000};

struct Written
{
    explicit Written(const QString& name = "h.sqlite") : path(folder.filePath(name)) {}

    HistoryWriter& start()
    {
        writer = std::make_unique<HistoryWriter>(path, QStringList{"a.x"}, kLimits);
        QObject::connect(writer.get(), &HistoryWriter::problem,
                         [this](const QString& line) { problems.append(line); });
        return *writer;
    }
    void add(double number) const
    {
        writer->add({0, {ClockReading::bootNow(), HistoryValue::of(number)}});
    }
    /// Once all that was added is written, as the thread sees the file.
    QVector<HistoryPoint> read() const
    {
        std::promise<QVector<HistoryPoint>> promise;
        writer->read([&promise](HistoryQuery* query, qint64) {
            promise.set_value(query ? query->read({"a", "x", 0, 1LL << 60})
                                    : QVector<HistoryPoint>());
        });
        return promise.get_future().get();
    }
    QVector<HistoryPoint> readLater() const
    {
        HistoryQuery query;
        return query.open(path) ? query.read({"a", "x", 0, 1LL << 60}) : QVector<HistoryPoint>();
    }

    QTemporaryDir folder;
    const QString path;
    std::unique_ptr<HistoryWriter> writer;
    QStringList problems;
};

} // namespace

class tst_HistoryWriter : public QObject
{
    Q_OBJECT

private slots:
    void valuesHaveTheTimeOfTheWallClock();
    void endWritesAllAndAGap();
    void secondWriterRecordsNothingAndTakesOver();
    void fullDiskIsToldOnceAndWritingGoesOn();
    void missingFolderIsToldAndTriedAgain();
    void foreignFileIsSetAside();
    void killLosesAtMostASecondAndNeverTheFile();
};

void tst_HistoryWriter::valuesHaveTheTimeOfTheWallClock()
{
    Written written;
    written.start();
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    written.add(1.5);
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    const auto points = written.read();
    QCOMPARE(points.size(), 1);
    QCOMPARE(points[0].value.number, 1.5);
    QVERIFY(points[0].time >= before - 2 && points[0].time <= after + 2);
}

void tst_HistoryWriter::endWritesAllAndAGap()
{
    Written written;
    written.start();
    for (int i = 0; i < 1000; ++i) {
        written.add(i);
    }
    written.writer.reset();
    const auto points = written.readLater();
    QCOMPARE(points.size(), 1001);
    QCOMPARE(points[999].value.number, 999.0);
    QVERIFY(points[1000].value.kind == HistoryValue::Kind::Gap);
    QVERIFY(!QFile::exists(written.path + ".lock"));
}

void tst_HistoryWriter::secondWriterRecordsNothingAndTakesOver()
{
    Written written;
    written.start();
    written.add(1);
    QCOMPARE(written.read().size(), 1);
    auto first = std::move(written.writer);
    written.start();
    written.add(2);
    QCOMPARE(written.read().size(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(written.problems.size(), 1, kPatience);
    QVERIFY2(written.problems[0].contains("another program writes it"),
             qPrintable(written.problems[0]));
    first.reset();
    QTRY_VERIFY_WITH_TIMEOUT(written.problems.size() > 1,
                             kPatience); // It says that it writes from now on.
    written.add(3);
    const auto points = written.read();
    QCOMPARE(points.size(), 3); // The gap of the first one's end between them.
    QCOMPARE(points.last().value.number, 3.0);
}

void tst_HistoryWriter::fullDiskIsToldOnceAndWritingGoesOn()
{
    Written written;
    written.start();
    written.add(1);
    QCOMPARE(written.read().size(), 1);
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit full = before;
    full.rlim_cur = 4096; // No file can grow beyond.
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &full), 0);
    for (int i = 0; i < 5; ++i) {
        written.add(10 + i);
        written.read();
    }
    for (int i = 0; i < HistoryWriter::kMaxQueued + 100; ++i) {
        written.add(20);
    }
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
    QTRY_COMPARE_WITH_TIMEOUT(written.problems.size(), 2, kPatience);
    QVERIFY2(written.problems[0].contains("cannot be written"), qPrintable(written.problems[0]));
    QVERIFY2(written.problems[1].contains("values are recorded again; "),
             qPrintable(written.problems[1]));
    const int lost =
        QRegularExpression("; (\\d+) were lost").match(written.problems[1]).captured(1).toInt();
    QVERIFY(lost >= 100);
    written.add(2);
    const auto points = written.read();
    QCOMPARE(points.last().value.number, 2.0);
    const auto isGap = [](const HistoryPoint& point) {
        return point.value.kind == HistoryValue::Kind::Gap;
    };
    QCOMPARE(std::count_if(points.cbegin(), points.cend(), isGap), 1);
    QCOMPARE(points.size(), 1 + 5 + HistoryWriter::kMaxQueued + 100 - lost + 1 + 1);
}

void tst_HistoryWriter::missingFolderIsToldAndTriedAgain()
{
    Written written("later/h.sqlite");
    written.start();
    written.add(1);
    QCOMPARE(written.read().size(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(written.problems.size(), 1, kPatience);
    QVERIFY(QDir(written.folder.path()).mkdir("later"));
    QTRY_VERIFY_WITH_TIMEOUT(!written.read().isEmpty(), kPatience);
}

void tst_HistoryWriter::foreignFileIsSetAside()
{
    Written written;
    QFile file(written.path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    file.close();
    written.start();
    written.add(1);
    QCOMPARE(written.read().size(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(written.problems.size(), 1, kPatience);
    QVERIFY2(written.problems[0].endsWith("h.sqlite.bad, and a new history begins"),
             qPrintable(written.problems[0]));
    QVERIFY(QFile::exists(written.path + ".bad"));
}

/// NORVO_HISTORY_KILLS says how many are to be killed.
void tst_HistoryWriter::killLosesAtMostASecondAndNeverTheFile()
{
    const int kills = qEnvironmentVariableIsSet("NORVO_HISTORY_KILLS")
                          ? qEnvironmentVariableIntValue("NORVO_HISTORY_KILLS")
                          : 3;
    Written written;
    qint64 expected = 0;
    qint64 worst = 0;
    for (int i = 0; i < kills; ++i) {
        int pipe[2] = {};
        QCOMPARE(::pipe(pipe), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            HistoryWriter writer(written.path, {"a.x"}, kLimits);
            for (qint64 number = 0;; ++number) {
                const qint64 now = ClockReading::bootNow();
                writer.add({0, {now, HistoryValue::of(double(now))}});
                if (::write(pipe[1], &now, sizeof(now)) != ssize_t(sizeof(now))) {
                    ::_exit(1);
                }
                ::usleep(200);
            }
        }
        ::close(pipe[1]);
        qint64 last = 0;
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < 1200 + (i * 37) % 500 &&
               ::read(pipe[0], &last, sizeof(last)) == ssize_t(sizeof(last))) {
        }
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        while (::read(pipe[0], &last, sizeof(last)) == ssize_t(sizeof(last))) {
        }
        ::close(pipe[0]);
        HistoryDatabase database;
        QVERIFY(database.open(written.path, HistoryDatabase::Mode::ReadWrite));
        QCOMPARE(database.value("PRAGMA integrity_check").toString(), QString("ok"));
        const qint64 count =
            database.value("SELECT count(*) FROM history WHERE value NOT NULL").toLongLong();
        const auto newest = qint64(database.value("SELECT max(value) FROM history").toDouble());
        QVERIFY2(count > expected, "a run has recorded nothing");
        expected = count;
        worst = std::max(worst, last - newest);
    }
    QVERIFY2(!QFile::exists(written.path + ".bad"), "the file was set aside");
    qInfo("%d kills: at most %lld ms lost", kills, worst);
    // The bar is a second; a machine that stands still meanwhile gets more.
    QVERIFY2(worst < 10'000, qPrintable(QString::number(worst)));
}

NORVO_GUILESS_TEST(tst_HistoryWriter)

#include "tst_HistoryWriter.moc"
