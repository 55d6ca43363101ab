// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointF>

class QKeyEvent;
class QMouseEvent;
class QTouchEvent;
class QWheelEvent;

namespace norvo {

class PlotCopy;

/// What a hand does on the copy of a plot, by mouse, wheel, finger or key.
///
/// A drag or a pinch goes one way: sideways over the times, or upright over the values, as it
/// begins. The wheel goes over the times, with Ctrl or beside the axis over the values.
class Gestures : public QObject
{
    Q_OBJECT

public:
    explicit Gestures(PlotCopy& plot);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void tapped(double key);       ///< Between the axes.
    void liveRequested();          ///< By a double tap.
    void cursorMoved(int columns); ///< By a key, in pixels.

private:
    enum class Drag { None, Keys, Values, Legend };

    bool touch(const QTouchEvent& event);
    void pinch(const QPointF& first, const QPointF& second);
    bool mouse(const QMouseEvent& event);
    void begin(const QPointF& place);
    void move(const QPointF& place);
    void end();
    void tap();
    void turn(const QWheelEvent& event);
    bool press(const QKeyEvent& event);

    PlotCopy& m_plot;
    bool m_isDown = false;
    bool m_isPinching = false;
    Drag m_drag = Drag::None;
    QPointF m_start;
    QPointF m_last;
    QPointF m_first;  ///< The two fingers of a pinch,
    QPointF m_second; ///< as they were last.
    QPointF m_lastTap;
    QElapsedTimer m_sinceTap; ///< Invalid: there was none.
};

} // namespace norvo
