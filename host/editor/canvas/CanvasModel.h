// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/canvas/CanvasEdits.h"
#include "host/editor/canvas/CanvasView.h"

#include <QObject>

#include <functional>

namespace norvo {

class EditSession;

/// What is selected, pointed at and about to land, whatever the hand that does it.
class CanvasModel : public QObject
{
    Q_OBJECT

public:
    CanvasModel(EditSession& session, int target); ///< `target`: see CanvasView.

    EditSession& session() const { return m_session; }
    CanvasEdits& edits() { return m_edits; }
    const CanvasView& view() const { return m_view; }
    void setTarget(int target);
    /// Whether a tap puts something into a cell: what is new, or those that are carried.
    bool isPlacing() const;

    void select(const QStringList& ids, bool isAdded = false); ///< Added: or taken out again.
    void selectAll(const QString& area);
    void selectNext(const QString& area, bool forward); ///< None behind the last one.
    void pointAt(const Cells& cell); ///< The cursor, and what is to be placed there.
    void hover(const Cells& cell);   ///< What is to be placed follows.
    void setBand(const QString& area, const QRect& band);

    void showGhost(const CellMap::Places& cells);
    void hideGhost();
    void drop(); ///< Moves or resizes what the ghost stands for, unless it is refused.

    void carry(); ///< From now on a tap is where the selected go.
    void put(const Cells& cell);
    void place(const QString& what, const Cells& cell); ///< As EditSession::toPlace().
    bool leave(); ///< Ends what has begun last: placing, the selection, the cursor. False: nothing.

    void moveSelected(int rows, int columns);
    void growSelected(int rows, int columns);
    void moveToPage(const QString& area);

    /// Tells what could not be done; nothing for an empty text. Whether it was done.
    bool report(const QString& fault);

signals:
    void aboutToChange(); ///< What is seen.
    void changed();
    void problem(const QString& text);

private:
    void change(const std::function<void()>& how);
    void follow(); ///< The session.
    QString refusal(const CellMap::Places& cells) const;
    CellMap::Places placesOf(const QString& what, const Cells& cell) const;

    EditSession& m_session;
    CanvasEdits m_edits;
    CanvasView m_view;
    bool m_isCarrying = false;
};

} // namespace norvo
