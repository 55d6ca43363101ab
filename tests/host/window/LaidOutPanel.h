// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/TestPanel.h"
#include "host/panel/file/PanelFile.h"
#include "host/program/PluginSet.h"
#include "host/window/PanelWindow.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"

#include <QLayout>
#include <QtTest>

/// A panel in a window of its own, shown.
class LaidOutPanel
{
public:
    LaidOutPanel(const norvo::PluginSet& plugins, const QByteArray& text, const QSize& size)
        : m_panel(plugins.manager(), read(text))
    {
        m_window.page()->setLayout(new QVBoxLayout);
        m_window.page()->layout()->setContentsMargins(0, 0, 0, 0);
        m_panel.start(m_window.page());
        m_window.resize(size);
        m_window.show();
        m_isShown = QTest::qWaitForWindowExposed(&m_window);
    }

    bool isGood() const { return m_isShown && m_panel.diagnostics().isEmpty(); }
    BaseDevice* device(const QString& id) const { return m_panel.device(id); }
    BaseWidget* widget(const QString& id) const { return m_panel.widget(id); }
    QWidget* page() const { return m_window.page(); }
    int height(const QString& id) const { return widget(id)->height(); }
    int width(const QString& id) const { return widget(id)->width(); }
    /// Of every widget of the panel, by its place among them.
    QVector<QRect> geometries() const
    {
        QVector<QRect> all;
        for (const QWidget* widget : m_window.page()->findChildren<QWidget*>()) {
            all.append({widget->mapTo(m_window.page(), QPoint()), widget->size()});
        }
        return all;
    }

private:
    static norvo::PanelDescription read(const QByteArray& text)
    {
        norvo::Diagnostics diagnostics("p.yaml");
        norvo::PanelDescription description = norvo::PanelFile::parse(text, "p.yaml", diagnostics);
        for (const norvo::Diagnostic& diagnostic : diagnostics.sorted()) {
            qWarning("%s", qPrintable(diagnostic.toString()));
        }
        return description;
    }

    norvo::PanelWindow m_window{"Test"};
    TestPanel m_panel;
    bool m_isShown = false;
};

inline const QByteArray kControls = R"(devices:
  push: {device: button, params: {text: Push, widget: {row: 0, column: 0}}}
  lamp: {device: indicator, params: {widget: {row: 0, column: 1, caption: On}}}
  level: {device: output_digital, params: {name: Level, widget: {row: 1, column: 0, units: bar}}}
  mode: {device: dropdownlist, params: {options: "a|b", widget: {row: 1, column: 1, label: Mode}}}
)";
