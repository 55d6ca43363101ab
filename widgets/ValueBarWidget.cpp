// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ValueBarWidget.h"

#include "widgets/Looks.h"
#include "widgets/ValueBarGeometry.h"

#include <QBitmap>
#include <QPainter>

#include <cmath>

namespace geometry = norvo::valuebar;
namespace Looks = norvo::Looks;

namespace {

/// A share of a height; what is no number counts as 0.
double clampedShare(double share)
{
    return share > 0.0 ? qMin(share, 1.0) : 0.0;
}

/// How many device pixels the painter gives to each pixel of the widget; 0 where that is no whole
/// number, or the picture is turned or lies between pixels, so that a pixmap would come out
/// blurred.
int wholePixelScale(const QPainter& painter)
{
    const QTransform& transform = painter.deviceTransform();
    const int scale = int(qBound(1.0, transform.m11(), 8.0));
    const QTransform whole(scale, 0, 0, scale, std::floor(transform.dx()),
                           std::floor(transform.dy()));
    return transform == whole ? scale : 0;
}

} // namespace

void ValueBarWidget::build(OutputBarDevice& bar)
{
    m_minValue = getParam(OutputBarDevice::kMinValue);
    m_maxValue = getParam(OutputBarDevice::kMaxValue);
    m_scaleHeight = clampedShare(getParam(OutputBarDevice::kScaleHeight));
    m_arrowHeight = clampedShare(getParam(OutputBarDevice::kArrowHeight));

    connect(&bar, SIGNAL(output(double)), this, SLOT(input(double)));
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
    m_mask = QRegion(picture.createMaskFromColor(QColor(Qt::white).rgb(), Qt::MaskOutColor));
    m_panel = QPixmap();
}

void ValueBarWidget::updateScale(QPainter& painter)
{
    if (m_scale) {
        drawPanel(painter);
        m_scale->drawText(painter);
    }
}

void ValueBarWidget::drawPanel(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRegion(m_mask);
    painter.setBrush(Looks::kPanel);
    painter.setPen(Looks::kPanelEdge);
    painter.drawRoundedRect(geometry::panel(size()), geometry::kCornerRadius,
                            geometry::kCornerRadius);
    m_scale->setRegion(geometry::scaleRegion(size(), m_scaleHeight));
    m_scale->drawZones(painter);
    m_scale->drawDashes(painter);
}

void ValueBarWidget::drawPanelPixmap(QPainter& painter, int pixelScale)
{
    if (m_panel.isNull() || m_panel.devicePixelRatioF() != pixelScale) {
        m_panel = QPixmap(size() * pixelScale);
        m_panel.setDevicePixelRatio(pixelScale);
        m_panel.fill(Qt::transparent);
        QPainter panelPainter(&m_panel);
        drawPanel(panelPainter);
    }
    painter.drawPixmap(0, 0, m_panel);
    painter.setClipRegion(m_mask);
}

void ValueBarWidget::drawPointer(QPainter& painter)
{
    double start = 0.0;
    double end = 0.0;
    m_scale->getValuePxRange(start, end);
    if (!std::isfinite(m_normalised)) {
        return;
    }
    painter.setPen(Looks::kPointerEdge);
    painter.setBrush(Looks::kPointer);
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
    if (pixelScale > 0) {
        drawPanelPixmap(painter, pixelScale);
    } else {
        drawPanel(painter);
    }
    m_scale->drawText(painter);
    drawPointer(painter);
}

void ValueBarWidget::resizeEvent(QResizeEvent*)
{
    m_maskDirty = true;
}
