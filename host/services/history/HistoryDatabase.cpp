// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryDatabase.h"

#include <QSqlError>

#include <atomic>

namespace norvo {

namespace {

constexpr int kPrimaryCode = 0xff; // The rest of an error's number says more about it.
constexpr int kCorrupt = 11;
constexpr int kNoDatabase = 26;

QString newName()
{
    static std::atomic<int> count{0};
    return QString("norvo-history-%1").arg(count++);
}

} // namespace

HistoryDatabase::HistoryDatabase() : m_name(newName()) {}

HistoryDatabase::~HistoryDatabase()
{
    close();
}

bool HistoryDatabase::open(const QString& path, Mode mode)
{
    close();
    m_isCorrupt = false;
    if (!QSqlDatabase::isDriverAvailable("QSQLITE")) {
        m_error = "Qt's driver for SQLite is missing (Debian: libqt5sql5-sqlite)";
        return false;
    }
    m_database = QSqlDatabase::addDatabase("QSQLITE", m_name);
    m_database.setDatabaseName(path);
    m_database.setConnectOptions(mode == Mode::ReadOnly
                                     ? "QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=1000"
                                     : "QSQLITE_BUSY_TIMEOUT=1000");
    if (!m_database.open()) {
        note(m_database.lastError());
        close();
        return false;
    }
    return true;
}

void HistoryDatabase::close()
{
    if (m_database.isValid()) {
        m_database.close();
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_name);
    }
}

QSqlQuery HistoryDatabase::prepared(const QString& statement)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.prepare(statement)) {
        note(query.lastError());
    }
    return query;
}

bool HistoryDatabase::run(const QString& statement)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    const bool isDone = query.exec(statement);
    note(query.lastError());
    return isDone;
}

bool HistoryDatabase::run(QSqlQuery& query)
{
    if (query.exec()) {
        return true;
    }
    note(query.lastError());
    return false;
}

bool HistoryDatabase::endedWell(const QSqlQuery& query)
{
    note(query.lastError());
    return !query.lastError().isValid();
}

bool HistoryDatabase::transact(const std::function<bool()>& steps)
{
    if (run("BEGIN IMMEDIATE") && steps() && run("COMMIT")) {
        return true;
    }
    const QString reason = m_error;
    run("ROLLBACK"); // May have been done already by what failed.
    m_error = reason;
    return false;
}

QVariant HistoryDatabase::value(const QString& statement)
{
    QSqlQuery query = prepared(statement);
    return run(query) && query.next() ? query.value(0) : QVariant();
}

void HistoryDatabase::note(const QSqlError& error)
{
    if (!error.isValid()) {
        return;
    }
    m_error = error.databaseText();
    const int code = error.nativeErrorCode().toInt() & kPrimaryCode;
    m_isCorrupt = m_isCorrupt || code == kCorrupt || code == kNoDatabase;
}

} // namespace norvo
