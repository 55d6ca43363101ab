// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/canvas/CanvasActions.h"
#include "host/editor/canvas/CanvasHand.h"
#include "host/editor/canvas/CanvasKeys.h"
#include "host/editor/canvas/CanvasModel.h"
#include "host/editor/canvas/HandShield.h"
#include "host/editor/canvas/PageCovers.h"

#include <QPointer>

class QWidget;

namespace norvo {

class LineKeys;

/// Lies over the pages of a running panel and edits where its devices stand: they are selected,
/// moved, resized, copied and removed, and new ones are put down. The devices run on beneath, and a
/// hand does not reach them. Where it is not made it costs nothing.
class EditCanvas : public QObject
{
    Q_OBJECT

public:
    EditCanvas(EditSession& session, QWidget* parent);

    QList<QAction*> actions() const { return m_actions.all(); }
    void setFocus(); ///< To the page that is seen.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void problem(const QString& text); ///< Why something could not be done, or cannot be edited.
    void opened();                     ///< The selected device is to be looked at in full.

private:
    void followScale();
    void dress(PageCover& cover);
    void showLineKeys(Qt::Orientation along, int line);
    void tell(); ///< A screen reader.

    CanvasModel m_model;
    PageCovers m_covers;
    CanvasHand m_hand;
    CanvasKeys m_keys;
    CanvasActions m_actions;
    HandShield m_shield;
    QPointer<LineKeys> m_lineKeys;
};

} // namespace norvo
