// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "../window/ShownPanel.h"
#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/program/run/RunningPanel.h"

#include <QtTest>

/// A panel with all that the program puts beside it, on view.
class StartedPanel
{
public:
    explicit StartedPanel(const QByteArray& text, const QString& alarmFile = {})
        : m_description(panelOf(text)),
          m_catalogue(builtTypes()),
          m_knowledge(m_catalogue),
          panel(m_description, m_knowledge, alarmFile)
    {
        norvo::Diagnostics diagnostics("panel.yaml");
        panel.start(
            norvo::PanelPlan::make(m_description, builtTypes(), {}, diagnostics, {}, m_knowledge),
            diagnostics);
        panel.window().resize(900, 500);
        panel.window().show();
        panel.window().activateWindow();
        if (diagnostics.hasErrors() || !QTest::qWaitForWindowActive(&panel.window())) {
            qFatal("%s", qPrintable(diagnostics.summary()));
        }
    }

    /// The first of its kind in the widget of the device.
    template <class T>
    T* part(const QString& id)
    {
        return panel.panel().widget(id)->findChild<T*>();
    }
    /// The key of that object name, in the window or in what is open over it.
    template <class T = QPushButton>
    T* key(const char* name)
    {
        QWidget* const sheet = QApplication::activeModalWidget();
        T* const found = sheet ? sheet->findChild<T*>(name) : nullptr;
        return found ? found : panel.window().findChild<T*>(name);
    }
    /// As if a wire had brought it.
    void send(const QString& id, double value)
    {
        QMetaObject::invokeMethod(panel.panel().device(id), "input", Q_ARG(double, value));
    }
    const norvo::Alarm& alarm(const QString& id)
    {
        const norvo::AlarmModel& model = panel.alarms().model();
        return model.at(model.find(id));
    }

private:
    const norvo::PanelDescription m_description;
    const norvo::Catalogue m_catalogue;
    const norvo::SenseCheck m_knowledge;

public:
    norvo::RunningPanel panel;
};
