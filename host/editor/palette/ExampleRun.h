// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/palette/MadeUpValues.h"
#include "host/editor/palette/PicturedPanel.h"
#include "host/panel/run/Panel.h"
#include "host/window/PanelPages.h"

#include <QImage>

namespace norvo {

class Catalogue;

/// Devices that run where nobody sees them, to be pictured, fed with made-up values.
class ExampleRun
{
public:
    ExampleRun(const PicturedPanel& shown, const Catalogue& catalogue);

    void send() { m_values.send(); }
    QImage picture(const QSize& size) const; ///< Null where no device runs.

private:
    QRect area() const;

    QStringList m_ids;
    MadeUpValues m_values;
    PanelPages m_pages;
    Panel m_panel;
};

} // namespace norvo
