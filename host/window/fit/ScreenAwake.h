// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace norvo {

/// Keeps an X server from blanking its screen and putting it to sleep, for as long as it lives;
/// then all is as it was. It calls the program xset, and warns where that cannot be had.
class ScreenAwake
{
public:
    explicit ScreenAwake(const QString& display); ///< Empty: as the environment says.
    ~ScreenAwake();
    Q_DISABLE_COPY_MOVE(ScreenAwake)

private:
    QStringList m_server;  ///< The options that name it.
    QStringList m_restore; ///< The options that bring back what was.
};

} // namespace norvo
