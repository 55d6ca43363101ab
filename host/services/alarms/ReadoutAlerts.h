// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/alarms/Alarm.h"

#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVector>

#include <functional>
#include <memory>
#include <vector>

class BaseDevice;

namespace norvo {

class Node;

/// Listens to devices that tell by themselves that something is amiss: timeoutAlert(),
/// minThresholdAlert(), maxThresholdAlert(), and alarmAlert() where they have none of these.
///
/// Such a signal says that it is so, and none that it is over: that is when the device takes a
/// value, as its output says, without telling it again.
class ReadoutAlerts : public QObject
{
    Q_OBJECT

public:
    using Define = std::function<int(const AlarmDefinition& definition)>;
    using Tell = std::function<void(int alarm, bool isOn)>;

    /// `define` gives the number of an alarm, or -1; `tell` hears whether it is so.
    ReadoutAlerts(Define define, Tell tell);
    ~ReadoutAlerts() override;

    void listen(const Node& node); ///< Nothing for a device without such signals.
    void forgetAllBut(const QSet<QString>& devices);
    QVector<int> alarms() const; ///< Of all devices that are heard.

private:
    struct Alert
    {
        int alarm = -1;
        bool isTold = false; ///< Since the last value.
    };
    struct Readout
    {
        QString device;
        std::vector<Alert> alerts;
        std::unique_ptr<QObject> ear = std::make_unique<QObject>(); ///< Owns the taps.
        bool isWaiting = false;                                     ///< In m_settling.
    };

    void hear(BaseDevice& device, Readout& readout, const QString& signal, int alarm);
    void takeValue(Readout& readout);
    void settle();

    const Define m_define;
    const Tell m_tell;
    std::vector<std::unique_ptr<Readout>> m_readouts;
    std::vector<Readout*> m_settling; ///< Have taken a value; alerts may follow it.
    QTimer m_settle;
};

/// What an operator calls the device: its caption, or else its id.
QString captionOf(const Node& node);

} // namespace norvo
