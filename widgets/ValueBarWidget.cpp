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
    if (clip.boundingRect().bottom() >= geometry::scaleRegion(size(), m_scaleHeight).top() - 1) {
        m_scale->draw(painter);
    }
}

QImage ValueBarWidget::panelOn(const QColor& background, int pixelScale)
{
    QImage image(size() * pixelScale, QImage::Format_RGB32);
    image.setDevicePixelRatio(pixelScale);
    image.fill(background);
    QPainter painter(&image);
    drawPanel(painter, m_maskRegion);
    return image;
}

void ValueBarWidget::renderCache(int pixelScale)
{
    const QImage onBlack = panelOn(Qt::black, pixelScale);
    const QImage onWhite = panelOn(Qt::white, pixelScale);
    QRegion seeThrough;
    const QRegion edges = m_maskRegion & geometry::corners(size());
    for (const QRect& rect : edges) {
        for (int y = rect.top() * pixelScale; y < (rect.bottom() + 1) * pixelScale; ++y) {
            for (int x = rect.left() * pixelScale; x < (rect.right() + 1) * pixelScale; ++x) {
                if (onBlack.pixel(x, y) != onWhite.pixel(x, y)) {
                    seeThrough += QRect(x / pixelScale, y / pixelScale, 1, 1);
                }
            }
        }
    }
    const QRect upperHalf(0, 0, width(), height() / 2);
    m_seeThrough[0] = seeThrough & upperHalf;
    m_seeThrough[1] = seeThrough - upperHalf;

    m_cache = QPixmap(size() * pixelScale);
    m_cache.setDevicePixelRatio(pixelScale);
    m_cache.fill(Qt::transparent);
    QPainter painter(&m_cache);
    painter.setClipRegion(m_maskRegion - seeThrough);
    painter.drawImage(0, 0, onBlack);
}

void ValueBarWidget::drawCachedPanel(QPainter& painter, int pixelScale)
{
    if (m_cache.isNull() || m_cache.devicePixelRatioF() != pixelScale) {
        renderCache(pixelScale);
    }
    painter.drawPixmap(0, 0, m_cache);
    for (const QRegion& part : m_seeThrough) {
        if (!part.isEmpty()) {
            m_scale->setVisiblePart(part);
            drawPanel(painter, part);
        }
    }
    m_scale->setVisiblePart({});
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
