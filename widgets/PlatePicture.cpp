// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlatePicture.h"

#include <QHash>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>

namespace {

constexpr int kCorner = 8; ///< What is round, and more.
constexpr QSize kSmall(2 * kCorner, 2 * kCorner);
constexpr QSize kLarge(5 * kCorner, 4 * kCorner);

template <class Draw>
QImage imageOf(const QSize& size, const Draw& draw)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    draw(painter, size);
    return image;
}

} // namespace

const PlatePicture& PlatePicture::of(const QWidget& plate)
{
    static QHash<QString, PlatePicture> pictures;
    auto picture = pictures.constFind(plate.styleSheet());
    if (picture == pictures.constEnd()) {
        picture = pictures.insert(plate.styleSheet(), PlatePicture(plate));
    }
    return *picture;
}

bool PlatePicture::canBeDrawnBy(const QPainter& painter, const QSize& size)
{
    const QTransform& toDevice = painter.deviceTransform();
    return toDevice.type() <= QTransform::TxTranslate &&
           toDevice.map(QPoint()) == toDevice.map(QPointF()) && size.width() >= kSmall.width() &&
           size.height() >= kSmall.height();
}

PlatePicture::PlatePicture(const QWidget& plate)
{
    const auto drawByStyle = [&plate](QPainter& painter, const QSize& size) {
        QStyleOption option;
        option.initFrom(&plate);
        option.rect = QRect(QPoint(), size);
        plate.style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, &plate);
    };
    m_corners = imageOf(kSmall, drawByStyle);
    m_edge = m_corners.pixelColor(kCorner, 0);
    m_ground = m_corners.pixelColor(kCorner, kCorner);
    const QImage ours =
        imageOf(kLarge, [this](QPainter& painter, const QSize& size) { draw(painter, size); });
    if (ours != imageOf(kLarge, drawByStyle)) {
        m_corners = {};
    }
}

void PlatePicture::draw(QPainter& painter, const QSize& size) const
{
    const int right = size.width() - kCorner;
    const int bottom = size.height() - kCorner;
    painter.drawImage(0, 0, m_corners, 0, 0, kCorner, kCorner);
    painter.drawImage(right, 0, m_corners, kCorner, 0, kCorner, kCorner);
    painter.drawImage(0, bottom, m_corners, 0, kCorner, kCorner, kCorner);
    painter.drawImage(right, bottom, m_corners, kCorner, kCorner, kCorner, kCorner);

    const int width = right - kCorner;
    const int height = bottom - kCorner;
    painter.fillRect(kCorner, 0, width, 1, m_edge);
    painter.fillRect(kCorner, size.height() - 1, width, 1, m_edge);
    painter.fillRect(0, kCorner, 1, height, m_edge);
    painter.fillRect(size.width() - 1, kCorner, 1, height, m_edge);

    painter.fillRect(kCorner, 1, width, kCorner - 1, m_ground);
    painter.fillRect(kCorner, bottom, width, kCorner - 1, m_ground);
    painter.fillRect(1, kCorner, size.width() - 2, height, m_ground);
}
