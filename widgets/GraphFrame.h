// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/PlotView.h"

#include <QLabel>
#include <QPointer>

class QGridLayout;

/// The caption and the plot under it, as both kinds of graph show them. The layout's widget owns
/// them, and so they may be deleted from outside.
class GraphFrame
{
public:
    /// Makes and places a caption and a plot; earlier ones stay where they are, under these.
    void build(QGridLayout* layout, const QString& caption, const PlotView::Look& look);

    /// Takes the colors of a palette that has changed; ignores all other events of `owner`.
    void changeEvent(const QWidget& owner, const QEvent& event);

    PlotView* plot() const { return m_plot; } ///< Null before build() and once it was deleted.

private:
    QPointer<QLabel> m_caption;
    QPointer<PlotView> m_plot;
};
