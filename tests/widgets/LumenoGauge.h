// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "GaugePicture.h"

#include "devices/LumenoBarDevice.h"
#include "widgets/OutputBarLumeno.h"

#include <QFontMetrics>
#include <QMap>

#include <memory>

/// A scaled bar gauge with a caption, in colours that tell its parts apart, and where its parts
/// must lie: a margin of 2.25 lines of the scale's text at either end, 0 to 1 between them.
class LumenoGauge
{
public:
    using Params = QMap<QString, QString>;

    explicit LumenoGauge(const Params& changed = {}, const QSize& size = {120, 300})
    {
        device.setParam("widget/name", "Oil");
        device.setParam("widget/precision", "1");
        for (auto param = changed.cbegin(); param != changed.cend(); ++param) {
            device.setParam(param.key(), param.value());
        }
        device.setRunning(device.initialise());
        widget = std::make_unique<OutputBarLumeno>(&device, nullptr);
        QPalette palette;
        palette.setColor(QPalette::Text, Qt::blue);
        palette.setColor(QPalette::Highlight, Qt::red);
        widget->setPalette(palette);
        widget->initialise();
        widget->resize(size);
    }

    QImage picture() { return pictureOf(*widget, Qt::white); }

    static QFont textFont(int pixelSize = 15, bool bold = false)
    {
        QFont font("Roboto");
        font.setPixelSize(pixelSize);
        font.setBold(bold);
        return font;
    }
    static int textHeight() { return QFontMetrics(textFont()).height(); }
    static int valueHeight() { return QFontMetrics(textFont(22, true)).height(); }

    double height() { return widget->height(); }
    double margin() { return 2.25 * textHeight(); }
    double y(double value) { return height() - margin() - value * (height() - 2.0 * margin()); }
    int centre() { return widget->width() / 2; }

    LumenoBarDevice device;
    std::unique_ptr<OutputBarLumeno> widget;
};

/// More blue than anything else: drawn in the text colour. Edges are mixed with the white behind.
inline bool isText(const QColor& colour)
{
    return colour.blue() > colour.red() + 60;
}

/// The same for the accent colour.
inline bool isAccent(const QColor& colour)
{
    return colour.red() > colour.blue() + 60;
}

inline int countAccent(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += isAccent(image.pixelColor(x, y));
        }
    }
    return count;
}

/// The middles of the runs of text colour down one column.
inline QVector<double> marksDown(const QImage& image, int x, int top, int bottom)
{
    QVector<double> middles;
    int start = -1;
    for (int y = top; y <= bottom; ++y) {
        const bool ink = isText(image.pixelColor(x, y)) && y < bottom;
        if (ink && start < 0) {
            start = y;
        } else if (!ink && start >= 0) {
            middles.append((start + y) / 2.0);
            start = -1;
        }
    }
    return middles;
}

/// `text` as the gauge draws it, in the same place of an empty picture.
inline QImage drawnText(LumenoGauge& gauge, const QRectF& box, const QFont& font,
                        const QColor& colour, const QString& text)
{
    QImage image(gauge.widget->size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(gauge.widget->width() * 0.5, 0.0);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(box, text, QTextOption());
    return image;
}

/// Whether the picture shows `text` in its box, but for rounding, and that there is any ink.
inline bool shows(LumenoGauge& gauge, const QRectF& box, const QFont& font, const QColor& colour,
                  const QString& text)
{
    const QImage expected = drawnText(gauge, box, font, colour, text);
    const QRect area =
        box.translated(gauge.widget->width() * 0.5, 0.0).toAlignedRect() & expected.rect();
    QImage empty(area.size(), QImage::Format_RGB32);
    empty.fill(Qt::white);
    return largestDifference(expected.copy(area), empty) > 100 &&
           largestDifference(gauge.picture().copy(area), expected.copy(area)) <= 1;
}

inline double advance(const QFont& font, const QString& text)
{
    return QFontMetrics(font).horizontalAdvance(text);
}
