// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>

namespace norvo {

class CanvasModel;
class PageCover;

/// A cover over each page of the panel. Pages may be made anew at any time.
class PageCovers : public QObject
{
    Q_OBJECT

public:
    explicit PageCovers(CanvasModel& model);
    ~PageCovers() override; ///< With the covers.

    void cover(); ///< The pages as they are now.
    QVector<PageCover*> all() const;
    PageCover* shown() const; ///< Of the page that is seen; null: none is.
    void turnTo(const QString& area);
    QString keyAt(const QPoint& place) const; ///< The page whose tab is there, in pages; or none.

signals:
    void covered(PageCover* cover); ///< A new one.

private:
    void coverNew();
    void keepFocus();
    void keepMarks();
    void update();

    CanvasModel& m_model;
    QVector<QPointer<PageCover>> m_covers;
    QVector<QRegion> m_marks; ///< That are to be drawn again, of each cover.
    bool m_hadFocus = false;  ///< A page that has been made anew since the last turn of events.
};

} // namespace norvo
