// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryStore.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace norvo {

namespace {

constexpr qint64 kSortInterval = 60'000; // Milliseconds.
constexpr qint64 kTrimInterval = 10'000;
constexpr int kMaxFreedPages = 2000; // By one step.
constexpr int kSlices = 100;         // Of the time that the file holds; one is removed at a step.

QVariant stored(const HistoryValue& value)
{
    switch (value.kind) {
    case HistoryValue::Kind::Number:
        return value.number;
    case HistoryValue::Kind::YesNo:
        return qlonglong(value.number);
    case HistoryValue::Kind::Text:
        return value.text;
    default:
        return QVariant(QVariant::Double);
    }
}

} // namespace

HistoryStore::HistoryStore(const QString& path, const QStringList& names, const Limits& limits)
    : m_path(path), m_names(names), m_limits(limits)
{}

void HistoryStore::close()
{
    m_insert.reset();
    m_database.close();
    m_last.clear();
    m_ids.clear();
}

HistoryStore::Opening HistoryStore::open(qint64 wall)
{
    m_error.clear();
    if (!m_lock) {
        auto lock = std::make_unique<FileLock>(m_path + ".lock");
        if (lock->lock() == FileLock::Result::Busy) {
            m_error = "another program writes it";
            return Opening::Busy;
        }
        m_lock = std::move(lock);
    }
    const QFileInfo info(m_path);
    if (info.exists() && !info.isFile()) {
        m_error = "this is not a file";
        return Opening::Later;
    }
    Opening opening =
        m_database.open(m_path, HistoryDatabase::Mode::ReadWrite) ? prepare() : Opening::Later;
    if (opening == Opening::Open && m_newest > wall + kMaxAhead) {
        m_error = "its newest value is more than a day ahead of the clock";
        opening = Opening::Unusable;
    }
    if (opening != Opening::Open) {
        const bool isCorrupt = m_database.isCorrupt();
        m_error = error();
        close();
        return isCorrupt ? Opening::Unusable : opening;
    }
    return Opening::Open;
}

HistoryStore::Opening HistoryStore::prepare()
{
    const QVariant mark = m_database.value("PRAGMA application_id");
    const QVariant tables = m_database.value("SELECT count(*) FROM sqlite_master");
    const QVariant format = m_database.value("PRAGMA user_version");
    if (!tables.isValid()) {
        return Opening::Later;
    }
    const bool isNew = tables.toInt() == 0;
    if (!isNew && (mark.toInt() != HistoryDatabase::kApplicationId ||
                   format.toInt() != HistoryDatabase::kFormat)) {
        m_error = "this is not a history that this program can read";
        return Opening::Unusable;
    }
    const bool isReady = (!isNew || m_database.run("PRAGMA auto_vacuum = INCREMENTAL")) &&
                         m_database.run("PRAGMA journal_mode = WAL") &&
                         m_database.run("PRAGMA synchronous = NORMAL") &&
                         m_database.run("PRAGMA journal_size_limit = 4000000") &&
                         (!isNew || makeTables()) && sortIn() && readSignals() && addGaps();
    return isReady ? Opening::Open : Opening::Later;
}

bool HistoryStore::makeTables()
{
    return m_database.transact([this] {
        return m_database.run(
                   QString("PRAGMA application_id = %1").arg(HistoryDatabase::kApplicationId)) &&
               m_database.run(QString("PRAGMA user_version = %1").arg(HistoryDatabase::kFormat)) &&
               m_database.run("CREATE TABLE signals (id INTEGER PRIMARY KEY, name TEXT NOT NULL "
                              "UNIQUE)") &&
               m_database.run(
                   "CREATE TABLE samples (signal INTEGER NOT NULL, time INTEGER NOT NULL, "
                   "seq INTEGER NOT NULL, value, PRIMARY KEY (signal, time, seq)) WITHOUT "
                   "ROWID") &&
               m_database.run(
                   "CREATE TABLE recent (signal INTEGER NOT NULL, time INTEGER NOT NULL, "
                   "seq INTEGER NOT NULL, value)") &&
               m_database.run(
                   "CREATE VIEW history AS SELECT name, time, value FROM (SELECT * FROM "
                   "samples UNION ALL SELECT * FROM recent) JOIN signals ON id = signal");
    });
}

/// The rows of all signals must have been sorted in.
bool HistoryStore::readSignals()
{
    for (const QString& name : m_names) {
        QSqlQuery add = m_database.prepared("INSERT OR IGNORE INTO signals (name) VALUES (?)");
        add.bindValue(0, name);
        if (!m_database.run(add)) {
            return false;
        }
    }
    QHash<QString, int> ids;
    QSqlQuery known = m_database.prepared("SELECT id, name FROM signals");
    if (!m_database.run(known)) {
        return false;
    }
    while (known.next()) {
        ids.insert(known.value(1).toString(), known.value(0).toInt());
    }
    m_newest = 0;
    QSqlQuery newest = m_database.prepared("SELECT time, seq, value IS NULL FROM samples WHERE "
                                           "signal = ? ORDER BY time DESC, seq DESC LIMIT 1");
    for (const int id : qAsConst(ids)) {
        newest.bindValue(0, id);
        if (!m_database.run(newest)) {
            return false;
        }
        if (newest.next()) {
            m_last.insert(id, {newest.value(0).toLongLong(), newest.value(1).toInt(),
                               newest.value(2).toBool()});
            m_newest = std::max(m_newest, newest.value(0).toLongLong());
        }
        newest.finish();
    }
    for (const QString& name : m_names) {
        m_ids.append(ids.value(name));
    }
    return true;
}

