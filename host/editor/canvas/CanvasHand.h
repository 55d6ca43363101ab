// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/canvas/cells/CellMap.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QTimer>

class QDropEvent;
class QMouseEvent;
class QTouchEvent;

namespace norvo {

class CanvasModel;
class PageCover;
class PageCovers;

/// What a hand does on the covers, by mouse or by finger: it taps, drags devices and their edges,
/// draws a band, scrolls, and drops new devices.
///
/// On empty ground a mouse draws the band and a finger scrolls; two fingers scroll anywhere.
class CanvasHand : public QObject
{
    Q_OBJECT

public:
    static constexpr const char* kTypeMime =
        "application/x-norvo-type";     ///< As EditSession::toPlace(), UTF-8.
    static constexpr int kTurnMs = 700; ///< On a tab, until its page is shown.

    CanvasHand(CanvasModel& model, PageCovers& covers);

    void watch(PageCover& cover);
    bool isDragging() const { return m_drag != Drag::None; }
    void cancel(); ///< What is dragged stays where it was.

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void pressed();
    void gutterTapped(Qt::Orientation along, int line); ///< Rows: vertical.
    void opened();                                      ///< By a double tap of a device.

private:
    enum class Drag { None, Move, Resize, Band, Scroll };

    bool mouse(PageCover& cover, const QMouseEvent& event);
    bool touch(PageCover& cover, const QTouchEvent& event);
    bool dragIn(PageCover& cover, QDropEvent& event);
    bool elsewhere(QWidget& widget, const QEvent& event);

    void press(PageCover& cover, const QPoint& place, Qt::KeyboardModifiers modifiers);
    void move(const QPoint& inPages, const QPoint& onScreen);
    void begin();
    void drag(PageCover& cover, const QPoint& place);
    void resizeTo(const Cells& cell);
    void release();
    void tap();
    void scroll(const QPoint& distance);
    void end();
    Cells cellAt(const PageCover& cover, const QPoint& place) const;

    CanvasModel& m_model;
    PageCovers& m_covers;
    QTimer m_turn;
    QString m_turnTo;
    QPointer<PageCover> m_cover; ///< That was pressed; null: nothing is.
    QPoint m_start;              ///< On it.
    Cells m_startCell;
    QPoint m_last; ///< On the screen.
    Qt::KeyboardModifiers m_modifiers;
    Qt::Edges m_edges;
    Drag m_drag = Drag::None;
    bool m_isFinger = false;
};

} // namespace norvo
