// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

#include <QTimer>

/// A key that stops a machine, latches, and sends its state until the machine has acknowledged it.
///
/// It is no emergency stop: that is hard-wired. The latched state is the persistent parameter
/// "stopped", so that a new start finds the machine stopped. No wire releases it.
class StopDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kText[] = "text";
    static constexpr char kRelease[] = "release";
    static constexpr char kFontSize[] = "widget/fontSize";

    StopDevice();

    bool isStopped() const { return m_stopped; }
    /// Something is wired to acknowledged, and the state that was sent is not acknowledged yet.
    bool isUnconfirmed() const { return m_expectsAnswer && !m_confirmed; }

    /// For the widget only: a hand has hit the key. Latches it; a latched one sends its state
    /// again. Ignored unless the device is running.
    void hit();
    void unlatch(); ///< For the widget only: a hand has released it on purpose.

    /// Looks, too, whether the wire that is asked for ends in acknowledged.
    QObject* getReceiver(const QString& name, QString& signature) override;
    bool initialise() override;
    void postInitialisation() override; ///< Emits the state.
    void preShutdown() override;
    BaseWidget* createWidget() override;

signals:
    /// The state, at each change and at the start; again and again until it is acknowledged: true
    /// always, false only where something is wired to acknowledged.
    void stopped(bool on);
    void pressed();          ///< At each hit by a hand.
    void released();         ///< After stopped(false).
    void confirmed(bool on); ///< Whether the state is acknowledged; at each change.

public slots:
    void stop(); ///< Latches it as a hand does. Ignored where it is latched.
    /// What the machine says of its state. That of the key confirms it. A machine that runs while
    /// the key is latched takes a confirmation back, and is told again.
    void acknowledged(bool isStopped);
    void acknowledged(); ///< Confirms the state as it is.

private:
    void setStopped(bool stopped);
    void setConfirmed(bool confirmed);
    void send();

    QTimer m_repeat;
    bool m_stopped = false;
    bool m_confirmed = false;
    bool m_expectsAnswer = false;
};
