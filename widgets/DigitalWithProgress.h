// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/OutputWithProgress.h"
#include "widgets/DeviceView.h"
#include "widgets/ReadoutFace.h"

class QLabel;
class QProgressBar;
namespace norvo::Looks {
struct Readout;
}

/// The readout of an OutputWithProgress: caption, digits and the bar with its ends.
///
/// An alarm makes the caption blink until its cause is gone or the operator clicks on the widget. A
/// clicked alarm stays quiet until then, but for a time-out while the value is out of range.
class DigitalWithProgress : public DeviceView<OutputWithProgress>
{
    Q_OBJECT

public:
    DigitalWithProgress(BaseGuiDevice* device, QWidget* parent, bool withProgress);

    /// Point sizes; nothing happens before the end of initialise().
    void setFontSize(int valueSize, int captionSize, int scaleLabelSize);
    void setLayout(Qt::Orientation orientation);
    void setActive(bool active); ///< Inactive: grey, and all but the digits switched off.
    void startAlarm();
    void stopAlarm(); ///< Silences it; it keeps running until its cause is gone.
    void checkForAlarm();

    void deinitialise() override; ///< Does nothing: values are shown to the end.

signals:
    void alarmAlert(bool alarm); ///< Only where the device has alarms enabled.

public slots:
    void timeout();
    void input(double value);
    void blinkTimerExpired();

protected:
    void build(OutputWithProgress& readout) override;
    void mousePressEvent(QMouseEvent* event) override; ///< Acknowledges a running alarm.
    void showEvent(QShowEvent* event) override;

private:
    void createBar();
    void showState(const norvo::Looks::Readout& look);
    double barPosition(double value) const; ///< 0: empty, 1000: full, beyond either: outside.

    ReadoutFace m_face;
    QLabel* m_minLabel = nullptr; ///< Null without progress, as are the two below.
    QLabel* m_maxLabel = nullptr;
    QProgressBar* m_bar = nullptr;
    double m_minValue = 0;
    double m_maxValue = 0;
    bool m_alarmRunning = false;
    bool m_timedOut = false;
    bool m_outOfRange = false;
    bool m_alarmEnabled = false;
    const bool m_withProgress;
};
