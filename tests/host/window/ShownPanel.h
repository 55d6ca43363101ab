// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/BuiltTypes.h"
#include "host/panel/TestPanel.h"
#include "host/panel/file/PanelFile.h"
#include "host/window/PanelWindow.h"

#include "norvo/BaseWidget.h"

#include <QtTest>

inline norvo::PanelDescription panelOf(const QByteArray& text)
{
    norvo::Diagnostics diagnostics("panel.yaml");
    norvo::PanelDescription panel = norvo::PanelFile::parse(text, "panel.yaml", diagnostics);
    for (const norvo::Diagnostic& diagnostic : diagnostics.sorted()) {
        qFatal("%s", qPrintable(diagnostic.toString()));
    }
    return panel;
}

/// A panel of real devices in its window, on view.
class ShownPanel
{
public:
    explicit ShownPanel(const QByteArray& text, const QSize& size = {640, 400})
        : ShownPanel(panelOf(text), size)
    {}

    ShownPanel(const norvo::PanelDescription& description, const QSize& size)
        : window("Panel"), panel(builtTypes(), description)
    {
        panel.start(window.page());
        if (description.look.fit == norvo::PanelLook::Fit::Scale) {
            window.scalePage(description.look.design);
        }
        window.resize(size);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window)) {
            qFatal("the window does not show");
        }
    }

    /// The only part of that kind in a device's widget; null where there is not just one.
    template <class T>
    T* only(const QString& id) const
    {
        const BaseWidget* const widget = panel.widget(id);
        const QList<T*> found = widget ? widget->template findChildren<T*>() : QList<T*>();
        return found.size() == 1 ? found.first() : nullptr;
    }

    norvo::PanelWindow window;
    TestPanel panel;
};
