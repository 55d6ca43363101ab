// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace norvo {

struct Cells;

/// What a panel shows itself on: areas, each a grid of cells.
class PanelSurface : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Makes a grid for each area, or one grid when there is none; grids of areas that were there
    /// before stay. All widgets that stay are to be placed again.
    virtual void setAreas(const QStringList& areas) = 0;
    /// The area must exist. Where the widget stands there already, nothing happens.
    virtual void place(QWidget* widget, const Cells& cells) = 0;
    /// Says in these cells what is wrong with a device.
    virtual void placeError(const QString& id, const QString& text, const Cells& cells) = 0;
    /// All is placed: what placeError() has not said again since setAreas() goes.
    virtual void endPlacing() = 0;
    /// Gives the grids up, so that widgets can be deleted one by one without a search for each.
    virtual void release() = 0;
    virtual void clear() = 0; ///< Deletes what is left.
};

} // namespace norvo
