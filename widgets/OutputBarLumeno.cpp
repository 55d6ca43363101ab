// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/OutputBarLumeno.h"

#include "devices/Decimals.h"
#include "norvo/Truncation.h"
#include "widgets/Looks.h"
#include "widgets/LumenoGeometry.h"
#include "widgets/OneLine.h"

#include <QPainter>
#include <QTimer>

#include <chrono>

namespace geometry = norvo::lumeno;

namespace {

constexpr int kRefreshMs = 1000;
constexpr int kMinWidth = 80;

/// Seconds since the epoch, the fraction in milliseconds, by a clock that cannot be set.
double secondsSinceEpoch()
{
    using namespace std::chrono;
    static const auto start =
        system_clock::now().time_since_epoch() - steady_clock::now().time_since_epoch();
    const auto now = start + steady_clock::now().time_since_epoch();
    const auto ms = duration_cast<milliseconds>(now).count();
    const auto seconds = ms / 1000; // Whole ones.
    return double(seconds) + double(ms % 1000) * 0.001;
}

} // namespace

OutputBarLumeno::OutputBarLumeno(BaseGuiDevice* device, QWidget* parent)
    : DeviceView(device, parent)
{
    setMinimumWidth(kMinWidth);
}

void OutputBarLumeno::build(LumenoBarDevice& bar)
{
    readParameters();
    connect(&bar, SIGNAL(output(double)), this, SLOT(input(double)));
    m_refreshTimer = new QTimer(this);
    connect(m_refreshTimer, SIGNAL(timeout()), this, SLOT(update()));
    m_accentColor = palette().color(QPalette::Current, QPalette::Highlight);
    m_textColor = palette().color(QPalette::Current, QPalette::Text);
    m_refreshTimer->start(kRefreshMs);

    setMinimumSize(70, 150);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void OutputBarLumeno::readParameters()
{
    m_precision = norvo::decimals(getParam(LumenoBarDevice::kPrecision));
    m_fontSize = getParam(LumenoBarDevice::kFontSize);
    m_barWidth = getParam(LumenoBarDevice::kBarWidth);
    m_textFont = norvo::Looks::gaugeFont(m_fontSize);
    m_valueFont = norvo::Looks::gaugeFont(norvo::truncatedToInt(m_fontSize * 1.5));
    m_valueFont.setBold(true);
    m_units = norvo::staticLine(norvo::inOneLine(getParam(LumenoBarDevice::kUnits)), m_textFont);
    m_scale.setSettings(
        {{getParam(LumenoBarDevice::kMinValue), getParam(LumenoBarDevice::kMaxValue),
          getParam(LumenoBarDevice::kDigitsStep), getParam(LumenoBarDevice::kDashesStep)},
         m_precision,
         m_barWidth,
         getParam(LumenoBarDevice::kName),
         m_textFont});
}

void OutputBarLumeno::deinitialise()
{
    if (m_refreshTimer) {
        m_refreshTimer->stop();
    }
}

void OutputBarLumeno::changeEvent(QEvent*)
{
    m_textColor = palette().color(QPalette::Current, QPalette::Text);
}

void OutputBarLumeno::input(double value)
{
    m_history.insert(secondsSinceEpoch(), value);
    update();
}

void OutputBarLumeno::update()
{
    if (!isInitialised()) {
        return;
    }
    m_history.prune(secondsSinceEpoch());
    QWidget::update();
}

void OutputBarLumeno::drawBar(QPainter& painter) const
{
    const QRectF bar = geometry::bar(m_history.latestValue(), m_scale.axis(), m_barWidth,
                                     QFontMetrics(m_valueFont).height());
    painter.fillRect(bar.normalized(), m_accentColor);
}

void OutputBarLumeno::drawValue(QPainter& painter) const
{
    const QString text =
        m_history.isEmpty() ? "-" : QString::number(m_history.latestValue(), 'f', m_precision);
    const QFontMetrics metrics(m_valueFont);
    const int width = metrics.horizontalAdvance(text);
    painter.setPen(m_accentColor);
    painter.setFont(m_valueFont);
    painter.drawText(geometry::valuePosition(width) + QPointF(0.0, metrics.ascent()), text);

    painter.setPen(m_textColor);
    painter.setFont(m_textFont);
    painter.drawStaticText(
        geometry::unitsPosition(width, metrics.height(), QFontMetrics(m_textFont).height()),
        m_units);
}

void OutputBarLumeno::drawTrace(QPainter& painter)
{
    painter.translate(-GaugeHistory::kTraceWidth - 0.5 * geometry::scaledBarWidth(m_barWidth), 0.0);
    painter.setPen(m_accentColor);
    painter.drawPolyline(m_history.trace(secondsSinceEpoch(), m_scale.axis()));
}

void OutputBarLumeno::paintEvent(QPaintEvent*)
{
    if (!isInitialised() || m_fontSize < 1) {
        return;
    }
    setMinimumWidth(kMinWidth);
    m_scale.setHeight(height());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() * 0.5, 0.0);
    painter.setPen(m_textColor);
    m_scale.draw(painter);
    if (!m_history.isEmpty()) {
        drawBar(painter);
    }
    drawValue(painter);
    if (m_history.size() >= 2) {
        drawTrace(painter);
    }
}
