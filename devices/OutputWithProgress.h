// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/ReadoutDevice.h"

/// A readout with a progress bar and an alarm for values out of the band and for missing ones.
///
/// Only numbers raise the threshold alerts; a value that came as text is passed on and shown.
class OutputWithProgress : public ReadoutDevice<OutputWithProgress>
{
    Q_OBJECT

public:
    OutputWithProgress();

    double getMaxThreshold() const { return m_maxThreshold; }
    double getMinThreshold() const { return m_minThreshold; }
    double getMinValue() const { return m_minValue; } ///< The empty end of the bar.
    double getMaxValue() const { return m_maxValue; } ///< The full end of the bar.
    QString getName() const { return m_name; }
    QString getType() const { return m_type; }
    QString getAlarmFile() const { return m_alarmFile; }
    bool getAlarmEnabled() const { return m_alarmEnabled; }
    int getPrecision() const { return m_precision; }
    int getTimeout() const { return m_timeoutMs; } ///< In milliseconds; below 1: none.
    double getDigitsStep() const { return m_digitsStep; }
    double getDashesStep() const { return m_dashesStep; }

    bool initialise() override;
    BaseWidget* createWidget() override;

signals:
    void output(double value);
    void output(QString text);
    void output(double value, QString senderName);
    void output(QString text, QString senderName);
    void minThresholdAlert(); ///< A number below the lower threshold came.
    void maxThresholdAlert(); ///< A number above the upper threshold came.
    void timeoutAlert();      ///< No value for the time-out, and again each time it passes.
    void alarmAlert();        ///< After any of the three above, where alarms are enabled.

private slots:
    void timerTimeout();

public slots:
    void input(double value); ///< Ignored unless the device is running.
    void input(QString text); ///< The same; text that is no number counts as 0.

private:
    void alarm();

    double m_minValue = 0;
    double m_maxValue = 0;
    double m_minThreshold = 0;
    double m_maxThreshold = 0;
    double m_digitsStep = 0;
    double m_dashesStep = 0;
    int m_timeoutMs = 0;
    int m_precision = 0;
    bool m_alarmEnabled = false;
    QString m_name;
    QString m_alarmFile;
    QString m_type;
};
