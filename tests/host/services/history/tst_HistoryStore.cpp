// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryStore.h"

#include "TestMain.h"
#include "host/services/history/HistoryQuery.h"

#include <QTemporaryDir>

using namespace norvo;

namespace {

constexpr qint64 kStart = 1'700'000'000'000; // A time of day, in milliseconds.
constexpr qint64 kMinute = 60'000;

struct Stored
{
    explicit Stored(const HistoryStore::Limits& limits = {1000 * 24 * kMinute * 60, 500'000'000})
        : path(folder.filePath("h.sqlite")), m_limits(limits)
    {
        reopen();
    }

    HistoryStore::Opening reopen(qint64 wall = kStart)
    {
        store.reset();
        store = std::make_unique<HistoryStore>(path, QStringList{"a.x", "b.y"}, m_limits);
        return store->open(wall);
    }

    /// Numbers of the first signal, a second apart.
    bool fill(qint64 from, int count, int signal = 0) const
    {
        QVector<HistoryRow> rows;
        for (int i = 0; i < count; ++i) {
            rows.append({signal, {from + i * 1000, HistoryValue::of(double(i))}});
        }
        return store->append(rows);
    }

    QStringList read(const HistoryRange& range) const
    {
        QStringList texts;
        HistoryQuery query;
        if (!query.open(path)) {
            return {query.error()};
        }
        for (const HistoryPoint& point : query.read(range)) {
            const HistoryValue& value = point.value;
            const QString text = value.kind == HistoryValue::Kind::Gap    ? "-"
                                 : value.kind == HistoryValue::Kind::Text ? value.text
                                 : value.kind == HistoryValue::Kind::YesNo
                                     ? value.number > 0 ? "yes" : "no"
                                     : QString::number(value.number, 'g', 17);
            texts.append(QString("%1@%2").arg(text, QString::number(point.time - kStart)));
        }
        return texts;
    }
    QStringList all(const QString& device = "a", const QString& signal = "x") const
    {
        return read({device, signal, 0, 2 * kStart});
    }

    QTemporaryDir folder;
    const QString path;
    const HistoryStore::Limits m_limits;
    std::unique_ptr<HistoryStore> store;
};

} // namespace

class tst_HistoryStore : public QObject
{
    Q_OBJECT

private slots:
    void valuesComeBackAsTheyWere();
    void rangeHoldsBothEnds();
    void rowsThatAreSortedInAreReadLikeOthers();
    void rowsOfOneMillisecondKeepTheirOrder();
    void lastRunEndsWithAGap();
    void moreRowsThanAskedForAreThinnedToTheirExtremes();
    void gapIsNeverThinnedOut();
    void oldestRowIsReadAlone();
    void rowsAreReadOneByOneInOrder();
    void oldRowsGo();
    void fileStaysBelowItsSize();
    void fileShrinksWhenMuchIsRemoved();
    void secondWriterIsRefused();
    void foreignFileIsUnusable_data();
    void foreignFileIsUnusable();
    void fileFarAheadOfTheClockIsUnusable();
    void damagedFileIsNoticed();
};

void tst_HistoryStore::valuesComeBackAsTheyWere()
{
    Stored stored;
    QVERIFY(stored.store->append({{0, {kStart, HistoryValue::of(0.1)}},
                                  {0, {kStart + 1, HistoryValue::of(true)}},
                                  {0, {kStart + 2, HistoryValue::of(QString("\u00e4'\n"))}},
                                  {0, {kStart + 3, HistoryValue::of(1.0)}},
                                  {0, {kStart + 4, HistoryValue::gap()}},
                                  {1, {kStart + 5, HistoryValue::of(false)}}}));
    QCOMPARE(stored.all(),
             QStringList({"0.10000000000000001@0", "yes@1", "\u00e4'\n@2", "1@3", "-@4"}));
    QCOMPARE(stored.all("b", "y"), QStringList("no@5"));
    QCOMPARE(stored.all("b", "x"), QStringList());
}

void tst_HistoryStore::rangeHoldsBothEnds()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 10));
    QCOMPARE(stored.read({"a", "x", kStart + 3000, kStart + 4000}),
             QStringList({"3@3000", "4@4000"}));
}

