// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/Gestures.h"

#include "host/plots/PlotCopy.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QStyleHints>
#include <QTouchEvent>

#include <cmath>

namespace norvo {

namespace {

constexpr double kStep = 0.1;       // of what is seen, by one press of a key
constexpr double kZoom = 0.8;       // by one press of a key, or one notch of the wheel
constexpr double kDragPixels = 10;  // below which it is a tap
constexpr double kTapPixels = 40;   // between the two taps of a double tap
constexpr double kPinchPixels = 20; // between two fingers, at least
constexpr double kNotch = 120;      // in the wheel's own unit

} // namespace

Gestures::Gestures(PlotCopy& plot) : QObject(&plot), m_plot(plot)
{
    plot.setAttribute(Qt::WA_AcceptTouchEvents);
    plot.installEventFilter(this);
}

bool Gestures::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        event->accept();
        return mouse(*static_cast<QMouseEvent*>(event));
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        event->accept(); // So that it does not come again as the mouse.
        return touch(*static_cast<QTouchEvent*>(event));
    case QEvent::Wheel:
        event->accept();
        turn(*static_cast<QWheelEvent*>(event));
        return true;
    case QEvent::KeyPress:
        return press(*static_cast<QKeyEvent*>(event));
    default:
        return false;
    }
}

bool Gestures::mouse(const QMouseEvent& event)
{
    if (event.type() == QEvent::MouseMove) {
        if (event.buttons() & Qt::LeftButton) {
            move(event.localPos());
        }
    } else if (event.button() == Qt::LeftButton) {
        if (event.type() == QEvent::MouseButtonRelease) {
            end();
        } else {
            m_plot.setFocus(Qt::MouseFocusReason);
            begin(event.localPos());
        }
    }
    return true;
}

bool Gestures::touch(const QTouchEvent& event)
{
    const QList<QTouchEvent::TouchPoint>& points = event.touchPoints();
    if (event.type() == QEvent::TouchCancel || points.isEmpty()) {
        m_isDown = false;
        m_isPinching = false;
    } else if (points.size() > 1) {
        m_isDown = false;
        pinch(points[0].pos(), points[1].pos());
    } else if (event.type() == QEvent::TouchEnd) {
        m_isPinching = false;
        end();
    } else if (event.type() == QEvent::TouchBegin) {
        begin(points[0].pos());
    } else if (!m_isPinching) { // A finger that stays of two is on its way off.
        move(points[0].pos());
    }
    return true;
}

void Gestures::pinch(const QPointF& first, const QPointF& second)
{
    const QPointF spread = second - first;
    if (!m_isPinching) {
        m_isPinching = true;
        m_drag = std::abs(spread.x()) >= std::abs(spread.y()) ? Drag::Keys : Drag::Values;
    } else if (m_drag == Drag::Keys) {
        const double before = std::max(kPinchPixels, std::abs(m_second.x() - m_first.x()));
        const double now = std::max(kPinchPixels, std::abs(spread.x()));
        const double centre = (m_first.x() + m_second.x()) / 2;
        m_plot.zoomKeys(before / now, m_plot.xAxis->pixelToCoord(centre));
        m_plot.moveKeys((centre - (first.x() + second.x()) / 2) / m_plot.area().width());
    } else {
        const double before = std::max(kPinchPixels, std::abs(m_second.y() - m_first.y()));
        const double now = std::max(kPinchPixels, std::abs(spread.y()));
        const double centre = (m_first.y() + m_second.y()) / 2;
        m_plot.zoomValues(before / now, m_plot.yAxis->pixelToCoord(centre));
        m_plot.moveValues(((first.y() + second.y()) / 2 - centre) / m_plot.area().height());
    }
    m_first = first;
    m_second = second;
}

void Gestures::begin(const QPointF& place)
{
    m_isDown = true;
    m_drag = Drag::None;
    m_start = place;
    m_last = place;
}

void Gestures::move(const QPointF& place)
{
    if (!m_isDown) {
        return;
    }
    const QPointF distance = place - m_start;
    if (m_drag == Drag::None) {
        if (distance.manhattanLength() < kDragPixels) {
            return;
        }
        const bool isLegend =
            m_plot.legend->visible() && m_plot.legend->outerRect().contains(m_start.toPoint());
        const bool isSideways = std::abs(distance.x()) >= std::abs(distance.y());
        m_drag = isLegend ? Drag::Legend : isSideways ? Drag::Keys : Drag::Values;
    }
    const QPointF step = place - m_last;
    m_last = place;
    if (m_drag == Drag::Legend) {
        m_plot.moveLegend(step.toPoint());
    } else if (m_drag == Drag::Keys) {
        m_plot.moveKeys(-step.x() / m_plot.area().width());
    } else {
        m_plot.moveValues(step.y() / m_plot.area().height());
    }
}

void Gestures::end()
{
    if (m_isDown && m_drag == Drag::None) {
        tap();
    }
    m_isDown = false;
}

void Gestures::tap()
{
    if (const QCPGraph* const curve = m_plot.curveInLegend(m_start.toPoint())) {
        m_plot.toggleCurve(curve->name());
        return;
    }
    const bool isSecond =
        m_sinceTap.isValid() &&
        !m_sinceTap.hasExpired(QGuiApplication::styleHints()->mouseDoubleClickInterval()) &&
        (m_start - m_lastTap).manhattanLength() < kTapPixels;
    m_lastTap = m_start;
    if (isSecond) {
        m_sinceTap.invalidate();
        emit liveRequested();
        return;
    }
    m_sinceTap.start();
    if (m_plot.area().rect().contains(m_start.toPoint())) {
        emit tapped(m_plot.xAxis->pixelToCoord(m_start.x()));
    }
}

void Gestures::turn(const QWheelEvent& event)
{
    const double factor = std::pow(kZoom, event.angleDelta().y() / kNotch);
    const QPointF place = event.position();
    if ((event.modifiers() & Qt::ControlModifier) || place.x() < m_plot.area().left()) {
        m_plot.zoomValues(factor, m_plot.yAxis->pixelToCoord(place.y()));
    } else {
        m_plot.zoomKeys(factor, m_plot.xAxis->pixelToCoord(place.x()));
    }
}

bool Gestures::press(const QKeyEvent& event)
{
    const bool areValues = event.modifiers() & Qt::ControlModifier;
    const auto zoom = [this, areValues](double factor) {
        if (areValues) {
            m_plot.zoomValues(factor, m_plot.yAxis->range().center());
        } else {
            m_plot.zoomKeys(factor, m_plot.xAxis->range().center());
        }
    };
    const int sign = event.key() == Qt::Key_Left || event.key() == Qt::Key_Down ? -1 : 1;
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (event.modifiers() & Qt::ShiftModifier) {
            emit cursorMoved(sign);
        } else {
            m_plot.moveKeys(sign * kStep);
        }
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        m_plot.moveValues(sign * kStep);
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal: // The same key, without Shift.
        zoom(kZoom);
        return true;
    case Qt::Key_Minus:
        zoom(1 / kZoom);
        return true;
    case Qt::Key_Home:
        emit liveRequested();
        return true;
    case Qt::Key_Space:
        if (m_plot.isHeld()) {
            emit liveRequested();
        } else {
            m_plot.hold();
        }
        return true;
    default:
        return false;
    }
}

} // namespace norvo
