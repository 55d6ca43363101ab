// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmList.h"

#include "host/services/alarms/AlarmService.h"
#include "host/window/alarms/AlarmSign.h"
#include "host/window/look/TouchSize.h"
#include "host/window/sheet/SheetTable.h"

#include <QDateTime>
#include <QHeaderView>
#include <QScreen>

namespace norvo {

namespace {

enum Column { Priority, Time, Text, Device, State, ColumnCount };

/// Of today the time alone.
QString timeText(qint64 time)
{
    const QDateTime when = QDateTime::fromMSecsSinceEpoch(time);
    const bool isToday = when.date() == QDate::currentDate();
    return when.toString(isToday ? "HH:mm:ss" : "yyyy-MM-dd HH:mm:ss");
}

QString eventText(const QString& event)
{
    static const QHash<QString, const char*> texts{
        {"began", QT_TRANSLATE_NOOP("norvo::AlarmList", "began")},
        {"ended", QT_TRANSLATE_NOOP("norvo::AlarmList", "ended")},
        {"acknowledged", QT_TRANSLATE_NOOP("norvo::AlarmList", "acknowledged")},
        {"shelved", QT_TRANSLATE_NOOP("norvo::AlarmList", "shelved")},
        {"unshelved", QT_TRANSLATE_NOOP("norvo::AlarmList", "taken from the shelf")}};
    return AlarmList::tr(texts.value(event, ""));
}

} // namespace

AlarmList::AlarmList(AlarmService& service, const QHash<QString, QString>& pages)
    : QTableWidget(0, ColumnCount), m_service(service), m_pages(pages)
{
    setObjectName("alarms");
    setHorizontalHeaderLabels({tr("Priority"), tr("Time"), tr("Alarm"), tr("Device"), tr("State")});
    SheetTable::prepare(*this);
    verticalHeader()->setDefaultSectionSize(
        TouchSize::pixels(PanelLook::Touch::Fingers, *screen()));
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(Text, QHeaderView::Stretch);
    m_delay.setInterval(kIntervalMs);
    m_delay.setSingleShot(true);
    connect(&m_delay, &QTimer::timeout, this, &AlarmList::refresh);
    connect(&service, &AlarmService::changed, this, [this] {
        if (!m_delay.isActive()) {
            m_delay.start();
        }
    });
    connect(this, &QTableWidget::itemSelectionChanged, this, &AlarmList::selectionMade);
    refresh();
}

void AlarmList::setView(View view)
{
    m_view = view;
    clearSelection();
    refresh();
}

void AlarmList::setPage(const QString& page)
{
    m_page = page;
    refresh();
}

void AlarmList::setPriority(std::optional<AlarmPriority> priority)
{
    m_priority = priority;
    refresh();
}

QVector<int> AlarmList::selectedAlarms() const
{
    QVector<int> alarms;
    const auto selected = selectionModel()->selectedRows();
    for (const QModelIndex& row : selected) {
        alarms += m_rows.value(row.row()).alarms;
    }
    return alarms;
}

QVector<int> AlarmList::allAlarms() const
{
    QVector<int> alarms;
    for (const Row& row : m_rows) {
        alarms += row.alarms;
    }
    return alarms;
}

QString AlarmList::currentDevice() const
{
    const auto selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? QString() : m_rows.value(selected.constFirst().row()).device;
}

bool AlarmList::isWanted(const QString& device, AlarmPriority priority) const
{
    return (m_page.isEmpty() || m_pages.value(device) == m_page) &&
           (!m_priority || priority == *m_priority);
}

bool AlarmList::isWanted(const AlarmLine& line) const
{
    const AlarmDefinition& first = m_service.model().at(line.alarms.constFirst()).definition;
    return isWanted(first.device, first.priority);
}

QVector<AlarmList::Row> AlarmList::rows() const
{
    switch (m_view) {
    case View::Now:
        return rowsNow();
    case View::Shelved:
        return rowsShelved();
    default:
        return rowsOfHistory();
    }
}

AlarmList::Row AlarmList::rowOf(const AlarmLine& line) const
{
    const Alarm& alarm = m_service.model().at(line.alarms.constFirst());
    const AlarmDefinition& definition = alarm.definition;
    QString text = textOf(line, m_service.model());
    if (alarm.isFirst && !line.isFlood()) {
        text += "  [" + tr("first") + ']';
    }
    if (!definition.help.isEmpty()) {
        text += "  –  " + definition.help;
    }
    const QString state = alarm.isShelved()
                              ? tr("shelved until %1").arg(timeText(alarm.shelvedUntil.wall))
                              : AlarmSign::nameOf(alarm);
    return {line.alarms,
            definition.device,
            definition.priority,
            alarm.isUnacknowledged(),
            {AlarmSign::nameOf(definition.priority), timeText(alarm.since.wall), text,
             definition.device, state}};
}

QVector<AlarmList::Row> AlarmList::rowsNow() const
{
    QVector<Row> rows;
    const auto lines = alarmLines(m_service.model());
    for (const AlarmLine& line : lines) {
        if (rows.size() < kMaxRows && isWanted(line)) {
            rows.append(rowOf(line));
        }
    }
    return rows;
}

QVector<AlarmList::Row> AlarmList::rowsShelved() const
{
    QVector<Row> rows;
    const AlarmModel& model = m_service.model();
    for (int alarm = 0; alarm < int(model.alarms().size()); ++alarm) {
        const AlarmLine line{{alarm}};
        if (rows.size() < kMaxRows && model.at(alarm).isShelved() && isWanted(line)) {
            rows.append(rowOf(line));
        }
    }
    return rows;
}

QVector<AlarmList::Row> AlarmList::rowsOfHistory() const
{
    QVector<Row> rows;
    const auto& entries = m_service.history().entries();
    for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry) {
        if (rows.size() == kMaxRows || !isWanted(entry->device, entry->priority)) {
            continue;
        }
        const QString detail = entry->detail.isEmpty() ? QString() : " (" + entry->detail + ')';
        rows.append({{},
                     entry->device,
                     entry->priority,
                     false,
                     {AlarmSign::nameOf(entry->priority), timeText(entry->time),
                      entry->text + detail, entry->device, eventText(entry->event)}});
    }
    return rows;
}

/// What was selected and current stays so, wherever it now stands.
void AlarmList::refresh()
{
    const QVector<int> selected = selectedAlarms();
    const int current = m_rows.value(currentRow()).alarms.value(0, -1);
    m_rows = rows();
    const bool wasBlocked = blockSignals(true);
    setRowCount(m_rows.size());
    QItemSelection selection;
    QModelIndex currentIndex = this->currentIndex();
    for (int i = 0; i < m_rows.size(); ++i) {
        show(i, m_rows[i]);
        const int first = m_rows[i].alarms.value(0, -1);
        if (first >= 0 && selected.contains(first)) {
            selection.select(model()->index(i, 0), model()->index(i, ColumnCount - 1));
        }
        currentIndex = first >= 0 && first == current ? model()->index(i, 0) : currentIndex;
    }
    selectionModel()->setCurrentIndex(currentIndex, QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    blockSignals(wasBlocked);
    emit selectionMade();
}

void AlarmList::show(int index, const Row& row)
{
    const int size = fontMetrics().height();
    SheetTable::fill(*this, index, row.cells);
    item(index, Priority)->setIcon(AlarmSign::icon(row.priority, row.isFilled, size, palette()));
}

} // namespace norvo
