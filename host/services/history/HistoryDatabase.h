// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <functional>

class QSqlError;

namespace norvo {

/// A connection to a history's file. Belongs to the thread that has made it.
class HistoryDatabase
{
public:
    enum class Mode { ReadWrite, ReadOnly };

    static constexpr int kApplicationId = 0x4e6f7248; ///< Marks a file as a history.
    static constexpr int kFormat = 1;

    HistoryDatabase();
    ~HistoryDatabase();
    Q_DISABLE_COPY(HistoryDatabase)

    /// A file that is no database is noticed no sooner than by the first statement.
    bool open(const QString& path, Mode mode);
    void close(); ///< All queries must be gone.
    bool isOpen() const { return m_database.isOpen(); }

    QSqlQuery prepared(const QString& statement); ///< Forward only.
    bool run(const QString& statement);           ///< False: error() says why.
    bool run(QSqlQuery& query);                   ///< With its bound values; false likewise.
    bool endedWell(const QSqlQuery& query);       ///< Without further rows; false likewise.
    QVariant value(const QString& statement);     ///< The first of the answer; invalid without.
    /// All of the steps or, where they return false, none; error() then says why they failed.
    bool transact(const std::function<bool()>& steps);

    const QString& error() const { return m_error; } ///< Of what failed last.
    bool isCorrupt() const { return m_isCorrupt; }   ///< Something has failed because of that.

private:
    void note(const QSqlError& error);

    const QString m_name;
    QSqlDatabase m_database;
    QString m_error;
    bool m_isCorrupt = false;
};

} // namespace norvo
