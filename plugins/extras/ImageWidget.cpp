// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/ImageWidget.h"

#include "plugins/extras/ImageDevice.h"

#include <QPainter>

namespace {

constexpr QSize kMinSize(160, 120);

} // namespace

ImageWidget::ImageWidget(ImageDevice* device, QWidget* parent)
    : BaseWidget(device, parent), m_device(device)
{}

void ImageWidget::initialise()
{
    m_scaling = getParam(ImageDevice::kScaling).value();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(kMinSize);
    connect(&m_device->feed(), &PictureFeed::arrived, this, qOverload<>(&QWidget::update));
    connect(m_device, &ImageDevice::shown, this, qOverload<>(&QWidget::update));
    setInitialised(true);
}

QRect ImageWidget::place(const QSize& picture) const
{
    if (m_scaling == ImageDevice::kStretch) {
        return rect();
    }
    QSize size = picture;
    if (m_scaling != ImageDevice::kNone) {
        size.scale(this->size(), Qt::KeepAspectRatio);
    }
    QRect place(QPoint(), size);
    place.moveCenter(rect().center());
    return place;
}

void ImageWidget::paintEvent(QPaintEvent* /*event*/)
{
    if (!m_device) {
        return;
    }
    QPainter painter(this);
    const QImage& image = m_device->feed().image();
    if (!image.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place(image.size()), image);
    }
    if (image.isNull() || m_device->isStale()) {
        painter.fillRect(rect(), QColor(0, 0, 0, 200));
        QFont large = font();
        large.setPointSize(16);
        painter.setFont(large);
        painter.setPen(Qt::white);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         image.isNull() ? QStringLiteral("No picture")
                                        : QStringLiteral("No new picture"));
    }
}
