// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/ReadoutDevice.h"

/// Shows one number: green within a band, red outside it, grey when none has come for a while.
///
/// Passes every value on, as number and as text, with and without the name of its sender.
class OutputDigitalDevice : public ReadoutDevice<OutputDigitalDevice>
{
    Q_OBJECT

public:
    static constexpr char kName[] = "name";
    static constexpr char kUnits[] = "widget/units";
    static constexpr char kMinThreshold[] = "widget/minThreshold";
    static constexpr char kMaxThreshold[] = "widget/maxThreshold";
    static constexpr char kPrecision[] = "widget/precision";
    static constexpr char kLabelSize[] = "widget/labelSize";
    static constexpr char kValueSize[] = "widget/valueSize";

    OutputDigitalDevice();

    bool initialise() override;
    BaseWidget* createWidget() override;

signals:
    void output(double value);
    void output(QString text);
    void output(double value, QString senderName);
    void output(QString text, QString senderName);
    void timeoutAlert(); ///< No value for the time-out, and again each time it passes.

private slots:
    void timerTimeout();

public slots:
    void input(double value); ///< Ignored unless the device is running.
    void input(QString text); ///< The same; text that is no number counts as 0.
};
