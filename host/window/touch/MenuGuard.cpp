// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/MenuGuard.h"

#include <QCoreApplication>
#include <QEvent>

namespace norvo {

MenuGuard::MenuGuard(QCoreApplication& application)
{
    application.installEventFilter(this);
}

bool MenuGuard::eventFilter(QObject*, QEvent* event)
{
    return event->type() == QEvent::ContextMenu;
}

} // namespace norvo
