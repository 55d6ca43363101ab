// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/HandledPlot.h"

#include "host/plots/Cursor.h"
#include "host/plots/Gestures.h"
#include "host/plots/PlotCopy.h"
#include "host/plots/SeenPoints.h"

namespace norvo {

HandledPlot::HandledPlot(QCustomPlot& source, const ReadEarlier& readEarlier,
                         const std::function<void()>& changed)
    : m_plot(new PlotCopy(source, readEarlier)), m_cursor(new Cursor(*m_plot))
{
    auto* const hand = new Gestures(*m_plot);
    connect(hand, &Gestures::tapped, m_cursor, &Cursor::put);
    connect(hand, &Gestures::cursorMoved, m_cursor, &Cursor::moveBy);
    connect(hand, &Gestures::liveRequested, this, &HandledPlot::goLive);
    connect(m_plot, &PlotCopy::viewChanged, this, changed);
}

QWidget& HandledPlot::widget() const
{
    return *m_plot;
}

bool HandledPlot::isHeld() const
{
    return m_plot->isHeld();
}

bool HandledPlot::areValuesFixed() const
{
    return m_plot->areValuesFixed();
}

bool HandledPlot::showsTimes() const
{
    return m_plot->showsTimes();
}

QDateTime HandledPlot::heldAt() const
{
    return m_plot->heldAt();
}

bool HandledPlot::isReading() const
{
    return m_plot->isReading();
}

bool HandledPlot::isAtBeginning() const
{
    return m_plot->isAtBeginning();
}

bool HandledPlot::isAtUnreadable() const
{
    return m_plot->isAtUnreadable();
}

bool HandledPlot::isAtCut() const
{
    return m_plot->isAtCut();
}

QString HandledPlot::range() const
{
    return rangeText(*m_plot);
}

QByteArray HandledPlot::table() const
{
    return tableOf(*m_plot);
}

void HandledPlot::hold()
{
    m_plot->hold();
}

void HandledPlot::goLive()
{
    m_cursor->remove();
    m_plot->goLive();
}

void HandledPlot::fixValues(bool areFixed)
{
    m_plot->fixValues(areFixed);
}

} // namespace norvo