void tst_HistoryStore::rowsThatAreSortedInAreReadLikeOthers()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 3));
    QVERIFY(stored.store->tidy(kStart + 2 * kMinute));
    QVERIFY(stored.fill(kStart + 3000, 2));
    QCOMPARE(stored.all(), QStringList({"0@0", "1@1000", "2@2000", "0@3000", "1@4000"}));
    HistoryDatabase database;
    QVERIFY(database.open(stored.path, HistoryDatabase::Mode::ReadOnly));
    QCOMPARE(database.value("SELECT count(*) FROM recent").toInt(), 2);
    QCOMPARE(database.value("SELECT count(*) FROM samples").toInt(), 3);
    QCOMPARE(database.value("SELECT count(*) FROM history").toInt(), 5);
}

void tst_HistoryStore::rowsOfOneMillisecondKeepTheirOrder()
{
    Stored stored;
    for (const double number : {3, 1, 2}) {
        QVERIFY(stored.store->append({{0, {kStart, HistoryValue::of(number)}}}));
    }
    QVERIFY(stored.store->append({{0, {kStart - 500, HistoryValue::of(4.0)}}}));
    QCOMPARE(stored.all(), QStringList({"3@0", "1@0", "2@0", "4@0"}));
    QCOMPARE(stored.reopen(), HistoryStore::Opening::Open);
    QCOMPARE(stored.all(), QStringList({"3@0", "1@0", "2@0", "4@0", "-@1"}));
}

void tst_HistoryStore::lastRunEndsWithAGap()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 2));
    QCOMPARE(stored.reopen(), HistoryStore::Opening::Open);
    QCOMPARE(stored.reopen(), HistoryStore::Opening::Open);
    QCOMPARE(stored.store->newest(), kStart + 1001);
    QVERIFY(stored.fill(kStart + 5000, 1));
    QCOMPARE(stored.all(), QStringList({"0@0", "1@1000", "-@1001", "0@5000"}));
}

