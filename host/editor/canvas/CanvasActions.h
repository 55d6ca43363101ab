// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/Placement.h"

#include <QKeySequence>
#include <QList>
#include <QMenu>

#include <functional>

class QAction;

namespace norvo {

class CanvasModel;
class PageCovers;

/// What can be done with what is selected, or at the cursor, as actions with their keys.
class CanvasActions : public QObject
{
    Q_OBJECT

public:
    CanvasActions(CanvasModel& model, PageCovers& covers);

    const QList<QAction*>& all() const { return m_all; }
    /// Insert before, insert behind, remove: of the row, or the column, at the cursor.
    QList<QAction*> ofLine(Qt::Orientation along) const; ///< Rows: vertical.

private:
    enum class Needs { Nothing, Devices, Line };

    struct Entry
    {
        QAction* action;
        Needs needs;
    };

    QAction* add(const QString& text, const QKeySequence& key, Needs needs,
                 const std::function<void()>& act);
    void addSpans();
    void addClipboard();
    void addLines();
    void addPages();
    void fillPages();
    void keepEnabled();
    bool copy(); ///< False: they cannot be.
    void keepAsTemplate();
    void paste();
    Cells line() const; ///< At the cursor, or of what is selected; row -1: none.

    CanvasModel& m_model;
    PageCovers& m_covers;
    QList<QAction*> m_all;
    QList<Entry> m_entries;
    QList<QAction*> m_ofRow;
    QList<QAction*> m_ofColumn;
    QMenu m_pages; ///< To move to.
};

} // namespace norvo
