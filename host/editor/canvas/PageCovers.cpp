// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/PageCovers.h"

#include "host/editor/EditSession.h"
#include "host/editor/canvas/CanvasModel.h"
#include "host/editor/canvas/PageCover.h"
#include "host/window/PanelPages.h"
#include "host/window/layout/PageGrid.h"

#include <QAbstractButton>
#include <QTimer>

namespace norvo {

PageCovers::PageCovers(CanvasModel& model) : m_model(model)
{
    connect(&model, &CanvasModel::aboutToChange, this, &PageCovers::keepMarks);
    connect(&model, &CanvasModel::changed, this, &PageCovers::update);
    connect(&model.session(), &EditSession::changed, this, &PageCovers::cover);
}

PageCovers::~PageCovers()
{
    disconnect(&m_model, nullptr, this, nullptr);
    for (PageCover* const one : all()) {
        one->disconnect(this);
        delete one;
    }
}

QVector<PageCover*> PageCovers::all() const
{
    QVector<PageCover*> covers;
    for (const QPointer<PageCover>& one : m_covers) {
        if (one) {
            covers.append(one);
        }
    }
    return covers;
}

PageCover* PageCovers::shown() const
{
    const PanelPages& pages = m_model.session().live().pages();
    for (PageCover* const one : all()) {
        if (one->isVisibleTo(&pages)) {
            return one;
        }
    }
    return nullptr;
}

void PageCovers::cover()
{
    PanelPages& pages = m_model.session().live().pages();
    const QStringList areas = pages.areas().isEmpty() ? QStringList(QString()) : pages.areas();
    QVector<QPointer<PageCover>> covers;
    for (const QString& area : areas) {
        PageGrid* const grid = pages.grid(area);
        auto* found = grid ? grid->parentWidget()->findChild<PageCover*>(QString(),
                                                                         Qt::FindDirectChildrenOnly)
                           : nullptr;
        if (found && found->area() == area) {
            found->makeRoom();
            found->update();
        } else if (grid) {
            delete found;
            found = new PageCover(m_model.view(), area, *grid);
            connect(found, &PageCover::focusLost, this, &PageCovers::keepFocus);
            connect(found, &QObject::destroyed, this, &PageCovers::coverNew, Qt::QueuedConnection);
            emit covered(found);
        }
        covers.append(found);
    }
    m_covers = covers;
    if (m_hadFocus && shown()) {
        shown()->setFocus();
    }
}

void PageCovers::coverNew()
{
    if (all().size() < m_covers.size()) {
        cover();
    }
}

/// A reload takes the focus from a page within one turn of events, and gives it back by cover().
void PageCovers::keepFocus()
{
    m_hadFocus = true;
    QTimer::singleShot(0, this, [this] { m_hadFocus = false; });
}

void PageCovers::keepMarks()
{
    m_marks.clear();
    for (PageCover* const one : all()) {
        m_marks.append(one->marks());
    }
}

void PageCovers::update()
{
    const QVector<PageCover*> covers = all();
    for (int i = 0; i < covers.size(); ++i) {
        covers[i]->update(m_marks.value(i) + covers[i]->marks());
    }
}

void PageCovers::turnTo(const QString& area)
{
    if (QAbstractButton* const key = m_model.session().live().pages().key(area)) {
        key->click();
    }
}

QString PageCovers::keyAt(const QPoint& place) const
{
    const PanelPages& pages = m_model.session().live().pages();
    for (const QString& area : pages.areas()) {
        const QAbstractButton* const key = pages.key(area);
        if (key && QRect(key->mapTo(&pages, QPoint()), key->size()).contains(place)) {
            return area;
        }
    }
    return {};
}

} // namespace norvo
