// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/PlotCopy.h"

#include "host/plots/CopiedCurve.h"
#include "host/plots/CopiedEntry.h"
#include "host/plots/HeldPoints.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace norvo {

namespace {

constexpr double kMinSeconds = 0.01;   // that are seen
constexpr double kMinNumbers = 1;      // likewise, where there are no times
constexpr double kSecondsInLabels = 4; // below which labels of whole seconds say the same twice
constexpr double kMinValues = 1e-9;    // that are seen, as a part of the largest of them

void copyAxis(QCPAxis& to, const QCPAxis& from)
{
    to.setLabelColor(from.labelColor());
    to.setBasePen(from.basePen());
    to.setTickPen(from.tickPen());
    to.setSubTickPen(from.subTickPen());
    to.setTickLabelColor(from.tickLabelColor());
    to.setTickLabelFont(from.tickLabelFont());
    to.grid()->setPen(from.grid()->pen());
    to.grid()->setZeroLinePen(from.grid()->zeroLinePen());
}

void copyLines(QCustomPlot& to, const QCustomPlot& from)
{
    for (int i = 0; i < from.itemCount(); ++i) {
        if (auto* const line = qobject_cast<QCPItemStraightLine*>(from.item(i))) {
            auto* const copy = new QCPItemStraightLine(&to);
            copy->point1->setCoords(line->point1->coords().x(), line->point1->coords().y());
            copy->point2->setCoords(line->point2->coords().x(), line->point2->coords().y());
            copy->setPen(line->pen());
            plots::add(to, copy);
        }
    }
}

QCPRange zoomed(const QCPRange& range, double factor, double around)
{
    return {around - (around - range.lower) * factor, around + (range.upper - around) * factor};
}

} // namespace

PlotCopy::PlotCopy(QCustomPlot& source, ReadEarlier readEarlier)
    : m_readEarlier(std::move(readEarlier)),
      m_source(&source),
      m_timeFormat(plots::timeFormat(*source.xAxis)),
      m_showsTimes(!m_timeFormat.isEmpty())
{
    setFocusPolicy(Qt::StrongFocus);
    setAutoAddPlottableToLegend(false);
    plots::matchPixels(*this, source);
    if (m_showsTimes) {
        plots::setTimeFormat(*xAxis, m_timeFormat);
    }
    copyLines(*this, source);
    copyLook();
    connect(&source, &QCustomPlot::afterReplot, this, &PlotCopy::follow);
    connect(this, &QCustomPlot::beforeReplot, this, [this] { plots::spaceTimes(*this); });
    follow();
}

void PlotCopy::copyLook()
{
    setAntialiasedElements(QCP::aeAll);
    setBackground(m_source->palette().brush(QPalette::Base));
    copyAxis(*xAxis, *m_source->xAxis);
    copyAxis(*yAxis, *m_source->yAxis);
    legend->setTextColor(m_source->legend->textColor());
    legend->setBrush(m_source->legend->brush());
    legend->setBorderPen(m_source->legend->borderPen());
    legend->setFont(m_source->legend->font());
    area().insetLayout()->setInsetAlignment(
        0, m_source->xAxis->axisRect()->insetLayout()->insetAlignment(0));
}

void PlotCopy::follow()
{
    if (m_isHeld || !m_source) {
        return;
    }
    followCurves();
    legend->setVisible(m_source->legend->visible());
    setKeys(m_source->xAxis->range().lower, m_source->xAxis->range().upper);
    if (!m_areValuesFixed) {
        yAxis->setRange(m_source->yAxis->range());
    }
    refresh();
}

void PlotCopy::followCurves()
{
    for (const Pair& pair : qAsConst(m_pairs)) {
        if (!pair.source) {
            pair.copy->removeFromLegend();
            removeGraph(pair.copy);
        }
    }
    const auto isGone = [](const Pair& pair) { return !pair.source; };
    m_pairs.erase(std::remove_if(m_pairs.begin(), m_pairs.end(), isGone), m_pairs.end());
    // The other plot only ever adds curves behind those that it has.
    for (int i = m_pairs.size(); i < m_source->graphCount(); ++i) {
        m_pairs.append({m_source->graph(i), addCurve(*m_source->graph(i))});
    }
    for (const Pair& pair : qAsConst(m_pairs)) {
        plots::share(*pair.copy, *pair.source);
        pair.copy->setPen(pair.source->pen());
        pair.copy->setBrush(pair.source->brush());
        pair.copy->setName(pair.source->name());
        if (!m_source->legend->hasItemWithPlottable(pair.source)) {
            pair.copy->removeFromLegend();
        }
    }
    markHidden();
}

