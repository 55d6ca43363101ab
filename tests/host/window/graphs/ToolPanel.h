// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "../ShownPanel.h"
#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/plots/PlotCopy.h"
#include "host/program/run/RunningPanel.h"
#include "host/window/graphs/GraphTools.h"
#include "host/window/graphs/ToolKey.h"
#include "host/window/graphs/ToolPane.h"

#include "norvo/DoubleVec.h"

#include <qcustomplot.h>

#include <QDateTime>
#include <QTemporaryDir>

/// A panel with a time graph "trend" and an array "spectrum" as the program runs it, on view, and
/// what a hand does to the tools of its graphs.
class ToolPanel
{
public:
    static QByteArray twoGraphs()
    {
        return "devices:\n"
               "  trend: {device: output_graph, params: {name: Trend, widget: {row: 0, timePeriod: "
               "20}}}\n"
               "  spectrum: {device: output_vector, params: {name: Spectrum, widget: {row: 1, "
               "maxValue: 9}}}\n";
    }

    explicit ToolPanel(const QByteArray& text = twoGraphs(), const QSize& size = {800, 700})
        : m_description(panelOf(text)), m_catalogue(builtTypes()), m_knowledge(m_catalogue)
    {
        m_description.file = folder.filePath("bench.yaml");
        running.emplace(m_description, m_knowledge, QString());
        norvo::Diagnostics diagnostics("bench.yaml");
        running->start(
            norvo::PanelPlan::make(m_description, builtTypes(), {}, diagnostics, {}, m_knowledge),
            diagnostics);
        window().resize(size);
        window().show();
        window().activateWindow();
        if (diagnostics.hasErrors() || !QTest::qWaitForWindowActive(&window())) {
            qFatal("%s", qPrintable(diagnostics.summary()));
        }
    }
    ~ToolPanel() { running->stop(); }

    norvo::PanelWindow& window() { return running->window(); }
    BaseWidget* widget(const QString& id = "trend") { return running->panel().widget(id); }
    /// The device's own.
    QCustomPlot* plot(const QString& id = "trend") { return widget(id)->findChild<QCustomPlot*>(); }

    norvo::GraphTools* tools(const QString& id = "trend")
    {
        // A scaled page is a window of its own.
        for (auto* const tools : widget(id)->window()->findChildren<norvo::GraphTools*>()) {
            if (tools->display() == widget(id)) {
                return tools;
            }
        }
        return nullptr;
    }
    QAbstractButton* corner(const QString& id = "trend")
    {
        return tools(id)->findChild<QAbstractButton*>();
    }
    norvo::ToolPane* pane(const QString& id = "trend") { return tools(id)->pane(); }
    norvo::PlotCopy& copy(const QString& id = "trend")
    {
        return static_cast<norvo::PlotCopy&>(pane(id)->plot());
    }
    norvo::ToolKey* key(const char* name, const QString& id = "trend")
    {
        return pane(id)->findChild<norvo::ToolKey*>(name);
    }
    QString state(const QString& id = "trend")
    {
        return pane(id)->findChild<QLabel*>("graphState")->text();
    }

    void open(const QString& id = "trend")
    {
        QTest::mouseClick(corner(id), Qt::LeftButton);
        QVERIFY(pane(id));
        QTRY_VERIFY(copy(id).area().width() > 100); // It was drawn.
    }
    void tap(const char* name, const QString& id = "trend")
    {
        QTest::mouseClick(key(name, id), Qt::LeftButton);
    }
    /// Values of a sender, each so many seconds ago.
    void send(const QString& sender, const QVector<QPointF>& agoAndValue)
    {
        send(sender, agoAndValue, now());
    }
    /// So many seconds before a present that waits for no machine.
    void send(const QString& sender, const QVector<QPointF>& agoAndValue, double present)
    {
        for (const QPointF& point : agoAndValue) {
            QMetaObject::invokeMethod(widget(), "input", Q_ARG(double, point.y()),
                                      Q_ARG(QString, sender), Q_ARG(double, present - point.x()));
        }
    }
    void sendArray(const QVector<double>& values)
    {
        QMetaObject::invokeMethod(widget("spectrum"), "input", Q_ARG(DoubleVec, values));
    }
    /// Until the device has drawn again.
    void waitForFrames(int count, const QString& id = "trend")
    {
        QSignalSpy frames(plot(id), &QCustomPlot::afterReplot);
        QTRY_VERIFY(frames.count() >= count);
    }
    static double now() { return QDateTime::currentMSecsSinceEpoch() * 0.001; }
    static QImage pictureOf(QWidget* widget)
    {
        return widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    const QTemporaryDir folder;

private:
    norvo::PanelDescription m_description;
    const norvo::Catalogue m_catalogue;
    const norvo::SenseCheck m_knowledge;

public:
    std::optional<norvo::RunningPanel> running;
};
