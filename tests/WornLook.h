// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/look/Look.h"

#include <QApplication>

namespace norvo {

/// NORVO_TEST_LOOK=light or dark: the application looks as a panel does. Otherwise it stays bare.
inline void wearLook(QApplication& application)
{
    const QByteArray theme = qgetenv("NORVO_TEST_LOOK");
    if (theme.isEmpty()) {
        return;
    }
    PanelLook look;
    look.theme = theme == "dark" ? PanelLook::Theme::Dark : PanelLook::Theme::Light;
    Look::apply(application, look);
}

} // namespace norvo
