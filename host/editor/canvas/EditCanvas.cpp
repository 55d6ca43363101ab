// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/EditCanvas.h"

#include "host/editor/EditSession.h"
#include "host/editor/canvas/LineKeys.h"
#include "host/editor/canvas/PageCover.h"
#include "host/window/PanelPages.h"
#include "host/window/look/TouchSize.h"

#include <QApplication>
#include <QGraphicsView>
#include <QTimer>

namespace norvo {

namespace {

int targetOf(EditSession& session)
{
    LivePanel& live = session.live();
    return TouchSize::pixels(live.description().look.touch, live.pages());
}

} // namespace

EditCanvas::EditCanvas(EditSession& session, QWidget* parent)
    : QObject(parent),
      m_model(session, targetOf(session)),
      m_covers(m_model),
      m_hand(m_model, m_covers),
      m_keys(m_model, m_hand),
      m_actions(m_model, m_covers),
      m_shield(session.live().pages())
{
    connect(&m_covers, &PageCovers::covered, this, [this](PageCover* cover) { dress(*cover); });
    connect(&m_model, &CanvasModel::problem, this, &EditCanvas::problem);
    connect(&m_model, &CanvasModel::changed, this, &EditCanvas::tell);
    connect(&m_hand, &CanvasHand::opened, this, &EditCanvas::opened);
    connect(&m_keys, &CanvasKeys::opened, this, &EditCanvas::opened);
    connect(&m_hand, &CanvasHand::gutterTapped, this, &EditCanvas::showLineKeys);
    connect(&m_hand, &CanvasHand::pressed, this, [this] { delete m_lineKeys; });
    connect(&session, &EditSession::changed, this, [this] { delete m_lineKeys; });
    const QWidget* const focused = QApplication::focusWidget();
    const bool hadFocus = focused && session.live().pages().isAncestorOf(focused);
    m_covers.cover();
    if (QGraphicsView* const around = TouchSize::scaledBy(session.live().pages())) {
        around->installEventFilter(this);
    }
    if (hadFocus) {
        setFocus();
    }
    tell();
}

/// Of a scaled page, where another size of the window is another scale.
bool EditCanvas::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize) {
        QTimer::singleShot(0, this, &EditCanvas::followScale); // Once the page is scaled to it.
    }
    return QObject::eventFilter(watched, event);
}

void EditCanvas::followScale()
{
    const int target = targetOf(m_model.session());
    if (target != m_model.view().target) {
        m_model.setTarget(target);
        m_covers.cover();
    }
}

void EditCanvas::setFocus()
{
    if (PageCover* const cover = m_covers.shown()) {
        cover->setFocus();
    }
}

void EditCanvas::dress(PageCover& cover)
{
    m_hand.watch(cover);
    m_keys.watch(cover);
    cover.addActions(m_actions.all());
}

void EditCanvas::showLineKeys(Qt::Orientation along, int line)
{
    PageCover* const cover = m_covers.shown();
    if (!cover) {
        return;
    }
    Cells cell;
    cell.area = cover->area();
    cell.row = along == Qt::Vertical ? line : 0;
    cell.column = along == Qt::Vertical ? 0 : line;
    m_model.select({});
    m_model.pointAt(cell);
    delete m_lineKeys;
    m_lineKeys = new LineKeys(*cover, m_actions.ofLine(along), cover->lines().rect(cell),
                              m_model.view().target);
}

void EditCanvas::tell()
{
    PageCover* const cover = m_covers.shown();
    if (!cover) {
        return;
    }
    const CanvasView& view = m_model.view();
    const auto placed = [](const QString& what, const Cells& cell) {
        return tr("%1, row %2, column %3")
            .arg(what, QString::number(cell.row), QString::number(cell.column));
    };
    QStringList parts{cover->area().isEmpty() ? tr("The panel") : cover->area()};
    if (view.ghost && !view.ghost->refusal.isEmpty()) {
        parts.append(view.ghost->refusal);
    }
    if (view.cursor.row >= 0) {
        const QString id = view.map.at(view.cursor.area, view.cursor.row, view.cursor.column);
        parts.append(placed(id.isEmpty() ? tr("free") : id, view.cursor));
    } else if (!view.only().isEmpty()) {
        parts.append(placed(view.only(), view.map.places().value(view.only())));
    } else if (!view.selection.isEmpty()) {
        parts.append(view.selection.join(", "));
    }
    const QString name = parts.join(": ");
    if (cover->accessibleName() != name) {
        cover->setAccessibleName(name);
    }
}

} // namespace norvo