void tst_HistoryStore::moreRowsThanAskedForAreThinnedToTheirExtremes()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 1000));
    QVERIFY(stored.store->tidy(kStart + kMinute));
    QVERIFY(stored.store->append({{0, {kStart + 500'001, HistoryValue::of(-77.0)}},
                                  {0, {kStart + 500'002, HistoryValue::of(7777.0)}}}));
    const QStringList texts = stored.read({"a", "x", kStart, kStart + 999'999, 100});
    QVERIFY2(texts.size() <= 102, qPrintable(QString::number(texts.size())));
    QVERIFY(texts.size() > 50);
    QVERIFY(texts.join(' ').contains("7777@"));
    QVERIFY(texts.join(' ').contains("-77@"));
}

void tst_HistoryStore::gapIsNeverThinnedOut()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 1000));
    QVERIFY(stored.store->append({{0, {kStart + 1'000'001, HistoryValue::gap()}},
                                  {0, {kStart + 1'000'002, HistoryValue::of(1.0)}}}));
    const QStringList texts = stored.read({"a", "x", kStart, kStart + 1'999'999, 100});
    QVERIFY(texts.size() < 110);
    QCOMPARE(texts.filter("-@"), QStringList("-@1000001"));
}

void tst_HistoryStore::oldestRowIsReadAlone()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 10));
    QCOMPARE(stored.read({"a", "x", 0, 2 * kStart, 0, true}), QStringList("0@0"));
    QVERIFY(stored.store->tidy(kStart + kMinute));
    QCOMPARE(stored.read({"a", "x", 0, 2 * kStart, 0, true}), QStringList("0@0"));
    QCOMPARE(stored.read({"a", "x", kStart + 1500, 2 * kStart, 0, true}), QStringList("2@2000"));
}

void tst_HistoryStore::rowsAreReadOneByOneInOrder()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 12'000));
    HistoryQuery query;
    QVERIFY(query.open(stored.path));
    int count = 0;
    qint64 last = 0;
    QVERIFY(query.forEach({"a", "x", 0, 2 * kStart}, [&](const HistoryPoint& point) {
        ++count;
        const bool isLater = point.time > last;
        last = point.time;
        return isLater;
    }));
    QCOMPARE(count, 12'000);
}

void tst_HistoryStore::oldRowsGo()
{
    Stored stored({10 * kMinute, 500'000'000});
    QVERIFY(stored.fill(kStart, 3600));
    const qint64 end = kStart + 3600'000;
    for (int i = 0; i < 300; ++i) {
        QVERIFY(stored.store->tidy(end + kMinute));
    }
    QStringList texts = stored.all();
    QCOMPARE(texts.size(), 540);
    QCOMPARE(texts.constFirst(), QString("3060@3060000"));
}

void tst_HistoryStore::fileStaysBelowItsSize()
{
    Stored stored({1000 * 24 * 60 * kMinute, 1'000'000});
    qint64 time = kStart;
    for (int i = 0; i < 100; ++i) {
        QVERIFY(stored.fill(time, 2000));
        time += 2'000'000;
        for (int step = 0; step < 20; ++step) {
            QVERIFY(stored.store->tidy(time + step * kMinute));
        }
        time += 20 * kMinute;
    }
    stored.store->close();
    const qint64 size = QFileInfo(stored.path).size();
    QVERIFY2(size < 1'100'000, qPrintable(QString::number(size)));
    const QStringList texts = stored.all();
    QVERIFY(texts.size() > 10'000);
    QVERIFY(texts.constLast().startsWith("1999@"));
}

void tst_HistoryStore::fileShrinksWhenMuchIsRemoved()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 400'000));
    QVERIFY(stored.store->tidy(kStart + 400'000'000));
    stored.store->close();
    const qint64 before = QFileInfo(stored.path).size();
    HistoryStore shorter(stored.path, {"a.x"}, {kMinute, 500'000'000});
    stored.store.reset();
    QCOMPARE(shorter.open(kStart + 400'000'000), HistoryStore::Opening::Open);
    for (int i = 0; i < 2000; ++i) {
        QVERIFY(shorter.tidy(kStart + 400'000'000));
    }
    shorter.close();
    const qint64 after = QFileInfo(stored.path).size();
    // The rest is free for what comes next.
    QVERIFY2(after * 3 < before * 2 || after < 9'000'000,
             qPrintable(QString("%1 -> %2").arg(before).arg(after)));
}

void tst_HistoryStore::secondWriterIsRefused()
{
    Stored stored;
    HistoryStore second(stored.path, {"a.x"}, {kMinute, 1'000'000});
    QCOMPARE(second.open(kStart), HistoryStore::Opening::Busy);
    QCOMPARE(second.error(), QString("another program writes it"));
}

void tst_HistoryStore::foreignFileIsUnusable_data()
{
    QTest::addColumn<bool>("isDatabase");
    QTest::newRow("no database") << false;
    QTest::newRow("another's database") << true;
}

void tst_HistoryStore::foreignFileIsUnusable()
{
    QFETCH(bool, isDatabase);
    Stored stored;
    stored.store.reset();
    QVERIFY(QFile::remove(stored.path));
    if (isDatabase) {
        HistoryDatabase other;
        QVERIFY(other.open(stored.path, HistoryDatabase::Mode::ReadWrite));
        QVERIFY(other.run("CREATE TABLE mine (x)"));
    } else {
        QFile file(stored.path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(5000, 'x'));
    }
    const qint64 size = QFileInfo(stored.path).size();
    HistoryQuery query;
    QVERIFY(!query.open(stored.path));
    QCOMPARE(query.error(), QString("this is not a history of a panel"));
    QCOMPARE(stored.reopen(), HistoryStore::Opening::Unusable);
    QVERIFY(!stored.store->error().isEmpty());
    QVERIFY(stored.store->setAside());
    QCOMPARE(QFileInfo(stored.path + ".bad").size(), size);
    QCOMPARE(stored.store->open(kStart), HistoryStore::Opening::Open);
}

void tst_HistoryStore::fileFarAheadOfTheClockIsUnusable()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 1));
    QCOMPARE(stored.reopen(kStart - HistoryStore::kMaxAhead + 1000), HistoryStore::Opening::Open);
    QCOMPARE(stored.reopen(kStart - HistoryStore::kMaxAhead - 1000),
             HistoryStore::Opening::Unusable);
}

void tst_HistoryStore::damagedFileIsNoticed()
{
    Stored stored;
    QVERIFY(stored.fill(kStart, 20'000));
    QVERIFY(stored.store->tidy(kStart + kMinute));
    stored.store->close();
    QFile file(stored.path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    for (qint64 at = 4096; at < file.size(); at += 4096) {
        file.seek(at);
        file.write(QByteArray(2000, 'x'));
    }
    file.close();
    QCOMPARE(stored.reopen(), HistoryStore::Opening::Unusable);
}

NORVO_GUILESS_TEST(tst_HistoryStore)

#include "tst_HistoryStore.moc"
