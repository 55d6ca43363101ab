// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/status/SourceList.h"

#include "host/services/status/SourceWatch.h"
#include "host/window/look/TouchSize.h"
#include "host/window/sheet/SheetTable.h"

#include <QHeaderView>
#include <QLocale>
#include <QScreen>
#include <QTimer>

namespace norvo {

namespace {

constexpr int kIntervalMs = 1000;

enum Column { Name, State, Since, Rate, Message, ColumnCount };

/// By shape as well as by word.
QString textOf(Source::State state)
{
    switch (state) {
    case Source::State::Well:
        return QChar(0x2713) + QString(' ') + SourceList::tr("well");
    case Source::State::Lost:
        return QChar(0x2717) + QString(' ') + SourceList::tr("lost");
    default:
        return QChar(0x2013) + QString(' ') + SourceList::tr("nothing heard yet");
    }
}

/// Of today the time alone.
QString textOf(const QDateTime& since)
{
    const bool isToday = since.date() == QDate::currentDate();
    return since.toString(isToday ? "HH:mm:ss" : "yyyy-MM-dd HH:mm:ss");
}

} // namespace

SourceList::SourceList(const SourceWatch& watch) : QTableWidget(0, ColumnCount), m_watch(watch)
{
    setObjectName("sourceList");
    setHorizontalHeaderLabels(
        {tr("Source"), tr("State"), tr("Since"), tr("Values per second"), tr("Last message")});
    SheetTable::prepare(*this);
    setSelectionMode(SingleSelection);
    setWordWrap(true);
    verticalHeader()->setDefaultSectionSize(
        TouchSize::pixels(PanelLook::Touch::Fingers, *screen()));
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(Message, QHeaderView::Stretch);
    connect(&watch, &SourceWatch::changed, this, &SourceList::refresh);
    // Not timerEvent(): the view has timers of its own.
    auto* const timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &SourceList::measure);
    timer->start(kIntervalMs);
    m_sinceMeasured.start();
    measure();
}

void SourceList::measure()
{
    const double seconds = double(m_sinceMeasured.restart()) / 1000.0;
    const QVector<Source> sources = m_watch.sources();
    for (const Source& source : sources) {
        const auto before = m_measured.constFind(source.id);
        if (before != m_measured.constEnd() && seconds > 0) {
            m_rates[source.id] = double(source.values - *before) / seconds;
        }
        m_measured[source.id] = source.values;
    }
    refresh();
}

void SourceList::refresh()
{
    const QVector<Source> sources = m_watch.sources();
    setRowCount(sources.size());
    for (int row = 0; row < sources.size(); ++row) {
        const Source& source = sources[row];
        const auto rate = m_rates.constFind(source.id);
        const QStringList texts{source.id, textOf(source.state), textOf(source.since),
                                rate == m_rates.constEnd() ? QString(QChar(0x2026))
                                                           : QLocale().toString(*rate, 'f', 1),
                                source.message};
        SheetTable::fill(*this, row, texts);
    }
}

} // namespace norvo
