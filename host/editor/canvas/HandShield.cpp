// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/HandShield.h"

#include "host/editor/canvas/PageCover.h"
#include "host/window/PanelPages.h"
#include "host/window/access/HandEvents.h"

#include <QApplication>
#include <QFocusEvent>

namespace norvo {

HandShield::HandShield(PanelPages& pages) : m_pages(pages)
{
    qApp->installEventFilter(this);
}

/// Null: it stands on no page, or is the cover or a part of it.
QWidget* HandShield::coverOver(QWidget& widget) const
{
    for (QWidget* part = &widget; part && part != &m_pages; part = part->parentWidget()) {
        if (qobject_cast<PageCover*>(part)) {
            return nullptr;
        }
        QWidget* const page = part->parentWidget();
        auto* const cover =
            page ? page->findChild<PageCover*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
        if (cover) {
            return cover;
        }
    }
    return nullptr;
}

bool HandShield::eventFilter(QObject* watched, QEvent* event)
{
    const bool isFocus = event->type() == QEvent::FocusIn;
    if (!watched->isWidgetType() || (!isFocus && !HandEvents::isFromHand(*event))) {
        return false;
    }
    QWidget* const cover = m_pages.isAncestorOf(static_cast<QWidget*>(watched))
                               ? coverOver(static_cast<QWidget&>(*watched))
                               : nullptr;
    if (cover && isFocus) {
        cover->setFocus(static_cast<QFocusEvent*>(event)->reason());
    }
    return cover;
}

} // namespace norvo
