// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/touch/MenuGuard.h"

namespace norvo {

/// What belongs to a screen that shows one panel and nothing else, for as long as it lives: no
/// pointer, in dialogs neither, and no context menus.
class Kiosk
{
public:
    explicit Kiosk(QCoreApplication& application);
    ~Kiosk();
    Q_DISABLE_COPY_MOVE(Kiosk)

private:
    MenuGuard m_menus;
};

} // namespace norvo
