// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseWidget.h"
#include "widgets/PlotView.h"

#include <QLabel>
#include <QPointer>

/// What both kinds of graph show: a caption and a plot under it, in the colours of the palette. The
/// widget owns them as children, and so they may be deleted from outside. Without Q_OBJECT, so that
/// a graph's meta-object follows on BaseWidget's.
class GraphFrame : public BaseWidget
{
public:
    using BaseWidget::BaseWidget;

protected:
    /// Makes and places a caption and a plot; earlier ones stay where they are, under these.
    void build(const QString& caption, const PlotView::Look& look);

    PlotView* view() const { return m_view; } ///< Null before build() and once it was deleted.

    void changeEvent(QEvent* event) override; ///< Takes the colours of a palette that has changed.

private:
    QPointer<QLabel> m_caption;
    QPointer<PlotView> m_view;
};
