// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/DenseGraph.h"

#include <QStaticText>

namespace norvo::plot {

/// A curve's entry in the legend. Its text is laid out once, and not at each refresh, as long as
/// its name and font are the same; and it is drawn whole, down to the last row of its descenders.
class LegendEntry : public QCPPlottableLegendItem
{
public:
    LegendEntry(QCPLegend* legend, DenseGraph* curve);

protected:
    QRect clipRect() const override;
    QSize minimumOuterSizeHint() const override;
    void draw(QCPPainter* painter) override;

private:
    struct Text
    {
        QString name;
        QFont font;
        QSize size;
        QStaticText laidOut;
    };
    const Text& text() const;

    const DenseGraph& m_curve;
    mutable Text m_text; ///< As the name was when it was asked for last.
};

} // namespace norvo::plot
