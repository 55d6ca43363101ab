// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/PlotInterface.h"

/// A plot in the colours of its palette, which it follows, that is drawn only while it can be seen.
class PlotView : public QCustomPlot
{
public:
    /// Where the two kinds of graph differ.
    struct Look
    {
        bool zeroLineInTextColour;                     ///< False: as the plot library draws it.
        QCustomPlot::RefreshPriority recolourPriority; ///< How a change of colours is drawn.
    };

    explicit PlotView(const Look& look);
    ~PlotView() override;

    /// Draws the plot again. While it cannot be seen, that is put off until it is shown again or
    /// grabbed.
    void refresh(QCustomPlot::RefreshPriority priority);
    void recolour(); ///< Takes the palette's colours as they are now.

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Room for its axes and a little of its curves, whatever numbers it shows: the page around it
    /// stands still.
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override { return minimumSizeHint(); }

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool canBeSeen() const;

    Look m_look;
    bool m_stale = false; ///< Waits to be drawn by the next paint.
};
