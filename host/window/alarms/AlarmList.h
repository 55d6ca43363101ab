// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/alarms/AlarmLines.h"

#include <QHash>
#include <QTableWidget>
#include <QTimer>

#include <optional>

namespace norvo {

class AlarmService;

/// The alarms of a panel as a table: those that are shown now, those that are shelved, or what
/// happened. At most kMaxRows, the worst or the last.
class AlarmList : public QTableWidget
{
    Q_OBJECT

public:
    enum class View { Now, Shelved, History };

    static constexpr int kMaxRows = 500;
    static constexpr int kIntervalMs = 250; ///< From one change of the table to the next, at least.

    /// `pages` has the page of each device that stands on one.
    AlarmList(AlarmService& service, const QHash<QString, QString>& pages);

    void setView(View view);
    void setPage(const QString& page); ///< Empty: all.
    void setPriority(std::optional<AlarmPriority> priority);

    QVector<int> selectedAlarms() const; ///< Of all rows that are selected; none of the history.
    QVector<int> allAlarms() const;      ///< Of all rows.
    QString currentDevice() const;       ///< Empty: no row is current.

signals:
    void selectionMade(); ///< Or another one, or its alarms have changed.

private:
    struct Row
    {
        QVector<int> alarms;
        QString device;
        AlarmPriority priority = AlarmPriority::Low;
        bool isFilled = false;
        QStringList cells;
    };

    void refresh();
    QVector<Row> rows() const;
    QVector<Row> rowsNow() const;
    QVector<Row> rowsShelved() const;
    QVector<Row> rowsOfHistory() const;
    Row rowOf(const AlarmLine& line) const;
    bool isWanted(const QString& device, AlarmPriority priority) const;
    bool isWanted(const AlarmLine& line) const;
    void show(int index, const Row& row);

    AlarmService& m_service;
    const QHash<QString, QString> m_pages;
    View m_view = View::Now;
    QString m_page;
    std::optional<AlarmPriority> m_priority;
    QVector<Row> m_rows;
    QTimer m_delay;
};

} // namespace norvo
