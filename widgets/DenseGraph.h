// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CurvesPicture.h"
#include "widgets/KeptStretches.h"
#include "widgets/PointBlocks.h"

#include <memory>

namespace norvo::plot {

/// A graph whose drawing and whose range of values hardly cost more with more points, where they
/// come by append() and go by dropBefore(). NaN and infinities are gaps.
///
/// Whatever else changes the points, through the library's own calls, is seen by their number,
/// place, first and last one, and costs a look at all of them. A value that is written over in
/// place, between these two, is not seen.
class DenseGraph : public QCPGraph
{
public:
    using QCPGraph::QCPGraph;

    void append(double key, double value); ///< May be before others, which costs that look.
    void dropBefore(double key);
    void replace(const QVector<double>& keys, const QVector<double>& values); ///< Sorted by key.
    /// As its legend shows it.
    void drawIcon(QCPPainter& painter, const QRectF& place) const
    {
        drawLegendIcon(&painter, place);
    }

    QCPRange getValueRange(bool& found, QCP::SignDomain domain,
                           const QCPRange& keys) const override;

protected:
    using Point = QCPGraphDataContainer::const_iterator;

    void draw(QCPPainter* painter) override;
    /// Where there are many points to a pixel: what they lie between, in parts of the pixel.
    void getOptimizedLineData(QVector<QCPGraphData>* line, const Point& begin,
                              const Point& end) const override;
    void drawLinePlot(QCPPainter* painter, const QVector<QPointF>& lines) const override;

private:
    /// How points are known again.
    struct Mark
    {
        const QCPGraphData* begin = nullptr;
        int count = 0;
        QCPGraphData first;
        QCPGraphData last;
    };

    Mark mark() const;
    bool areBlocksTrue() const; ///< Whether they are of the points as they are.
    const PointBlocks& blocks() const;
    bool drawStretches(QCPPainter& painter);       ///< False: it is none for that.
    bool isOfStretches(QCPPainter& painter) const; ///< The painter then has its pen.
    CurvesPicture::Axes axesIn(const QRect& clip, const QTransform& toDevice) const;
    bool isPlainLine() const;
    bool isCrowded(const Point& begin, const Point& end, double pixel) const; ///< pixel: in keys.
    bool isMostlySeen(double size) const; ///< What there is, on an axis of that length.
    void addStretches(QVector<QCPGraphData>* line, int begin, int end, double width) const;
    void addStretch(QVector<QCPGraphData>* line, const Stretch& stretch) const;
    void addRuns(QVector<QCPGraphData>* line, const Point& from, const Point& to) const;

    double m_scale = 1; ///< Pixels of the device that is drawn on, to one of the plot.
    mutable PointBlocks m_blocks;
    mutable KeptStretches m_kept;             ///< Of these blocks.
    mutable Mark m_known;                     ///< What they are of.
    std::unique_ptr<CurvesPicture> m_picture; ///< With the graphs after it that are drawn with it.
    bool m_isDrawn = false;                   ///< With one before it.
};

} // namespace norvo::plot
