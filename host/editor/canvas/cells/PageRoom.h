// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMargins>
#include <QPointer>

namespace norvo {

class PageGrid;

/// Makes room on a page that is edited: a gutter for the numbers of rows and columns, rows and
/// columns that a finger can meet, also where little or nothing stands in them, and one more of
/// each at the ends. At its end the page is as it was.
class PageRoom
{
public:
    /// `target`: the size of what is touched, in pixels. `rows`, `columns`: how many hold anything.
    PageRoom(PageGrid& grid, int target, int rows, int columns);
    ~PageRoom();
    Q_DISABLE_COPY_MOVE(PageRoom)

private:
    const QPointer<PageGrid> m_grid; ///< A page that is made anew takes its grid along.
    const QMargins m_margins;        ///< Before.
};

} // namespace norvo
