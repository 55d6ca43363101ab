// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryQuery.h"

#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace norvo {

namespace {

constexpr int kEnough = std::numeric_limits<int>::max();
constexpr int kPage = 5000; // Rows of one statement: none keeps the writer's log from being reused.

/// Both tables hold rows of a signal: the newest are still to be sorted in among the others.
const QString kRows = QStringLiteral(
    "SELECT %1 FROM (SELECT time, seq, value FROM samples WHERE signal = :id AND time >= :from AND "
    "time <= :to UNION ALL SELECT time, seq, value FROM recent WHERE signal = :id AND time >= "
    ":from AND "
    "time <= :to) ");
const QString kPageOfRows = QStringLiteral(
    "SELECT time, seq, value FROM samples WHERE signal = ? AND (time, seq) > (?, ?) AND time <= ? "
    "ORDER BY time, seq LIMIT ?");
/// All of them lie behind those of the other table.
const QString kRecentRows = QStringLiteral(
    "SELECT time, seq, value FROM recent WHERE signal = ? AND (time, seq) > (?, ?) AND time <= ? "
    "ORDER BY time, seq LIMIT ?");

HistoryValue valueOf(const QVariant& stored)
{
    return stored.isNull()                       ? HistoryValue::gap()
           : stored.type() == QVariant::LongLong ? HistoryValue::of(stored.toLongLong() != 0)
                                                 : HistoryValue::of(stored);
}

} // namespace

bool HistoryQuery::open(const QString& path)
{
    if (!QFileInfo(path).isFile()) {
        m_error = "there is no such file";
        return false;
    }
    if (!m_database.open(path, HistoryDatabase::Mode::ReadOnly)) {
        m_error = m_database.error();
        return false;
    }
    const QVariant mark = m_database.value("PRAGMA application_id");
    if (mark.toInt() == HistoryDatabase::kApplicationId) {
        return true;
    }
    m_error = mark.isValid() || m_database.isCorrupt() ? "this is not a history of a panel"
                                                       : m_database.error();
    m_database.close();
    return false;
}

QStringList HistoryQuery::signalNames()
{
    QStringList names;
    QSqlQuery query = m_database.prepared("SELECT name FROM signals ORDER BY name");
    for (bool isRow = m_database.run(query) && query.next(); isRow; isRow = query.next()) {
        names.append(query.value(0).toString());
    }
    return names;
}

/// -1: it is not in the history; null after an error.
std::optional<int> HistoryQuery::idOf(const HistoryRange& range)
{
    QSqlQuery query = m_database.prepared("SELECT id FROM signals WHERE name = ?");
    query.bindValue(0, range.device + '.' + range.signal);
    if (!m_database.run(query)) {
        return {};
    }
    return query.next() ? query.value(0).toInt() : -1;
}

QVector<HistoryPoint> HistoryQuery::read(const HistoryRange& range)
{
    QVector<HistoryPoint> points;
    if (range.maxRows <= 0) {
        forEach(range, [&](const HistoryPoint& point) {
            points.append(point);
            return !range.isFirstOnly;
        });
        return points;
    }
    forEach(range, [&](const HistoryPoint& point) {
        points.append(point);
        return points.size() <= range.maxRows;
    });
    return points.size() <= range.maxRows ? points : thinned(range);
}

bool HistoryQuery::forEach(const HistoryRange& range, const Take& take)
{
    const std::optional<int> id = idOf(range);
    const bool isSound = id && (*id < 0 || readPages({*id, range.from, -1, range.to}, take));
    m_error = isSound ? QString() : m_database.error();
    return isSound;
}

bool HistoryQuery::readPages(Cursor cursor, const Take& take)
{
    QSqlQuery samples = m_database.prepared(kPageOfRows);
    QSqlQuery recent = m_database.prepared(kRecentRows);
    bool isDone = false;
    bool isSound = true;
    while (isSound && !isDone) {
        // Rows move from one table to the other; within a transaction they stand still.
        isSound = m_database.run("BEGIN");
        int count = isSound ? takePage(samples, cursor, kPage, take) : -1;
        if (count >= 0 && count < kPage) {
            isDone = true;
            count = takePage(recent, cursor, -1, take);
        }
        isSound = count >= 0;
        isDone = isDone || count == kEnough;
        samples.finish();
        recent.finish();
        isSound = m_database.run("COMMIT") && isSound;
    }
    return isSound;
}

/// Returns how many there were, kEnough where `take` wants no more, or -1 after an error.
int HistoryQuery::takePage(QSqlQuery& query, Cursor& cursor, int limit, const Take& take)
{
    const QVariantList values{cursor.signal, cursor.time, cursor.seq, cursor.to, limit};
    for (int i = 0; i < values.size(); ++i) {
        query.bindValue(i, values[i]);
    }
    if (!m_database.run(query)) {
        return -1;
    }
    int count = 0;
    for (; query.next(); ++count) {
        cursor.time = query.value(0).toLongLong();
        cursor.seq = query.value(1).toInt();
        if (!take({cursor.time, valueOf(query.value(2))})) {
            return kEnough;
        }
    }
    return m_database.endedWell(query) ? count : -1;
}

QVector<HistoryPoint> HistoryQuery::thinned(const HistoryRange& range)
{
    const std::optional<int> id = idOf(range);
    bool isSound = id.has_value();
    QVector<HistoryPoint> points;
    const qint64 span =
        std::max<qint64>(1, (range.to - range.from) / std::max(1, range.maxRows / 2));
    const QString gaps = kRows.arg("max(time), value") + "WHERE value IS NULL ";
    for (const QString& rows :
         {kRows.arg("time, min(value)"), kRows.arg("time, max(value)"), gaps}) {
        QSqlQuery query = m_database.prepared(rows + "GROUP BY (time - :from) / :span");
        query.bindValue(":id", id.value_or(-1));
        query.bindValue(":from", range.from);
        query.bindValue(":to", range.to);
        query.bindValue(":span", span);
        for (bool isRow = m_database.run(query) && query.next(); isRow; isRow = query.next()) {
            points.append({query.value(0).toLongLong(), valueOf(query.value(1))});
        }
        isSound = m_database.endedWell(query) && isSound;
    }
    m_error = isSound ? QString() : m_database.error();
    std::sort(points.begin(), points.end(),
              [](const HistoryPoint& a, const HistoryPoint& b) { return a.time < b.time; });
    return points;
}

} // namespace norvo
