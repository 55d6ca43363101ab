#include "widgets/OutputBarLumeno.h"

#include "devices/Decimals.h"
#include "devices/LumenoBarDevice.h"
#include "norvo/Truncation.h"
#include "widgets/InnerControl.h"
#include "widgets/Pixels.h"

#include <QDateTime>
#include <QPainter>
#include <QTimer>

#include <cmath>

namespace geometry = norvo::lumeno;

namespace {

constexpr int kRefreshMs = 1000;
constexpr int kLeastWidth = 80;
constexpr int kLargestFont = 4096; ///< Pixels: beyond any screen.
constexpr double kTraceWidth = 40.0;

/// Seconds since the epoch; the fraction counts milliseconds.
double secondsSinceEpoch()
{
    const qint64 ms = QDateTime::currentMSecsSinceEpoch();
    return double(ms / 1000) + double(ms % 1000) * 0.001;
}

QFont robotoFont(int pixelSize)
{
    QFont font("Roboto");
    font.setPixelSize(qBound(1, pixelSize, kLargestFont));
    return font;
}

/// In one line, whatever blanks and line feeds the text holds.
void drawOneLine(QPainter& painter, const QRectF& box, const QString& text)
{
    painter.drawText(box, Qt::AlignLeft | Qt::TextSingleLine | Qt::TextDontClip, text);
}

} // namespace

OutputBarLumeno::OutputBarLumeno(BaseGuiDevice* device, QWidget* parent)
    : BaseWidget(device, parent)
{
    setMinimumWidth(kLeastWidth);
}

void OutputBarLumeno::initialise()
{
    auto* bar = compatibleDevice<LumenoBarDevice>(device(), *this);
    if (!bar) {
        return;
    }
    m_precision = norvo::decimals(getParam(LumenoBarDevice::kPrecision));
    m_scale.digitsStep = getParam(LumenoBarDevice::kDigitsStep);
    m_scale.dashesStep = getParam(LumenoBarDevice::kDashesStep);
    m_scale.min = getParam(LumenoBarDevice::kMinValue);
    m_scale.max = getParam(LumenoBarDevice::kMaxValue);
    m_fontSize = getParam(LumenoBarDevice::kFontSize);
    m_barWidth = getParam(LumenoBarDevice::kBarWidth);
    m_name = getParam(LumenoBarDevice::kName).value();
    m_units = getParam(LumenoBarDevice::kUnits).value();
    m_textFont = robotoFont(m_fontSize);
    m_valueFont = robotoFont(norvo::truncatedToInt(m_fontSize * 1.5));
    m_valueFont.setBold(true);
    m_cache = QPixmap();

    connect(bar, SIGNAL(output(double)), this, SLOT(input(double)));
    m_refreshTimer = new QTimer(this);
    connect(m_refreshTimer, SIGNAL(timeout()), this, SLOT(update()));
    m_accentColor = palette().color(QPalette::Current, QPalette::Highlight);
    m_textColor = palette().color(QPalette::Current, QPalette::Text);
    m_refreshTimer->start(kRefreshMs);

    setMinimumSize(70, 150);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setInitialised(true);
}

void OutputBarLumeno::deinitialise()
{
    if (m_refreshTimer) {
        m_refreshTimer->stop();
    }
}

