// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EventCounter.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QWidget>
#include <QtTest>

/// What the widget itself paints over `background`, at `scale` device pixels for each of its own.
inline QImage pictureOf(QWidget& widget, const QColor& background, double scale = 1.0)
{
    const QSize size(qCeil(widget.width() * scale), qCeil(widget.height() * scale));
    QImage image(size, QImage::Format_RGB32);
    image.fill(background);
    QPainter painter(&image);
    painter.scale(scale, scale);
    widget.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// The largest difference of any colour of any pixel, 255 for pictures of different sizes.
inline int largestDifference(const QImage& one, const QImage& other)
{
    if (one.size() != other.size()) {
        return 255;
    }
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            largest = qMax(largest, qAbs(qRed(a) - qRed(b)));
            largest = qMax(largest, qAbs(qGreen(a) - qGreen(b)));
            largest = qMax(largest, qAbs(qBlue(a) - qBlue(b)));
        }
    }
    return largest;
}

/// How often the widget is painted once the event loop has had its turn; waits for the first time.
inline int paintsToCome(EventCounter& events)
{
    int paints = 0;
    if (!QTest::qWaitFor([&] { return (paints += events.take(QEvent::Paint)) > 0; })) {
        return 0;
    }
    QCoreApplication::processEvents();
    return paints + events.take(QEvent::Paint);
}
