// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "../EditedPanel.h"

#include "host/editor/canvas/EditCanvas.h"
#include "host/editor/canvas/PageCover.h"

#include <QtTest>

/// A panel with a canvas over it, to be worked on by hand.
class CanvasTest
{
public:
    explicit CanvasTest(const QByteArray& text, const QSize& size = {800, 480})
        : panel(text, size),
          canvas(new norvo::EditCanvas(*panel.session, &panel.window)),
          problems(canvas.get(), &norvo::EditCanvas::problem)
    {
        canvas->setFocus();
        settle();
    }

    static void settle() { QCoreApplication::processEvents(); } ///< The layout of the page.

    norvo::PageCover* cover() const
    {
        for (auto* one : panel.window.findChildren<norvo::PageCover*>()) {
            if (one->isVisible()) {
                return one;
            }
        }
        return nullptr;
    }

    QPoint middle(int row, int column) const { return cover()->lines().rect(row, column).center(); }
    QRect frame(const QString& id) const { return cover()->lines().rect(panel.cells().value(id)); }
    QPoint middle(const QString& id) const { return frame(id).center(); }

    void tap(const QPoint& place, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mouseClick(cover(), Qt::LeftButton, modifiers, place);
        settle();
    }
    void drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mousePress(cover(), Qt::LeftButton, modifiers, from);
        moveTo(from + (to - from) / 2);
        moveTo(to);
        QTest::mouseRelease(cover(), Qt::LeftButton, modifiers, to);
        settle();
    }
    /// With the button down, which QTest::mouseMove() does not say.
    void moveTo(const QPoint& place) const
    {
        QMouseEvent move(QEvent::MouseMove, place, cover()->mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(cover(), &move);
    }
    void key(int code, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(cover(), Qt::Key(code), modifiers);
        settle();
    }

    QStringList selection() const { return panel.session->selection(); }
    QByteArray text() const { return panel.session->document().text(); }
    norvo::Cells cells(const QString& id) const { return panel.cells().value(id); }

    EditedPanel panel;
    std::unique_ptr<norvo::EditCanvas> canvas;
    QSignalSpy problems;
};

/// Where a device stands, as one text: "row column rowspan colspan".
inline QString toText(const norvo::Cells& cells)
{
    return QString("%1 %2 %3 %4")
        .arg(QString::number(cells.row), QString::number(cells.column),
             QString::number(cells.rowspan), QString::number(cells.colspan));
}
