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
    m_panel = QPixmap();
    setInitialised(false);
}

void ValueBarWidget::SetThreshold(double low, double high)
{
    if (m_scale) {
        m_scale->setGreenZone(low, high);
        m_panel = QPixmap();
    }
}

void ValueBarWidget::customHeight(double scaleHeight, double)
{
    m_scaleHeight = clampedShare(scaleHeight);
    m_panel = QPixmap();
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
    m_panel = QPixmap();
}

void ValueBarWidget::updateScale(QPainter& painter)
{
    if (!m_scale) {
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRegion(m_maskRegion);
    painter.setBrush(QColor("#F5F5E6"));
    painter.setPen(QColor("#808080"));
    painter.drawRoundedRect(geometry::panel(size()), geometry::kCornerRadius,
                            geometry::kCornerRadius);
    m_scale->setRegion(geometry::scaleRegion(size(), m_scaleHeight));
    m_scale->draw(painter);
}

void ValueBarWidget::renderPanel(int pixelScale)
{
    m_panel = QPixmap(size() * pixelScale);
    m_panel.setDevicePixelRatio(pixelScale);
    m_panel.fill(Qt::transparent);
    QPainter painter(&m_panel);
    updateScale(painter);
}

void ValueBarWidget::drawPointer(QPainter& painter)
{
    double start = 0.0;
    double end = 0.0;
    m_scale->getValuePxRange(start, end);
    if (!std::isfinite(m_normalised)) {
        return;
    }
    const QPolygon pointer = geometry::pointer(size(), m_arrowHeight, start, end, m_normalised);
    const QRect room = pointer.boundingRect().adjusted(-3, -3, 3, 3);
    if (geometry::panel(size()).contains(room) && !geometry::corners(size()).intersects(room)) {
        painter.setClipping(false); // Costs less than a clip that would change nothing.
    } else {
        painter.setClipRegion(m_maskRegion);
    }
    painter.setPen(QPen(QColor("#3C3C3C"), 2));
    painter.setBrush(Qt::black);
    painter.drawPolygon(pointer);
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
    if (pixelScale == 0) {
        updateScale(painter);
    } else {
        if (!m_cached || m_panel.isNull() || m_panel.devicePixelRatioF() != pixelScale) {
            renderPanel(pixelScale);
        }
        painter.drawPixmap(0, 0, m_panel);
    }
    drawPointer(painter);
}

void ValueBarWidget::resizeEvent(QResizeEvent*)
{
    m_maskDirty = true;
}