void OutputBarLumeno::changeEvent(QEvent*)
{
    const QColor colour = palette().color(QPalette::Current, QPalette::Text);
    if (m_textColor != colour) {
        m_textColor = colour;
        m_cache = QPixmap();
    }
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

GaugeHistory::ValueAxis OutputBarLumeno::valueAxis() const
{
    return geometry::valueAxis(m_scale, geometry::usedHeight(height(), !m_name.isEmpty()),
                               QFontMetrics(m_textFont).height());
}

QString OutputBarLumeno::numberText(double value) const
{
    return QString::number(value, 'f', m_precision);
}

void OutputBarLumeno::drawScale(QPainter& painter) const
{
    const QFontMetrics metrics(m_textFont);
    const GaugeHistory::ValueAxis axis = valueAxis();
    const int barWidth = geometry::scaledBarWidth(m_barWidth);
    const double usedHeight = geometry::usedHeight(height(), !m_name.isEmpty());

    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() * 0.5, 0.0);
    painter.setFont(m_textFont);
    painter.setPen(m_textColor);
    painter.drawLines(geometry::shortDashes(m_scale, axis, barWidth));
    const auto digits = geometry::digits(m_scale, axis);
    for (const geometry::Digit& digit : digits) {
        const QString text = (digit.value >= 0.0 ? " " : "") + numberText(digit.value);
        drawOneLine(painter,
                    geometry::digitBox(digit.y, barWidth, metrics.horizontalAdvance(text),
                                       metrics.height()),
                    text);
        painter.drawLine(geometry::longDash(digit.y, barWidth));
    }
    const QStringList lines = geometry::captionLines(m_name);
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = QString(lines[i]).replace('\n', ' ');
        drawOneLine(painter,
                    geometry::captionBox(i, lines.size(), usedHeight,
                                         metrics.horizontalAdvance(line), metrics.height()),
                    line);
    }
    painter.translate(-width() * 0.5, 0.0);
}

void OutputBarLumeno::drawScalePixmap(QPainter& painter, int pixelScale)
{
    const QSize wanted = size() * pixelScale;
    if (!m_cached || m_cache.size() != wanted || m_cache.devicePixelRatioF() != pixelScale) {
        m_cache = QPixmap(wanted);
        m_cache.setDevicePixelRatio(pixelScale);
        m_cache.fill(Qt::transparent);
        QPainter pixmapPainter(&m_cache);
        drawScale(pixmapPainter);
    }
    painter.drawPixmap(0, 0, m_cache);
}

void OutputBarLumeno::drawBar(QPainter& painter, int valueTextHeight) const
{
    const QRectF bar =
        geometry::bar(m_history.latestValue(), valueAxis(), m_barWidth, valueTextHeight);
    painter.fillRect(bar.normalized(), m_accentColor);
}

void OutputBarLumeno::drawValue(QPainter& painter) const
{
    const QFontMetrics valueMetrics(m_valueFont);
    if (!m_history.isEmpty()) {
        drawBar(painter, valueMetrics.height());
    }

    const QString text = m_history.isEmpty() ? "-" : numberText(m_history.latestValue());
    const int width = valueMetrics.horizontalAdvance(text);
    painter.setPen(m_accentColor);
    painter.setFont(m_valueFont);
    drawOneLine(painter, geometry::valueBox(width, valueMetrics.height()), text);

    const QFontMetrics unitsMetrics(m_textFont);
    painter.setPen(m_textColor);
    painter.setFont(m_textFont);
    drawOneLine(painter,
                geometry::unitsBox(width, valueMetrics.height(),
                                   unitsMetrics.horizontalAdvance(m_units), unitsMetrics.height()),
                m_units);
}

void OutputBarLumeno::drawTrace(QPainter& painter)
{
    if (m_history.size() < 2) {
        return;
    }
    const double now = secondsSinceEpoch();
    const QPolygonF line = m_cached ? m_history.reducedTrace(now, kTraceWidth, valueAxis())
                                    : m_history.trace(now, kTraceWidth, valueAxis());
    painter.translate(-kTraceWidth - 0.5 * geometry::scaledBarWidth(m_barWidth), 0.0);
    painter.setPen(m_accentColor);
    painter.drawPolyline(line);
}

void OutputBarLumeno::paintEvent(QPaintEvent*)
{
    if (!isInitialised() || m_fontSize < 1) {
        return;
    }
    setMinimumWidth(kLeastWidth);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int pixelScale = wholePixelScale(painter);
    if (pixelScale > 0) {
        drawScalePixmap(painter, pixelScale);
    } else {
        drawScale(painter);
    }
    painter.translate(width() * 0.5, 0.0);
    drawValue(painter);
    drawTrace(painter);
}
