// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CurvePoints.h"
#include "Stand.h"

#include "devices/OutputGraphDevice.h"
#include "devices/OutputVector.h"
#include "widgets/GraphOutputWidget.h"
#include "widgets/VectorGraphWidget.h"

#include <QDateTime>
#include <QLabel>
#include <QtTest>

inline double secondsNow()
{
    return double(QDateTime::currentMSecsSinceEpoch()) * 0.001;
}

inline bool isCosmeticSolid(const QPen& pen)
{
    return pen.isCosmetic() && pen.style() == Qt::SolidLine;
}

/// A graph and its parts; the newest ones where there are several.
template <class Device, class Widget>
struct GraphStand : Stand<Device>
{
    using Stand<Device>::Stand;

    Widget& graph() const { return static_cast<Widget&>(*this->widget); }
    QCustomPlot* plot() const
    {
        return this->widget->template findChildren<QCustomPlot*>().value(plots() - 1);
    }
    int plots() const { return this->widget->template findChildren<QCustomPlot*>().size(); }
    QLabel* caption() const { return this->widget->template findChildren<QLabel*>().last(); }
    QCPGraph* curve(int index) const { return plot()->graph(index); }

    /// Shows it and waits until it has been drawn.
    bool show(const QSize& size = {400, 300})
    {
        this->widget->resize(size);
        this->widget->show();
        return QTest::qWaitForWindowExposed(this->widget.get());
    }
};

struct TimeGraph : GraphStand<OutputGraphDevice, GraphOutputWidget>
{
    using GraphStand::GraphStand;

    void input(double value, const QString& sender, double time)
    {
        graph().input(value, sender, time);
    }
    void refresh() const { QMetaObject::invokeMethod(widget.get(), "updateGraph"); }

    /// The legend's entries from top to bottom.
    QStringList legend() const
    {
        QStringList names;
        for (int i = 0; i < plot()->legend->itemCount(); ++i) {
            names.append(
                static_cast<QCPPlottableLegendItem*>(plot()->legend->item(i))->plottable()->name());
        }
        return names;
    }

    /// The curves in the order in which they were begun: "A: (1, 0.5) | A: (5, 1)".
    QString curves() const
    {
        QStringList texts;
        for (int i = 0; i < plot()->graphCount(); ++i) {
            texts.append(curve(i)->name() + ": " + pointsOf(curve(i)));
        }
        return texts.join(" | ");
    }
};

using VectorGraph = GraphStand<OutputVector, VectorGraphWidget>;
