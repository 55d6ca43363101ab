// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/canvas/CanvasView.h"
#include "host/editor/canvas/cells/CellLines.h"

#include <QCoreApplication>
#include <QFont>
#include <QPalette>

class QPainter;

namespace norvo {

/// Draws what lies over one page while it is edited.
class CoverPainter
{
public:
    CoverPainter(const CanvasView& view, const QString& area, const CellLines& lines,
                 const QRect& page, const QPalette& palette, const QFont& font);

    void paint(QPainter& painter, const QRect& exposed) const;
    /// All that comes and goes: marks of what is selected, the ghost, the cursor, the band.
    QRegion marks() const;

private:
    void gutter(QPainter& painter, const Cells& seen) const;
    void cells(QPainter& painter, const Cells& seen) const;
    void devices(QPainter& painter, const QRect& exposed) const;
    void selected(QPainter& painter, const QString& id, const QRect& frame) const;
    void ghost(QPainter& painter, const QRect& exposed) const;
    void doubleFrame(QPainter& painter, const QRect& rect, const QColor& colour, int style) const;
    void chip(QPainter& painter, const QRect& rect, const QString& text,
              const QColor& colour) const;
    QRect chipRect(const QRect& frame, const QString& text) const;

    const CanvasView& m_view;
    const QString m_area;
    const CellLines& m_lines;
    const QRect m_page;
    const QPalette m_palette;
    QFont m_font;
};

} // namespace norvo