CopiedCurve* PlotCopy::addCurve(const QCPGraph& source)
{
    auto* const curve = new CopiedCurve(xAxis, yAxis);
    plots::add(*this, curve);
    curve->setName(source.name());
    legend->addItem(new CopiedEntry(legend, curve));
    return curve;
}

void PlotCopy::hold()
{
    if (m_isHeld) {
        return;
    }
    m_isHeld = true;
    m_heldAt = QDateTime::currentDateTime();
    m_oldest = xAxis->range().lower;
    m_newest = xAxis->range().upper;
    m_readFrom = xAxis->range().lower;
    m_recordBegin = 0;
    m_isCut = false;
    m_isUnreadable = false;
    ++m_hold;
    for (const Pair& pair : qAsConst(m_pairs)) {
        plots::detach(*pair.copy);
        if (plots::pointsBegin(*pair.copy) != plots::pointsEnd(*pair.copy)) {
            m_oldest = std::min(m_oldest, plots::pointsBegin(*pair.copy)->key);
        }
    }
    emit viewChanged();
}

void PlotCopy::goLive()
{
    m_isHeld = false;
    m_areValuesFixed = false;
    m_heldAt = {};
    m_wanted.reset();
    m_isReading = false;
    follow();
    emit viewChanged();
}

void PlotCopy::fixValues(bool areFixed)
{
    m_areValuesFixed = areFixed;
    if (!areFixed && m_source) {
        yAxis->setRange(m_source->yAxis->range());
    }
    refresh();
    emit viewChanged();
}

void PlotCopy::moveKeys(double by)
{
    hold();
    const QCPRange range = xAxis->range();
    const double most = std::max(0.0, m_newest - range.upper);
    const double least = std::min(0.0, m_oldest - range.lower);
    const double distance = qBound(least, by * range.size(), most);
    want({range.lower + by * range.size(), range.upper + by * range.size()});
    setKeys(range.lower + distance, range.upper + distance);
    refresh();
    emit viewChanged();
}

void PlotCopy::moveValues(double by)
{
    const QCPRange range = yAxis->range();
    setValues(range.lower + by * range.size(), range.upper + by * range.size());
}

void PlotCopy::zoomKeys(double factor, double around)
{
    hold();
    QCPRange range = zoomed(xAxis->range(), factor, around);
    if (factor < 1 && range.size() < (m_showsTimes ? kMinSeconds : kMinNumbers)) {
        return;
    }
    want(range);
    setKeys(std::max(range.lower, m_oldest), std::min(range.upper, m_newest));
    refresh();
    emit viewChanged();
}

bool PlotCopy::isAtBeginning() const
{
    return m_isHeld && m_recordBegin >= m_oldest && xAxis->range().lower <= m_oldest;
}

bool PlotCopy::isAtUnreadable() const
{
    return m_isHeld && m_isUnreadable && xAxis->range().lower <= m_oldest;
}

bool PlotCopy::isAtCut() const
{
    return m_isHeld && m_isCut && xAxis->range().upper >= m_newest;
}

/// Has what is before the oldest point read, a whole range more than is wanted.
void PlotCopy::want(const QCPRange& keys)
{
    m_wanted.reset();
    if (!m_readEarlier || keys.lower >= m_oldest || m_recordBegin >= m_oldest) {
        return;
    }
    m_wanted = keys;
    if (m_isReading) {
        return;
    }
    m_isReading = true;
    const double from = std::max(m_recordBegin, keys.lower - keys.size());
    m_readEarlier(from, m_readFrom, *this,
                  [this, from, hold = m_hold](const EarlierPoints& earlier) {
                      if (m_isHeld && hold == m_hold) {
                          take(from, earlier);
                      }
                  });
}

