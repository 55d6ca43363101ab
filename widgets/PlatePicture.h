// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>

class QPainter;
class QWidget;

/// What a style draws of a plate: four round corners, an edge one pixel wide, a ground.
class PlatePicture
{
public:
    /// Of a widget with the style sheet of a plate; one for each style sheet. Null where the style
    /// draws something else.
    static const PlatePicture& of(const QWidget& plate);

    /// Whether pixels are drawn as they are, and there is room for the corners.
    static bool canBeDrawnBy(const QPainter& painter, const QSize& size);

    bool isNull() const { return m_corners.isNull(); }
    void draw(QPainter& painter, const QSize& size) const;

private:
    explicit PlatePicture(const QWidget& plate);

    QImage m_corners;
    QColor m_edge;
    QColor m_ground;
};
