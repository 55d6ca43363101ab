// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmPage.h"

#include "host/panel/state/AtomicFile.h"
#include "host/services/alarms/AlarmService.h"
#include "host/window/alarms/AlarmList.h"
#include "host/window/alarms/AlarmSign.h"
#include "host/window/sheet/Sheet.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>

#include <algorithm>

namespace norvo {

namespace {

struct ShelfTime
{
    Duration time;
    const char* text;
};

const ShelfTime kShelfTimes[] = {
    {std::chrono::minutes(10), QT_TRANSLATE_NOOP("norvo::AlarmPage", "For 10 minutes")},
    {std::chrono::hours(1), QT_TRANSLATE_NOOP("norvo::AlarmPage", "For 1 hour")},
    {std::chrono::hours(8), QT_TRANSLATE_NOOP("norvo::AlarmPage", "For 8 hours")}};

} // namespace

AlarmPage::AlarmPage(AlarmService& service, const AlarmPlaces& places, Sheet& sheet)
    : m_service(service),
      m_tableFile(places.tableFile),
      m_list(new AlarmList(service, places.pageOf)),
      m_help(new QLabel),
      m_message(new QLabel)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeFilters(places));
    layout->addWidget(m_list, 1);
    for (QLabel* const label : {m_help, m_message}) {
        layout->addWidget(label);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->hide();
    }
    m_help->setObjectName("alarmHelpText");
    addKeys(sheet);
    connect(m_list, &AlarmList::selectionMade, this, &AlarmPage::followSelection);
    connect(m_list, &QTableWidget::cellActivated, m_goTo, &QPushButton::click);
    followSelection();
}

void AlarmPage::begin()
{
    m_list->selectRow(0);
    m_list->setFocus();
}

QWidget* AlarmPage::makeFilters(const AlarmPlaces& places)
{
    auto* const filters = new QWidget;
    auto* const row = new QHBoxLayout(filters);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [row](const char* name, const QStringList& texts, const QString& what) {
        auto* const box = new QComboBox;
        box->setObjectName(name);
        box->addItems(texts);
        box->setAccessibleName(what);
        row->addWidget(box);
        return box;
    };
    QComboBox* const view =
        add("alarmView", {tr("Now"), tr("Shelved"), tr("History")}, tr("What is listed"));
    connect(view, QOverload<int>::of(&QComboBox::activated), m_list,
            [this](int index) { m_list->setView(AlarmList::View(index)); });
    QComboBox* const priority =
        add("alarmPriority",
            {tr("All priorities"), AlarmSign::nameOf(AlarmPriority::High),
             AlarmSign::nameOf(AlarmPriority::Medium), AlarmSign::nameOf(AlarmPriority::Low)},
            tr("Priority"));
    connect(priority, QOverload<int>::of(&QComboBox::activated), m_list, [this](int index) {
        m_list->setPriority(index == 0 ? std::nullopt
                                       : std::make_optional(AlarmPriority(3 - index)));
    });
    if (!places.pages.isEmpty()) {
        QComboBox* const page =
            add("alarmPageFilter", QStringList(tr("All pages")) + places.pages, tr("Page"));
        connect(page, QOverload<int>::of(&QComboBox::activated), m_list, [this, page](int index) {
            m_list->setPage(index == 0 ? QString() : page->itemText(index));
        });
    }
    row->addStretch(1);
    return filters;
}

void AlarmPage::addKeys(Sheet& sheet)
{
    const auto add = [&sheet](const char* name, const QString& text) {
        QPushButton* const key = sheet.addKey(text);
        key->setObjectName(name);
        return key;
    };
    if (!m_tableFile.isEmpty()) {
        connect(add("alarmTable", tr("Save as CSV")), &QPushButton::clicked, this, [this] {
            m_service.operate([page = QPointer<AlarmPage>(this)] {
                if (page) {
                    page->saveTable();
                }
            });
        });
    }
    m_goTo = add("alarmGoTo", tr("Go to device"));
    m_shelve = add("alarmShelve", tr("Shelve"));
    m_acknowledgeAll = add("alarmAcknowledgeAll", tr("Acknowledge all"));
    m_acknowledge = add("alarmAcknowledge", tr("Acknowledge"));
    connect(m_acknowledge, &QPushButton::clicked, this,
            [this] { acknowledge(m_list->selectedAlarms()); });
    connect(m_acknowledgeAll, &QPushButton::clicked, this,
            [this] { acknowledge(m_list->allAlarms()); });
    connect(m_shelve, &QPushButton::clicked, this, &AlarmPage::shelve);
    connect(m_goTo, &QPushButton::clicked, this, [this, &sheet] {
        const QString device = m_list->currentDevice();
        sheet.accept();
        emit deviceRequested(device);
    });
}

/// The keyboard goes on with the next.
void AlarmPage::acknowledge(const QVector<int>& alarms)
{
    m_list->setFocus();
    m_service.acknowledge(alarms);
}

void AlarmPage::followSelection()
{
    const QVector<int> selected = m_list->selectedAlarms();
    const QVector<int> all = m_list->allAlarms();
    const AlarmModel& model = m_service.model();
    const auto isWaiting = [&model](int alarm) { return model.at(alarm).isUnacknowledged(); };
    const auto isShelved = [&model](int alarm) { return model.at(alarm).isShelved(); };
    m_acknowledge->setEnabled(std::any_of(selected.cbegin(), selected.cend(), isWaiting));
    m_acknowledgeAll->setEnabled(std::any_of(all.cbegin(), all.cend(), isWaiting));
    m_areShelved =
        !selected.isEmpty() && std::all_of(selected.cbegin(), selected.cend(), isShelved);
    m_shelve->setText(m_areShelved ? tr("Take from the shelf") : tr("Shelve"));
    m_shelve->setEnabled(!selected.isEmpty());
    m_goTo->setEnabled(!m_list->currentDevice().isEmpty());
    m_help->setText(selected.isEmpty() ? QString() : model.at(selected[0]).definition.help);
    m_help->setHidden(m_help->text().isEmpty());
}

void AlarmPage::shelve()
{
    const QVector<int> alarms = m_list->selectedAlarms();
    m_list->setFocus();
    if (m_areShelved) {
        return m_service.unshelve(alarms);
    }
    auto* const times = new QMenu(this);
    times->setAttribute(Qt::WA_DeleteOnClose);
    for (const ShelfTime& shelf : kShelfTimes) {
        const Duration time = shelf.time;
        connect(times->addAction(tr(shelf.text)), &QAction::triggered, this,
                [this, alarms, time] { m_service.shelve(alarms, time); });
    }
    times->popup(m_shelve->mapToGlobal({0, -times->sizeHint().height()}));
}

void AlarmPage::saveTable()
{
    QString reason;
    m_message->setText(writeFileAtomically(m_tableFile, m_service.history().toCsv(), reason)
                           ? tr("The history is saved as %1").arg(m_tableFile)
                           : tr("The history cannot be saved as %1: %2").arg(m_tableFile, reason));
    m_message->show();
}

} // namespace norvo
