// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/PlotInterface.h"

#include <QImage>

// Pictures of a curve alone, and how they may differ.

constexpr int kWidth = 200;
constexpr int kHeight = 120;

/// `curve`: gets a pen, unless null. `middle`: of the values.
inline QImage picture(QCustomPlot& plot, QCPGraph* curve, double scale = 1, double middle = 0)
{
    if (curve) {
        curve->setPen(QPen(Qt::blue, 1, Qt::SolidLine, Qt::FlatCap));
    }
    plot.yAxis->setRange(middle - 1, middle + 1);
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis}) {
        axis->setVisible(false);
        axis->grid()->setVisible(false);
    }
    plot.axisRect()->setAutoMargins(QCP::msNone);
    plot.axisRect()->setMargins({5, 5, 5, 5});
    plot.setAntialiasedElements(QCP::aeAll);
    return plot.toPixmap(kWidth, kHeight, scale).toImage().convertToFormat(QImage::Format_RGB32);
}

/// Every line from point to point, drawn by the library with pixels of a quarter, four of which
/// then make up the width of one.
inline QImage wholePicture(QCustomPlot& plot, QCPGraph* curve, double scale = 1)
{
    constexpr int finer = 4;
    curve->setAdaptiveSampling(false);
    plot.setPlottingHint(QCP::phFastPolylines);
    const QImage fine = picture(plot, curve, finer * scale);
    return fine.scaled(fine.size() / finer, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// How much stronger or weaker, of 255, the strangest pixel is than all those in the other
/// picture that are at most one pixel away from its place.
inline int strangestPixel(const QImage& a, const QImage& b)
{
    int strangest = 0;
    for (int y = 1; y < a.height() - 1; ++y) {
        for (int x = 1; x < a.width() - 1; ++x) {
            int least = 255;
            int greatest = 0;
            for (int place = 0; place < 9; ++place) {
                const int red = qRed(b.pixel(x - 1 + place % 3, y - 1 + place / 3));
                least = qMin(least, red);
                greatest = qMax(greatest, red);
            }
            const int red = qRed(a.pixel(x, y));
            strangest = qMax(strangest, qMax(red - greatest, least - red));
        }
    }
    return strangest;
}

/// Whether pictures differ by no more than where an edge between two pixels is smoothed to: at
/// most one pixel away, and there by at most a third of the strength of a line. So no peak may
/// be missing, or two pixels lower, and no gap may be filled.
inline bool areAlike(const QImage& picture, const QImage& expected)
{
    constexpr int smoothing = 85;
    const int more = strangestPixel(picture, expected);
    const int less = strangestPixel(expected, picture);
    return picture.size() == expected.size() && more <= smoothing && less <= smoothing;
}