void PlotCopy::take(double from, const EarlierPoints& earlier)
{
    m_isReading = false;
    m_isUnreadable = !earlier.isReadable;
    if (m_isUnreadable) {
        m_wanted.reset();
        emit viewChanged();
        return;
    }
    for (const EarlierCurve& curve : earlier.curves) {
        if (QCPGraph* const piece = oldestPiece(curve.name)) {
            prepend(*piece, curve, m_newest);
        }
    }
    m_readFrom = from;
    m_recordBegin = earlier.begin;
    m_oldest = std::min(m_oldest, std::max(from, m_recordBegin));
    if (m_wanted) {
        const double lower = std::max(m_wanted->lower, m_oldest);
        setKeys(lower, std::min(lower + m_wanted->size(), m_newest));
        m_wanted.reset();
    }
    dropNewest();
    refresh();
    emit viewChanged();
}

/// It is read back at the oldest end alone: the newest are the farthest from what is seen.
void PlotCopy::dropNewest()
{
    const double cut = norvo::dropNewest(*this, kMaxPoints, xAxis->range().upper);
    if (cut < m_newest) {
        m_newest = cut;
        m_isCut = true;
    }
}

/// Null: there is no such curve.
QCPGraph* PlotCopy::oldestPiece(const QString& curve) const
{
    QCPGraph* oldest = nullptr;
    double begin = std::numeric_limits<double>::infinity();
    for (const Pair& pair : m_pairs) {
        if (pair.copy->name() == curve) {
            const auto first = plots::pointsBegin(*pair.copy);
            const bool isEmpty = first == plots::pointsEnd(*pair.copy);
            if (!oldest || (!isEmpty && first->key < begin)) {
                oldest = pair.copy;
                begin = isEmpty ? begin : first->key;
            }
        }
    }
    return oldest;
}

void PlotCopy::zoomValues(double factor, double around)
{
    const QCPRange range = zoomed(yAxis->range(), factor, around);
    const double largest = std::max(std::abs(range.lower), std::abs(range.upper));
    if (factor < 1 && range.size() < largest * kMinValues) {
        return;
    }
    setValues(range.lower, range.upper);
}

void PlotCopy::setKeys(double lower, double upper)
{
    if (m_showsTimes) {
        const bool isFine = upper - lower < kSecondsInLabels;
        const QString format = isFine ? QString("hh:mm:ss.zzz") : m_timeFormat;
        if (plots::timeFormat(*xAxis) != format) {
            plots::setTimeFormat(*xAxis, format);
        }
    }
    xAxis->setRange(lower, upper);
}

void PlotCopy::setValues(double lower, double upper)
{
    m_areValuesFixed = true;
    yAxis->setRange(lower, upper);
    refresh();
    emit viewChanged();
}

void PlotCopy::toggleCurve(const QString& curve)
{
    if (!m_hidden.remove(curve)) {
        m_hidden.insert(curve);
    }
    markHidden();
    refresh();
}

/// Its name stays in the legend, struck out, to be tapped again.
void PlotCopy::markHidden()
{
    for (const Pair& pair : qAsConst(m_pairs)) {
        pair.copy->setVisible(!isHidden(pair.copy->name()));
    }
    for (int i = 0; i < legend->itemCount(); ++i) {
        if (auto* const item = qobject_cast<QCPPlottableLegendItem*>(legend->item(i))) {
            const bool isStruck = isHidden(item->plottable()->name());
            QFont font = legend->font();
            font.setStrikeOut(isStruck);
            item->setFont(font);
        }
    }
}

QCPGraph* PlotCopy::curveInLegend(const QPoint& place) const
{
    for (int i = 0; legend->visible() && i < legend->itemCount(); ++i) {
        auto* const item = qobject_cast<QCPPlottableLegendItem*>(legend->item(i));
        if (item && item->outerRect().contains(place)) {
            return qobject_cast<QCPGraph*>(item->plottable());
        }
    }
    return nullptr;
}

void PlotCopy::moveLegend(const QPoint& by)
{
    const QRectF whole = area().insetLayout()->rect();
    const QRectF box = QRectF(legend->outerRect()).translated(by);
    const double left =
        qBound(0.0, box.left() - whole.left(), std::max(0.0, whole.width() - box.width()));
    const double top =
        qBound(0.0, box.top() - whole.top(), std::max(0.0, whole.height() - box.height()));
    area().insetLayout()->setInsetPlacement(0, QCPLayoutInset::ipFree);
    area().insetLayout()->setInsetRect(0, {left / whole.width(), top / whole.height(),
                                           box.width() / whole.width(),
                                           box.height() / whole.height()});
    refresh();
}

void PlotCopy::refresh()
{
    replot(plots::kReplotQueued);
}

} // namespace norvo
