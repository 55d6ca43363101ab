// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/canvas/CanvasView.h"
#include "host/editor/canvas/cells/CellLines.h"
#include "host/editor/canvas/cells/PageRoom.h"

#include <QWidget>

namespace norvo {

class PageGrid;

/// Lies over a page that is edited, so that it scrolls and is scaled with it, and shows the canvas.
/// The page owns it. All that a hand does there comes to it, and not to the devices.
class PageCover : public QWidget
{
    Q_OBJECT

public:
    /// `view` must outlive it.
    PageCover(const CanvasView& view, const QString& area, PageGrid& grid);
    ~PageCover() override;

    const QString& area() const { return m_area; }
    const CellLines& lines() const;
    QRect gutter(Qt::Orientation along) const;   ///< Of the rows: vertical.
    QString deviceAt(const QPoint& place) const; ///< Empty: none.
    QRegion marks() const;                       ///< All that comes and goes.
    void makeRoom(); ///< For the rows and columns that the view has now.

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void focusLost(); ///< Also where it ends, or is hidden, with the focus.

protected:
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool focusNextPrevChild(bool next) override; ///< Goes past the devices of the page.

private:
    const CanvasView& m_view;
    const QString m_area;
    PageGrid& m_grid;
    std::optional<PageRoom> m_room;
    mutable std::optional<CellLines> m_lines; ///< Nothing: to be looked up.
};

} // namespace norvo
