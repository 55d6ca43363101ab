// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/wiring/ports/Port.h"
#include "host/editor/wiring/WirePainter.h"
#include "host/editor/wiring/WireScene.h"
#include "host/panel/plan/PlannedWire.h"

#include <QBasicTimer>
#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <optional>

class QAction;

namespace norvo {

class DeviceShelf;
class EditSession;
class PortKeys;
class PortList;
class WireValues;
struct WireChoice;

/// Lies over the pages of a panel and shows its connections, each with its last value; takes all
/// that is meant for the panel meanwhile. Below the pages is a shelf with the devices that have no
/// widget.
///
/// A tap on a device shows its outputs and inputs as keys; a tap on one of these lights up what
/// fits it, and says of the rest why not; a tap on what fits connects the two. Tab or Left and
/// Right go from device to device, Up and Down from line to line, Enter taps, Escape goes back.
class WireCanvas : public QWidget
{
    Q_OBJECT

public:
    /// `pages` are those of the panel.
    WireCanvas(EditSession& session, QWidget* pages);
    ~WireCanvas() override;

    QList<QAction*> actions() const; ///< What can be done with the selected line.
    DeviceShelf& shelf() const;
    const WireScene& scene() const { return m_scene; }
    int selectedConnection() const { return m_connection; } ///< -1: none.
    /// That of another view of the connections; brings it into view. Emits nothing.
    void chooseConnection(int connection);
    /// The value that stands on a line; empty: none stands there.
    QString shownValue(int connection) const;

signals:
    void connectionChosen(int connection); ///< By hand; -1: none is.
    void problem(const QString& text);     ///< Also why something does not fit.

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool focusNextPrevChild(bool isForward) override;

private:
    /// The value of a line, where it stands.
    struct Value
    {
        int line; ///< In the scene.
        QRect area;
        QString text;
    };

    QRect place() const;
    void takePlace();
    void reload();
    void hear();
    void lay();
    void placeValues();
    QRect stubValueArea(const WireLine& line, const QSize& size) const;
    bool isFree(const QRect& area) const;
    QRect valueArea(const QPointF& middle, const QString& text) const;
    void refreshValues();
    WirePainter::Weight weightOf(const WireLine& line) const;
    void paintLayer();
    void paintFits(QPainter& painter) const;

    void tapDevice(const QString& device);
    void tapLine(int line);
    void openPorts(const QString& device);
    void closePorts();
    void arm(const Port& port);
    void disarm();
    void tapPort(const Port& port);
    void listPorts(bool ofOutputs);
    void join(const Port& port);
    void connectPorts(const WireChoice& choice);
    void selectConnection(int connection);
    void markConnection(int connection);
    void removeConnection();
    void goToOtherEnd();
    bool goBack();
    bool moveCursor(bool isForward);
    void moveLine(bool isForward);
    QStringList reachable() const;
    bool isWatched(const WireLine& line) const;
    void scroll(const QPoint& by);

    EditSession& m_session;
    QPointer<DeviceShelf> m_shelf;
    WireValues* m_values;
    QAction* m_remove;
    QAction* m_goTo;
    std::unique_ptr<PortList> m_ports;
    std::unique_ptr<PortKeys> m_keys;        ///< Null: none are open.
    QString m_open;                          ///< The device with the keys.
    std::optional<Port> m_armed;             ///< Waits for its other end.
    QHash<QString, QVector<Port>> m_fitting; ///< What fits the armed port, by device.
    QString m_cursor;                        ///< The device that Enter taps.
    int m_connection = -1;
    QString m_chosenText; ///< Of that connection, by which it is found again.
    WireScene m_scene;
    QHash<int, PlannedWire> m_wires; ///< By connection.
    QVector<Value> m_shown;
    QPixmap m_layer; ///< The lines; null: to be drawn.
    QBasicTimer m_tick;
    std::optional<QPoint> m_finger; ///< Where it went down, or was drawn to.
    bool m_isDrawn = false;         ///< The finger scrolls.
};

} // namespace norvo
