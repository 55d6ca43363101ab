// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/Kiosk.h"

#include <QCursor>
#include <QGuiApplication>

namespace norvo {

Kiosk::Kiosk(QCoreApplication& application) : m_menus(application)
{
    QGuiApplication::setOverrideCursor(Qt::BlankCursor);
}

Kiosk::~Kiosk()
{
    QGuiApplication::restoreOverrideCursor();
}

} // namespace norvo
