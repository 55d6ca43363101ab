// SPDX-License-Identifier: GPL-3.0-or-later

// What taps and keys mean on the canvas.

#include "host/editor/EditSession.h"
#include "host/editor/wiring/DeviceShelf.h"
#include "host/editor/wiring/PortKeys.h"
#include "host/editor/wiring/WireCanvas.h"
#include "host/editor/wiring/WireEdits.h"
#include "host/panel/run/Panel.h"
#include "host/window/PanelPages.h"
#include "host/window/look/TouchSize.h"

#include "norvo/BaseWidget.h"

#include <QAction>
#include <QApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

constexpr double kNear = 8; // pixels, to a line that runs over a device

} // namespace

void WireCanvas::mousePressEvent(QMouseEvent* event)
{
    setFocus(Qt::MouseFocusReason);
    m_finger = event->pos();
    m_isDrawn = false;
}

void WireCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_finger) {
        return;
    }
    const QPoint way = event->pos() - *m_finger;
    if (m_isDrawn || way.manhattanLength() >= QApplication::startDragDistance()) {
        m_isDrawn = true;
        m_finger = event->pos();
        scroll(way);
    }
}

void WireCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_finger || m_isDrawn) {
        m_finger.reset();
        return;
    }
    m_finger.reset();
    const QPoint point = event->pos();
    const QString device = m_scene.deviceAt(point);
    const double reach = TouchSize::pixels(PanelLook::Touch::Fingers, *this) / 2.0;
    const auto any = [](const WireLine&) { return true; };
    const auto tagged = [&point](const WireLine& line) { return line.tagRect.contains(point); };
    const auto watched = [this](const WireLine& line) { return isWatched(line); };
    const auto value = std::find_if(m_shown.cbegin(), m_shown.cend(),
                                    [&](const Value& one) { return one.area.contains(point); });
    if (m_armed) {
        device.isEmpty() ? void(goBack()) : tapDevice(device);
    } else if (value != m_shown.cend()) {
        tapLine(value->line);
    } else if (const int away = m_scene.lineAt(point, kNear, tagged); away >= 0) {
        tapLine(away);
    } else if (const int near = m_scene.lineAt(point, kNear, watched); near >= 0) {
        tapLine(near);
    } else if (!device.isEmpty()) {
        tapDevice(device);
    } else if (const int line = m_scene.lineAt(point, reach, any); line >= 0) {
        tapLine(line);
    } else {
        goBack();
    }
}

void WireCanvas::wheelEvent(QWheelEvent* event)
{
    scroll(event->angleDelta() / 2);
}

void WireCanvas::scroll(const QPoint& by)
{
    const auto* const tabs = m_session.live().pages().findChild<QTabWidget*>();
    auto* area = tabs ? qobject_cast<QScrollArea*>(tabs->currentWidget()) : nullptr;
    for (QWidget* around = parentWidget(); around && !area; around = around->parentWidget()) {
        area = qobject_cast<QScrollArea*>(around);
    }
    if (area) {
        area->horizontalScrollBar()->setValue(area->horizontalScrollBar()->value() - by.x());
        area->verticalScrollBar()->setValue(area->verticalScrollBar()->value() - by.y());
        lay();
    }
}

void WireCanvas::keyPressEvent(QKeyEvent* event)
{
    auto* const key = qobject_cast<QPushButton*>(QApplication::focusWidget());
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (key && key->parent() == this) {
            key->click();
        } else if (!m_cursor.isEmpty()) {
            tapDevice(m_cursor);
            if (m_keys) {
                m_keys->focusNext(true);
            }
        }
        return;
    case Qt::Key_Escape:
        event->setAccepted(goBack());
        return;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const bool isForward = event->key() == Qt::Key_Right || event->key() == Qt::Key_Down;
        const bool isSideways = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
        if (m_keys) {
            m_keys->focusNext(isForward);
        } else if (isSideways) {
            moveCursor(isForward);
        } else {
            moveLine(isForward);
        }
        return;
    }
    default:
        QWidget::keyPressEvent(event);
    }
}

