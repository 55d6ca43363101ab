// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

#include <QElapsedTimer>
#include <QTimer>

/// A key that acts while a hand is on it, for jogging a machine.
///
/// While it is held, held(true) is a heartbeat: a receiver that misses it must stop. A heartbeat
/// that comes too late, because the panel stood still, releases the key. It must then be pressed
/// again.
class HoldDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kText[] = "text";
    static constexpr char kFontSize[] = "widget/fontSize";

    HoldDevice();
    ~HoldDevice() override; ///< Releases the key.

    bool isHeld() const { return m_heartbeat.isActive(); }
    /// For the widget only, and no input: nothing but a hand sets a machine in motion. Ignored
    /// unless the device is running.
    void press();

    bool initialise() override;
    void postInitialisation() override; ///< Emits held(false).
    void preShutdown() override;        ///< Releases the key.
    BaseWidget* createWidget() override;

signals:
    /// True at the press and at each heartbeat, false at the start and at the release. The last
    /// that any receiver hears is false, even where another releases the key meanwhile.
    void held(bool on);
    void pressed();  ///< Before held(true).
    void released(); ///< After held(false).

public slots:
    void release();

private:
    void beat();
    void sendTrue();

    QTimer m_heartbeat; ///< Active while the key is held.
    QElapsedTimer m_sinceBeat;
    int m_limitMs = 0;
};
