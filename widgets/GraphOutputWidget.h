// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/GraphFrame.h"

#include <QMap>
#include <QPointer>
#include <QTimer>
#include <QVector>

/// Plots the values of several senders in a time window that scrolls with the present.
///
/// A sender's curve is a list of segments: a pause longer than the time-out begins a new one, so
/// that no line bridges the pause. Only the newest segment stands in the legend and is changed by
/// inputFill(), inputColor() and inputName(). What has left the window is dropped with each value.
/// A sender keeps its curve, and the plot that it is in, until deinitialise().
class GraphOutputWidget : public GraphFrame
{
    Q_OBJECT

public:
    using GraphFrame::GraphFrame;

    void initialise() override;
    void deinitialise() override; ///< Forgets the senders; the plot keeps its curves.

public slots:
    void input(double value, QString sender, double time); ///< Seconds since the epoch.
    void inputFill(QString sender, bool fill);
    void inputColor(QString sender, QString color); ///< An unknown colour is an invalid one.
    void inputName(QString sender, QString name);

protected slots:
    /// Moves the window to now and fits the value axis where that is asked. Draws it where that
    /// changes a pixel.
    void updateGraph();

private:
    using Segments =
        QVector<QPointer<norvo::plot::Graph>>; ///< Oldest first, never empty; their plot's.

    /// What the plot showed when it was last drawn here.
    struct Drawn
    {
        double end = 0; ///< Of the time axis.
        QCPRange values;
        int width = 0; ///< Pixels of the screen.
    };

    bool isReady() const { return isInitialised() && view(); }
    void startRefreshing();
    void addThreshold(double value);
    Segments& segmentsOf(const QString& sender); ///< Begins a curve for a new sender.
    norvo::plot::Graph* lastSegment(const QString& sender) { return segmentsOf(sender).last(); }
    norvo::plot::Graph* beginSegment(Segments& segments);
    void prune(Segments& segments, double time);
    Drawn nowToDraw() const;
    bool wouldChange(const Drawn& next) const;

    double m_minValue = 0.0;
    double m_maxValue = 1.0;
    int m_timePeriod = 10; ///< Seconds shown; also the refresh interval in ms, at least 33.
    int m_timeout = 1;     ///< Seconds.
    bool m_autoscale = true;
    QTimer m_refreshTimer; ///< Runs from the first initialise() on.
    QMap<QString, Segments> m_curves;
    Drawn m_drawn;
    bool m_areCurvesDrawn = false; ///< As they are now.
};
