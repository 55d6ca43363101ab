// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/KeptStretches.h"

#include <QImage>
#include <QPen>

#include <array>
#include <vector>

class QPainter;

namespace norvo::plot {

/// Curves of very many points, one over the other, whose picture is kept: as their axis moves on,
/// only the columns of pixels are painted in which points have come.
///
/// For that the axis stands at halves of a pixel, with a picture for either of them.
class CurvesPicture
{
public:
    struct Curve
    {
        KeptStretches& stretches;
        PointBlocks::Points points;
        const PointBlocks& blocks; ///< Of the points.
        QPen pen;                  ///< Its width in pixels of the device.
    };

    /// Where keys and values are, within what the painter is clipped to.
    struct Axes
    {
        double left;     ///< Key of the left edge.
        double pixel;    ///< In keys.
        double value;    ///< One of the values on view.
        double height;   ///< Where it is, in pixels downwards.
        double perValue; ///< Pixels downwards.
    };

    /// With a painter and pens that LineParts can draw with.
    void draw(QPainter& painter, const Axes& axes, const std::vector<Curve>& curves);

private:
    static constexpr int kShifts = 2; ///< Places in a pixel at which the axis may stand.

    /// What a curve was when it was painted first, but for points that came and went.
    struct Known
    {
        const KeptStretches* stretches;
        quint64 generation;
        QPen pen;
    };

    /// Up to where a curve is painted.
    struct Painted
    {
        qint64 end = 0;      ///< Number of the point after its last one.
        double lastKey = 0;  ///< Where its last part begins, which may grow.
        double firstKey = 0; ///< Of its first point, which may go.
    };

    /// The picture for one of the places, in columns that count from the key 0.
    struct Shifted
    {
        double shift = 0; ///< Of the columns to the right.
        QImage image;
        qint64 column = 0; ///< That the image begins with.
        qint64 begin = 0;  ///< Of the painted columns.
        qint64 end = 0;
        std::vector<Painted> curves;
    };

    void forgetUnless(const QSize& size, const Axes& axes, const std::vector<Curve>& curves);
    void moveTo(Shifted& shifted, qint64 column) const;
    void paintWhatChanged(Shifted& shifted, const std::vector<Curve>& curves) const;
    void paintColumns(Shifted& shifted, qint64 from, qint64 to,
                      const std::vector<Curve>& curves) const;

    QSize m_size;
    Axes m_axes{};
    std::vector<Known> m_curves;
    std::array<Shifted, kShifts> m_shifted;
};

} // namespace norvo::plot