bool HistoryStore::append(const QVector<HistoryRow>& rows)
{
    QHash<int, Last> last = m_last;
    const bool isDone = m_database.transact([&] {
        return std::all_of(rows.cbegin(), rows.cend(), [&](const HistoryRow& row) {
            return insert(m_ids[row.signal], row.point, last);
        });
    });
    if (!isDone) {
        return false;
    }
    m_last = last;
    m_recent += rows.size();
    for (const HistoryRow& row : rows) {
        m_newest = std::max(m_newest, row.point.time);
    }
    return true;
}

bool HistoryStore::insert(int id, const HistoryPoint& point, QHash<int, Last>& last)
{
    if (!m_insert) {
        m_insert = std::make_unique<QSqlQuery>(
            m_database.prepared("INSERT INTO recent VALUES (?, ?, ?, ?)"));
    }
    Last& before = last[id];
    const bool isLater = point.time > before.time;
    before = {isLater ? point.time : before.time, isLater ? 0 : before.seq + 1,
              point.value.kind == HistoryValue::Kind::Gap};
    m_insert->bindValue(0, id);
    m_insert->bindValue(1, before.time);
    m_insert->bindValue(2, before.seq);
    m_insert->bindValue(3, stored(point.value));
    return m_database.run(*m_insert);
}

bool HistoryStore::addGaps()
{
    QHash<int, Last> last = m_last;
    const bool isDone = m_database.transact([&] {
        bool isAdded = true;
        for (auto signal = m_last.cbegin(); isAdded && signal != m_last.cend(); ++signal) {
            isAdded = signal->isGap || insert(signal.key(), {signal->time + 1, {}}, last);
        }
        return isAdded;
    });
    m_last = isDone ? last : m_last;
    return isDone;
}

bool HistoryStore::tidy(qint64 now)
{
    if (m_recent > 0 && (m_recent >= kMaxRecent || now >= m_sortedAt + kSortInterval)) {
        m_sortedAt = now;
        return sortIn();
    }
    if (!m_isTrimming && now < m_trimmedAt + kTrimInterval) {
        return true;
    }
    m_trimmedAt = now;
    return trim(now);
}

bool HistoryStore::sortIn()
{
    const bool isDone = m_database.transact([this] {
        return m_database.run("INSERT OR REPLACE INTO samples SELECT * FROM recent ORDER BY "
                              "signal, time, seq") &&
               m_database.run("DELETE FROM recent");
    });
    m_recent = isDone ? 0 : m_recent;
    return isDone;
}

/// By age, then by size; then what is free is given back where it is much.
bool HistoryStore::trim(qint64 now)
{
    const qint64 first = oldest();
    const qint64 slice = std::max<qint64>(1, (now - first) / kSlices);
    const qint64 pages = m_database.value("PRAGMA page_count").toLongLong();
    const qint64 free = m_database.value("PRAGMA freelist_count").toLongLong();
    const qint64 most = m_limits.maxBytes / m_database.value("PRAGMA page_size").toLongLong();
    m_isTrimming = true;
    if (first > 0 && first < now - m_limits.keptMs) {
        return removeBefore(std::min(first + slice, now - m_limits.keptMs));
    }
    if (first > 0 && pages - free > most) {
        return removeBefore(first + slice);
    }
    if (free > 0 && (pages > most || free > std::max<qint64>(kMaxFreedPages, pages / 4))) {
        return giveBack(int(std::min<qint64>(free, kMaxFreedPages)));
    }
    m_isTrimming = false;
    return true;
}

/// Page by page: a statement without columns makes its first step only.
bool HistoryStore::giveBack(int pages)
{
    return m_database.transact([&] {
        QSqlQuery query = m_database.prepared("PRAGMA incremental_vacuum(1)");
        bool isDone = true;
        for (int i = 0; isDone && i < pages; ++i) {
            isDone = m_database.run(query);
        }
        return isDone;
    });
}

/// Of what has been sorted in; 0: nothing has.
qint64 HistoryStore::oldest()
{
    qint64 first = 0;
    QSqlQuery query =
        m_database.prepared("SELECT time FROM samples WHERE signal = ? ORDER BY time LIMIT 1");
    for (auto signal = m_last.cbegin(); signal != m_last.cend(); ++signal) {
        query.bindValue(0, signal.key());
        if (m_database.run(query) && query.next()) {
            const qint64 time = query.value(0).toLongLong();
            first = first == 0 ? time : std::min(first, time);
        }
        query.finish();
    }
    return first;
}

bool HistoryStore::removeBefore(qint64 time)
{
    QSqlQuery query = m_database.prepared("DELETE FROM samples WHERE signal = ? AND time < ?");
    query.bindValue(1, time);
    return m_database.transact([&] {
        const QList<int> ids = m_last.keys();
        return std::all_of(ids.cbegin(), ids.cend(), [&](int id) {
            query.bindValue(0, id);
            return m_database.run(query);
        });
    });
}

bool HistoryStore::setAside()
{
    close();
    const QString aside = m_path + ".bad";
    for (const QString ending : {"", "-wal", "-shm"}) {
        QFile::remove(aside + ending);
        QFile::rename(m_path + ending, aside + ending);
    }
    return !QFile::exists(m_path);
}

} // namespace norvo
