// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "../ListenedPanel.h"
#include "../TestLink.h"
#include "host/services/alarms/AlarmService.h"
#include "host/services/status/SourceWatch.h"

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"

/// Says what a test has it say, as a readout does: a value, and alerts behind it.
class Talker : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }

signals:
    void output(double value);
    void output(QString text);
    void on(bool isOn);
    void timeoutAlert();
    void minThresholdAlert();
    void maxThresholdAlert();
    void alarmAlert();
};

/// Does not start.
class Broken : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }
    bool initialise() override { return error("no such port"); }
};

/// Stands on a page.
class Shown : public BaseGuiDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }
    BaseWidget* createWidget() override { return new BaseWidget(this, nullptr); }

signals:
    void output(double value);
};

/// A running panel whose alarms are listened to as the program does it.
class AlarmPanel
{
public:
    explicit AlarmPanel(const QString& file = {}) : service(file)
    {
        listened.manager.registerDeviceType<Talker>("talker");
        listened.manager.registerDeviceType<Broken>("broken");
        listened.manager.registerDeviceType<Link>("link");
        listened.manager.registerDeviceType<Shown>("shown");
    }

    /// One alarm above 80, with the id "talker.output above 80".
    static norvo::AlarmSetting above80()
    {
        norvo::AlarmSetting alarm;
        alarm.id = "talker.output above 80";
        alarm.device = "talker";
        alarm.signal = "output";
        alarm.limit.number = 80;
        alarm.text = "Too hot";
        alarm.priority = norvo::AlarmPriority::High;
        return alarm;
    }

    void start(const QVector<norvo::AlarmSetting>& alarms = {above80()},
               const QMap<QString, QString>& others = {})
    {
        QVector<norvo::DeviceSetting> devices{describe::device("talker", "talker")};
        for (auto other = others.cbegin(); other != others.cend(); ++other) {
            devices.append(describe::device(other.key(), other->section(' ', 0, 0)));
            if (other->contains(' ')) { // And its page.
                devices.last().params.append(
                    norvo::ParamSetting{{"widget/area", {}}, {other->section(' ', 1), {}}});
            }
        }
        norvo::PanelDescription description = describe::panel(devices);
        description.alarms = alarms;
        listened.start(description, *this);
    }
    void listen(const norvo::PanelPlan& plan)
    {
        sources.listen(plan);
        service.listen(plan);
    }
    void complete(const norvo::Panel& panel)
    {
        sources.complete(panel);
        service.complete(panel, sources);
    }

    Talker& talker() const { return listened.device<Talker>("talker"); }
    const norvo::Alarm& alarm(const QString& id = "talker.output above 80") const
    {
        return service.model().at(service.model().find(id));
    }

    norvo::SourceWatch sources;
    norvo::AlarmService service;
    ListenedPanel listened;
};
