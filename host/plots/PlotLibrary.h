// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/plots/EarlierPoints.h"

#include <QDateTime>
#include <QWidget>

#include <functional>
#include <memory>

namespace norvo {

/// A copy of a plot under the hand, with a cursor: what the tools of a graph show. See PlotCopy,
/// Gestures and Cursor.
class GraphView
{
public:
    GraphView() = default;
    virtual ~GraphView() = default; ///< Its widget stays with its parent.
    GraphView(const GraphView&) = delete;
    GraphView& operator=(const GraphView&) = delete;

    virtual QWidget& widget() const = 0; ///< Without a parent at first.

    virtual bool isHeld() const = 0;
    virtual bool areValuesFixed() const = 0;
    virtual bool showsTimes() const = 0;
    virtual QDateTime heldAt() const = 0;
    virtual bool isReading() const = 0;
    virtual bool isAtBeginning() const = 0;
    virtual bool isAtUnreadable() const = 0;
    virtual bool isAtCut() const = 0;
    virtual QString range() const = 0;    ///< That is seen, in words.
    virtual QByteArray table() const = 0; ///< Of the points that are seen.

    virtual void hold() = 0;
    virtual void goLive() = 0; ///< Without the cursor.
    virtual void fixValues(bool areFixed) = 0;
};

/// What the host asks of plots. It lies in a library of its own, because linking the plot library
/// takes time at every start, and many panels show no graph. Every plot that is handed over is one
/// that isPlot() holds for.
struct PlotLibrary
{
    bool (*hasOnlyGraphs)(const QWidget& plot); ///< Nothing else that is drawn from points.
    /// The newest point of each curve that has any, with the curve's name.
    QString (*newestValues)(const QWidget& plot);
    /// A plot draws itself on a picture of its own, which is to have `ratio` pixels for one.
    void (*sharpen)(QWidget& plot, double ratio);
    /// `plot` has only graphs and may be deleted before; `changed` is told of each change by hand.
    std::unique_ptr<GraphView> (*view)(QWidget& plot, const ReadEarlier& readEarlier,
                                       const std::function<void()>& changed);
};

inline bool isPlot(const QWidget& widget)
{
    return widget.inherits("QCustomPlot");
}

/// Loaded when it is first asked for. Null where it is not there, which is said once.
const PlotLibrary* plotLibrary();

/// What the library exports.
extern "C" const PlotLibrary* norvoPlotLibrary();

} // namespace norvo
