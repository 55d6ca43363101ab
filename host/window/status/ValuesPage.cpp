// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/status/ValuesPage.h"

#include "host/window/look/TouchSize.h"
#include "host/window/sheet/Sheet.h"
#include "host/window/sheet/SheetTable.h"
#include "host/window/touch/LineKeyboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>

namespace norvo {

namespace {

constexpr int kIntervalMs = 1000;

enum Column { Device, Output, Value, Age, Rate, Count, ColumnCount };

QStringList cellsOf(const Reading& reading)
{
    return {reading.device,
            reading.output,
            reading.value,
            ageText(reading.ageMs),
            QLocale().toString(reading.perSecond, 'f', 1),
            QString::number(reading.count)};
}

} // namespace

QString ageText(qint64 ms)
{
    if (ms < 0) {
        return ValuesPage::tr("never");
    }
    const double seconds = double(ms) / 1000.0;
    return seconds < 60     ? ValuesPage::tr("%1 s").arg(QLocale().toString(seconds, 'f', 1))
           : seconds < 3600 ? ValuesPage::tr("%1 min").arg(int(seconds / 60))
                            : ValuesPage::tr("%1 h").arg(int(seconds / 3600));
}

ValuesPage::ValuesPage(ValueTable& table)
    : m_table(table), m_filter(new QLineEdit), m_rows(new QTableWidget(0, ColumnCount))
{
    m_filter->setPlaceholderText(tr("Show only rows with this text"));
    m_filter->setMinimumHeight(TouchSize::pixels(PanelLook::Touch::Fingers, *screen()));
    m_filter->setAccessibleName(tr("Search the values"));
    new LineKeyboard(*m_filter);
    m_rows->setObjectName("values");
    m_rows->setHorizontalHeaderLabels({tr("Device"), tr("Output"), tr("Last value"), tr("Ago"),
                                       tr("Values per second"), tr("Values")});
    SheetTable::prepare(*m_rows);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_filter);
    layout->addWidget(m_rows, 1);
    connect(m_filter, &QLineEdit::textChanged, this, &ValuesPage::narrow);
    startTimer(kIntervalMs);
    refresh();
    m_rows->resizeColumnsToContents();
    m_rows->horizontalHeader()->setSectionResizeMode(Value, QHeaderView::Stretch);
}

void ValuesPage::timerEvent(QTimerEvent* /*event*/)
{
    refresh();
}

void ValuesPage::refresh()
{
    const QVector<Reading> readings = m_table.look();
    m_rows->setRowCount(readings.size());
    for (int row = 0; row < readings.size(); ++row) {
        SheetTable::fill(*m_rows, row, cellsOf(readings[row]));
    }
    narrow();
}

void ValuesPage::narrow()
{
    const QString wanted = m_filter->text().trimmed();
    for (int row = 0; row < m_rows->rowCount(); ++row) {
        bool isWanted = false;
        for (const int column : {Device, Output, Value}) {
            isWanted =
                isWanted || m_rows->item(row, column)->text().contains(wanted, Qt::CaseInsensitive);
        }
        m_rows->setRowHidden(row, !isWanted);
    }
}

QString ValuesPage::text() const
{
    QStringList lines;
    for (int row = -1; row < m_rows->rowCount(); ++row) {
        if (row >= 0 && m_rows->isRowHidden(row)) {
            continue;
        }
        QStringList cells;
        for (int column = 0; column < ColumnCount; ++column) {
            cells.append(row < 0 ? m_rows->horizontalHeaderItem(column)->text()
                                 : m_rows->item(row, column)->text());
        }
        lines.append(cells.join('\t'));
    }
    return lines.join('\n') + '\n';
}

void ValuesPage::copy() const
{
    QGuiApplication::clipboard()->setText(text());
}

void openValues(QWidget& opener, ValueTable& table, const Panel& panel)
{
    table.hearAll(panel);
    auto* const sheet = new Sheet(opener, ValuesPage::tr("All values"));
    auto* const page = new ValuesPage(table);
    sheet->content().addWidget(page);
    QObject::connect(sheet->addKey(ValuesPage::tr("Copy as text")), &QPushButton::clicked, page,
                     &ValuesPage::copy);
    sheet->present();
}

} // namespace norvo