bool WireCanvas::focusNextPrevChild(bool isForward)
{
    if (m_keys) {
        m_keys->focusNext(isForward);
        return true;
    }
    return (hasFocus() && moveCursor(isForward)) || QWidget::focusNextPrevChild(isForward);
}

/// Where a connection is begun, devices that nothing fits are left out.
QStringList WireCanvas::reachable() const
{
    QStringList devices = m_scene.devices();
    if (m_armed) {
        devices.erase(
            std::remove_if(devices.begin(), devices.end(),
                           [this](const QString& id) { return m_fitting.value(id).isEmpty(); }),
            devices.end());
    }
    return devices;
}

/// False at the last one.
bool WireCanvas::moveCursor(bool isForward)
{
    const QStringList devices = reachable();
    const int place = devices.indexOf(m_cursor);
    const int next =
        place < 0 ? (isForward ? 0 : devices.size() - 1) : place + (isForward ? 1 : -1);
    if (next < 0 || next >= devices.size()) {
        return false;
    }
    m_cursor = devices[next];
    m_shelf->showDevice(m_cursor);
    selectConnection(-1);
    if (!m_armed) {
        m_session.select({m_cursor});
    }
    lay();
    return true;
}

void WireCanvas::moveLine(bool isForward)
{
    QVector<int> own;
    for (const WireLine& line : m_scene.lines()) {
        if (m_cursor.isEmpty() || line.touches(m_cursor)) {
            own.append(line.connection);
        }
    }
    if (!own.isEmpty() && !m_armed) {
        const int place = own.indexOf(m_connection);
        const int next = place < 0 ? (isForward ? 0 : own.size() - 1)
                                   : (place + (isForward ? 1 : -1) + own.size()) % own.size();
        selectConnection(own[next]);
    }
}

void WireCanvas::selectConnection(int connection)
{
    const bool isOther = connection != m_connection;
    markConnection(connection);
    if (isOther) {
        emit connectionChosen(connection);
    }
}

void WireCanvas::chooseConnection(int connection)
{
    if (connection == m_connection) {
        return;
    }
    closePorts();
    disarm();
    const auto& lines = m_scene.lines();
    const bool isSeen = std::any_of(lines.cbegin(), lines.cend(), [&](const WireLine& line) {
        return line.connection == connection;
    });
    const ConnectionSetting one = m_session.live().description().connections.value(connection);
    QWidget* const widget = m_session.live().panel().widget(one.from.device.text);
    if (!isSeen && widget) {
        m_session.live().pages().bringIntoView(*widget);
        lay();
    }
    markConnection(connection);
}

void WireCanvas::markConnection(int connection)
{
    m_connection = connection;
    m_chosenText = m_session.live().description().connections.value(connection).whole.text;
    m_remove->setEnabled(connection >= 0);
    m_goTo->setEnabled(connection >= 0);
    m_layer = QPixmap();
    placeValues();
    update();
}

void WireCanvas::removeConnection()
{
    const QString fault = WireEdits::remove(
        m_session, m_session.live().description().connections.value(m_connection));
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
}

/// Where it stands on another page, that is turned to.
void WireCanvas::goToOtherEnd()
{
    const int connection = m_connection;
    const ConnectionSetting one = m_session.live().description().connections.value(connection);
    const QString other = one.from.device.text == m_cursor || m_scene.isOnPage(one.from.device.text)
                              ? one.to.device.text
                              : one.from.device.text;
    if (QWidget* const widget = m_session.live().panel().widget(other)) {
        m_session.live().pages().bringIntoView(*widget);
    }
    m_session.select({other});
    m_shelf->showDevice(other);
    selectConnection(connection);
    lay();
}

bool WireCanvas::goBack()
{
    if (m_keys) {
        closePorts();
    } else if (m_armed) {
        disarm();
    } else if (m_connection >= 0) {
        selectConnection(-1);
    } else if (!m_cursor.isEmpty()) {
        m_cursor.clear();
        m_session.select({});
        lay();
    } else {
        return false;
    }
    return true;
}

} // namespace norvo
