// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QList>
#include <QSize>
#include <QWidget>

class QGridLayout;

namespace norvo {

class TouchKey;

/// Keys in a grid of so many columns and rows, for a screen that has no room for all of them. They
/// fill the upper rows, page after page. The last row stays, with a key that turns the pages.
class KeyPages : public QWidget
{
    Q_OBJECT

public:
    /// `steady` stand in the last row, behind the key that turns the pages. Where that has room the
    /// last two take two places each, and the one before them the rest.
    KeyPages(const QSize& cells, const QList<TouchKey*>& steady);

    int rows() const { return m_cells.height(); }
    void setKeys(const QList<TouchKey*>& keys); ///< Shows the first page if they are others.

private:
    int keysOnPage() const { return m_cells.width() * (m_cells.height() - 1); }
    void placeSteady(const QList<TouchKey*>& steady);
    void clearPage();
    void showPage();
    void turn();

    const QSize m_cells;
    QGridLayout* m_grid;
    TouchKey* m_more;
    QList<TouchKey*> m_keys;
    int m_page = 0;
};

} // namespace norvo
