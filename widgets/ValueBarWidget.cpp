#include "widgets/ValueBarWidget.h"

#include "devices/OutputBarDevice.h"
#include "widgets/InnerControl.h"
#include "widgets/Pixels.h"
#include "widgets/ValueBarGeometry.h"

#include <QPainter>

#include <cmath>

namespace geometry = norvo::valuebar;

namespace {

/// A share of a height; what is no number counts as 0.
double clampedShare(double share)
{
    return share > 0.0 ? qMin(share, 1.0) : 0.0;
}

} // namespace

ValueBarWidget::ValueBarWidget(BaseGuiDevice* device, QWidget* parent) : BaseWidget(device, parent)
{}

ValueBarWidget::~ValueBarWidget() = default;

void ValueBarWidget::initialise()
{
    auto* bar = compatibleDevice<OutputBarDevice>(device(), *this);
    if (!bar) {
        return;
    }
    m_minValue = getParam(OutputBarDevice::kMinValue);
    m_maxValue = getParam(OutputBarDevice::kMaxValue);
    m_scaleHeight = clampedShare(getParam(OutputBarDevice::kScaleHeight));
    m_arrowHeight = clampedShare(getParam(OutputBarDevice::kArrowHeight));

    connect(bar, SIGNAL(output(double)), this, SLOT(input(double)));
    setUpdatesEnabled(true);

    m_scale = std::make_unique<ScaleDraw>(
        m_minValue, m_maxValue, getParam(OutputBarDevice::kDigitsStep),
        getParam(OutputBarDevice::kDashesStep), getParam(OutputBarDevice::kPrecision));
    SetThreshold(getParam(OutputBarDevice::kMinThreshold),
                 getParam(OutputBarDevice::kMaxThreshold));
    m_maskDirty = true;
    setInitialised(true);
    input(0.0);
}

void ValueBarWidget::deinitialise()
{
    m_scale.reset();
    m_mask.reset();
    m_cache = QPixmap();
    setInitialised(false);
}

void ValueBarWidget::SetThreshold(double low, double high)
{
    if (m_scale) {
        m_scale->setGreenZone(low, high);
        m_cache = QPixmap();
    }
}

void ValueBarWidget::customHeight(double scaleHeight, double)
{
    m_scaleHeight = clampedShare(scaleHeight);
    m_cache = QPixmap();
}

void ValueBarWidget::input(double value)
{
    if (!isInitialised()) {
        return;
    }
    m_normalised = (value - m_minValue) / std::abs(m_maxValue - m_minValue);
    update();
}

void ValueBarWidget::updateMask()
{
    QPixmap picture(qMax(width(), 1), qMax(height(), 1));
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(geometry::panel(size()), geometry::kCornerRadius,
                            geometry::kCornerRadius);
    painter.end();
    m_mask = std::make_unique<QBitmap>(
        picture.createMaskFromColor(QColor(Qt::white).rgb(), Qt::MaskOutColor));
    m_maskRegion = QRegion(*m_mask);
    m_cache = QPixmap();
}

void ValueBarWidget::updateScale(QPainter& painter)
{
    if (m_scale) {
        drawPanel(painter, m_maskRegion);
    }
}

void ValueBarWidget::drawPanel(QPainter& painter, const QRegion& clip)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRegion(clip);
    painter.setBrush(QColor("#F5F5E6"));
    painter.setPen(QColor("#808080"));
    painter.drawRoundedRect(geometry::panel(size()), geometry::kCornerRadius,
                            geometry::kCornerRadius);
    m_scale->setRegion(geometry::scaleRegion(size(), m_scaleHeight));
    m_scale->draw(painter);
}

void ValueBarWidget::renderCache(int pixelScale)
{
    m_cache = QPixmap(size() * pixelScale);
    m_cache.setDevicePixelRatio(pixelScale);
    m_cache.fill(Qt::black);
    QPainter painter(&m_cache);
    drawPanel(painter, m_maskRegion);
}

void ValueBarWidget::drawCachedPanel(QPainter& painter, int pixelScale)
{
    if (m_cache.isNull() || m_cache.devicePixelRatioF() != pixelScale) {
        renderCache(pixelScale);
    }
    const QRegion corners = m_maskRegion & geometry::corners(size());
    painter.setClipRegion(m_maskRegion - corners);
    painter.drawPixmap(0, 0, m_cache);

    m_scale->setVisiblePart(corners);
    drawPanel(painter, corners);
    m_scale->setVisiblePart({});
    painter.setClipRegion(m_maskRegion);
}

void ValueBarWidget::drawPointer(QPainter& painter)
{
    double start = 0.0;
    double end = 0.0;
    m_scale->getValuePxRange(start, end);
    if (!std::isfinite(m_normalised)) {
        return;
    }
    painter.setPen(QPen(QColor("#3C3C3C"), 2));
    painter.setBrush(Qt::black);
    painter.drawPolygon(geometry::pointer(size(), m_arrowHeight, start, end, m_normalised));
}

void ValueBarWidget::paintEvent(QPaintEvent*)
{
    if (!m_scale) {
        return;
    }
    if (m_maskDirty) {
        updateMask();
        m_maskDirty = false;
    }
    if (geometry::panel(size()).isEmpty()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int pixelScale = wholePixelScale(painter);
    if (m_cached && pixelScale > 0) {
        drawCachedPanel(painter, pixelScale);
    } else {
        updateScale(painter);
    }
    drawPointer(painter);
}

void ValueBarWidget::resizeEvent(QResizeEvent*)
{
    m_maskDirty = true;
}
