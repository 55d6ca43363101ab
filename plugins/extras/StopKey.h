// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/extras/HeldKey.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

class StopDevice;

/// The key of a StopDevice: red on yellow in any look, its state in words as well.
///
/// A hand on it stops. A hand that comes onto the latched key and stays there for the release time
/// unlatches it; time in which the panel stood still does not count. A bar shows how far it is.
class StopKey : public HeldKey
{
    Q_OBJECT

public:
    explicit StopKey(StopDevice& device, int releaseMs);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void hit();
    void endRelease();
    void countRelease();
    void showState();

    const QPointer<StopDevice> m_device;
    const QString m_caption;
    const int m_releaseMs;
    int m_heldMs = 0;
    QTimer m_tick; ///< Active while a hand is releasing the key.
    QElapsedTimer m_sinceTick;
};
