// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "GaugePicture.h"
#include "Stand.h"

#include "devices/OutputBarDevice.h"
#include "widgets/ValueBarWidget.h"

#include <QVector>

inline const QColor kBehind(Qt::magenta);
inline const QColor kPanel("#F5F5E6");
inline const QColor kRed("#FD454D");
inline const QColor kGreen("#049143");
inline const QColor kTick("#F0F0F0");
inline const QColor kPointerEdge("#3C3C3C");

/// A value bar of 400 x 120: the panel from 5 to 394 and 5 to 114, the scale on it from line 54 to
/// 113. 390 / 14 pixels lie between two short ticks, so that the scale runs from 60.7 to 339.3.
class Bar : public Stand<OutputBarDevice>
{
public:
    explicit Bar(const Params& params = {}, const QSize& size = {400, 120}) : Stand(params)
    {
        widget->resize(size);
    }

    ValueBarWidget& bar() { return static_cast<ValueBarWidget&>(*widget); }
    QImage picture(double scale = 1.0) { return pictureOf(*widget, kBehind, scale); }
    QColor pixel(int x, int y) { return picture().pixelColor(x, y); }
};

/// Columns in which the pointer's black shows, a little below its top.
inline QVector<int> pointerColumns(Bar& bar)
{
    QVector<int> columns;
    const QImage image = bar.picture();
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, 30) == QColor(Qt::black)) {
            columns.append(x);
        }
    }
    return columns;
}
