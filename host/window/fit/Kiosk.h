// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/fit/ScreenAwake.h"
#include "host/window/touch/MenuGuard.h"

#include <optional>

namespace norvo {

/// What belongs to a screen that shows one panel and nothing else, for as long as it lives: no
/// pointer, in dialogs neither, no context menus, and an X server that stays awake.
class Kiosk
{
public:
    /// `display` names the X server; empty: the one of the environment.
    explicit Kiosk(QCoreApplication& application, const QString& display = {});
    ~Kiosk();
    Q_DISABLE_COPY_MOVE(Kiosk)

private:
    MenuGuard m_menus;
    std::optional<ScreenAwake> m_awake; ///< On an X server.
};

} // namespace norvo
