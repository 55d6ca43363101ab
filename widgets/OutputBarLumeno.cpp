// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/OutputBarLumeno.h"

#include "devices/Decimals.h"
#include "norvo/Truncation.h"
#include "widgets/GaugePainting.h"
#include "widgets/Looks.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QPainter>
#include <QTimer>

#include <algorithm>

namespace geometry = norvo::lumeno;

namespace {

constexpr int kRefreshMs = 1000;
constexpr int kMinWidth = 80;

/// `text` without anything that would break or widen a line.
QString inOneLine(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.isSpace(); }, QChar(' '));
    return text;
}

/// Seconds since the epoch, the fraction in milliseconds, by a clock that cannot be set.
double secondsSinceEpoch()
{
    static const qint64 start =
        QDateTime::currentMSecsSinceEpoch() - QDeadlineTimer::current().deadline();
    const qint64 ms = start + QDeadlineTimer::current().deadline();
    const qint64 wholeSeconds = ms / 1000;
    return double(wholeSeconds) + double(ms % 1000) * 0.001;
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
    m_units = norvo::staticLine(inOneLine(getParam(LumenoBarDevice::kUnits)), m_textFont);
    m_name = getParam(LumenoBarDevice::kName).value();
    m_scale = {getParam(LumenoBarDevice::kMinValue), getParam(LumenoBarDevice::kMaxValue),
               getParam(LumenoBarDevice::kDigitsStep), getParam(LumenoBarDevice::kDashesStep)};
    m_textHeight = QFontMetrics(m_textFont).height();
    m_valueHeight = QFontMetrics(m_valueFont).height();
    m_laidOutHeight = -1;
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

/// As a text in a box comes out by default: wrapped in it and cut off at its edges.
OutputBarLumeno::Text OutputBarLumeno::number(double value, double y) const
{
    const QFontMetrics metrics(m_textFont);
    const QString digits = (value >= 0.0 ? " " : "") + QString::number(value, 'f', m_precision);
    Text text{geometry::digitBox(y, geometry::scaledBarWidth(m_barWidth),
                                 metrics.horizontalAdvance(digits), metrics.height()),
              QStaticText(digits), false};
    text.text.setTextFormat(Qt::PlainText);
    text.text.setTextWidth(text.box.width());
    text.text.prepare({}, m_textFont);
    text.isClipped = !text.box.contains(QRectF(text.box.topLeft(), text.text.size()));
    return text;
}

void OutputBarLumeno::layOut()
{
    m_laidOutHeight = height();
    const QFontMetrics metrics(m_textFont);
    const double usedHeight = geometry::usedHeight(height(), !m_name.isEmpty());
    const int barWidth = geometry::scaledBarWidth(m_barWidth);
    m_axis = geometry::valueAxis(m_scale, usedHeight, metrics.height());
    m_dashes = geometry::shortDashes(m_scale, m_axis, barWidth);
    m_texts.clear();
    norvo::MarksPerPixel numbers(norvo::kMaxNumbersPerPixel);
    for (const auto& [value, y] : geometry::digits(m_scale, m_axis)) {
        m_dashes.append(geometry::longDash(y, barWidth));
        if (numbers.admit(m_dashes.last().y1())) {
            m_texts.push_back(number(value, y));
        }
    }
    const QStringList lines = geometry::captionLines(m_name);
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = inOneLine(lines[i]);
        const QRectF box = geometry::captionBox(i, lines.size(), usedHeight,
                                                metrics.horizontalAdvance(line), metrics.height());
        m_texts.push_back({box, norvo::staticLine(line, m_textFont), false});
    }
}

void OutputBarLumeno::drawScale(QPainter& painter) const
{
    painter.setPen(m_textColor);
    painter.setFont(m_textFont);
    // One by one: together they would be filled as one shape where they are scaled.
    for (const QLine& dash : m_dashes) {
        painter.drawLine(dash);
    }
    for (const Text& text : m_texts) {
        if (text.isClipped) {
            painter.save();
            painter.setClipRect(text.box, Qt::IntersectClip);
        }
        painter.drawStaticText(text.box.topLeft(), text.text);
        if (text.isClipped) {
            painter.restore();
        }
    }
}

void OutputBarLumeno::drawBar(QPainter& painter) const
{
    const QRectF bar = geometry::bar(m_history.latestValue(), m_axis, m_barWidth, m_valueHeight);
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
    painter.drawStaticText(geometry::unitsPosition(width, m_valueHeight, m_textHeight), m_units);
}

void OutputBarLumeno::drawTrace(QPainter& painter)
{
    painter.translate(-GaugeHistory::kTraceWidth - 0.5 * geometry::scaledBarWidth(m_barWidth), 0.0);
    painter.setPen(m_accentColor);
    painter.drawPolyline(m_history.trace(secondsSinceEpoch(), m_axis));
}

void OutputBarLumeno::paintEvent(QPaintEvent*)
{
    if (!isInitialised() || m_fontSize < 1) {
        return;
    }
    setMinimumWidth(kMinWidth);
    if (height() != m_laidOutHeight) {
        layOut();
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(rect()); // Changes nothing, but lets Qt draw thin lines without spans.
    painter.translate(width() * 0.5, 0.0);
    drawScale(painter);
    if (!m_history.isEmpty()) {
        drawBar(painter);
    }
    drawValue(painter);
    if (m_history.size() >= 2) {
        drawTrace(painter);
    }
}
