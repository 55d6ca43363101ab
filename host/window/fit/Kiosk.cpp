// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/Kiosk.h"

#include <QCursor>
#include <QGuiApplication>

namespace norvo {

Kiosk::Kiosk(QCoreApplication& application, const QString& display) : m_menus(application)
{
    if (QGuiApplication::platformName() == "xcb") {
        m_awake.emplace(display);
    }
    QGuiApplication::setOverrideCursor(Qt::BlankCursor);
}

Kiosk::~Kiosk()
{
    QGuiApplication::restoreOverrideCursor();
}

} // namespace norvo
