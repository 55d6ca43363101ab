// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/palette/MadeUpValues.h"
#include "host/panel/run/Panel.h"
#include "host/window/PanelPages.h"

#include <QImage>

class DeviceManager;

namespace norvo {

/// The device of a type's example that the type is of, alone, running where nobody sees it, to be
/// pictured. It is fed with made-up values, never by other devices, and is given no file and no
/// command.
class ExampleRun
{
public:
    ExampleRun(const TypeWords& words, const DeviceManager& manager);

    void send() { m_values.send(); }
    QImage picture(const QSize& size) const; ///< Null where the device does not run.

    /// What of the example is run.
    static PanelDescription shown(const TypeWords& words);

private:
    QString m_id;
    MadeUpValues m_values;
    PanelPages m_pages;
    Panel m_panel;
};

} // namespace norvo
