// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ValueBarWidget.h"

#include "widgets/Looks.h"
#include "widgets/ValueBarGeometry.h"

#include <QBitmap>
#include <QImage>
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

QPixmap opaque(const QPixmap& picture)
{
    return QPixmap::fromImage(picture.toImage().convertToFormat(QImage::Format_RGB32));
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
    m_panel.clear();
    setInitialised(false);
}

void ValueBarWidget::SetThreshold(double low, double high)
{
    if (m_scale) {
        m_scale->setGreenZone(low, high);
        m_panel.clear();
    }
}

void ValueBarWidget::customHeight(double scaleHeight, double)
{
    m_scaleHeight = clampedShare(scaleHeight);
    m_panel.clear();
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
    m_panel.clear();
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

void ValueBarWidget::makePanelPixmaps(int pixelScale)
{
    QPixmap whole(size() * pixelScale);
    whole.setDevicePixelRatio(pixelScale);
    whole.fill(Qt::transparent);
    QPainter painter(&whole);
    drawPanel(painter);
    painter.end();
    const auto part = [&](const QRect& area) {
        return whole.copy(QRect(area.topLeft() * pixelScale, area.size() * pixelScale));
    };
    m_panel.clear();
    const QRect between = geometry::panelRowsBetweenCorners(size());
    if (between.isEmpty()) {
        m_panel.push_back({QPoint(), whole});
        return;
    }
    const int bottom = between.y() + between.height();
    m_panel.push_back({QPoint(), part({0, 0, width(), between.y()})});
    m_panel.push_back({between.topLeft(), opaque(part(between))});
    m_panel.push_back({QPoint(0, bottom), part({0, bottom, width(), height() - bottom})});
}

void ValueBarWidget::drawPanelPixmaps(QPainter& painter, int pixelScale)
{
    if (m_panel.empty() || m_panel.front().second.devicePixelRatioF() != pixelScale) {
        makePanelPixmaps(pixelScale);
    }
    for (const auto& [topLeft, pixmap] : m_panel) {
        painter.drawPixmap(topLeft, pixmap);
    }
}

QPolygon ValueBarWidget::pointer() const
{
    double start = 0.0;
    double end = 0.0;
    m_scale->getValuePxRange(start, end);
    return std::isfinite(m_normalised)
               ? geometry::pointer(size(), m_arrowHeight, start, end, m_normalised)
               : QPolygon();
}

void ValueBarWidget::clipToPanel(QPainter& painter, const QRect& drawn) const
{
    const QRect columns = geometry::panelColumnsBetweenCorners(size());
    if (drawn.left() >= columns.left() && drawn.right() <= columns.right()) {
        painter.setClipRect(columns); // Costs less than the mask.
    } else {
        painter.setClipRegion(m_mask);
    }
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
        drawPanelPixmaps(painter, pixelScale);
    } else {
        drawPanel(painter);
    }
    const QPolygon pointer = this->pointer(); // Of the scale as it was laid out just now.
    if (pixelScale > 0) {
        clipToPanel(painter, pointer.boundingRect().adjusted(-2, 0, 2, 0) | m_scale->numbersBox());
    }
    m_scale->drawText(painter);
    painter.setPen(Looks::kPointerEdge);
    painter.setBrush(Looks::kPointer);
    painter.drawPolygon(pointer);
}

void ValueBarWidget::resizeEvent(QResizeEvent*)
{
    m_maskDirty = true;
}
