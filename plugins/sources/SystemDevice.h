// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/sources/ProcReadings.h"
#include "norvo/BaseDevice.h"
#include "norvo/DeviceTypeInfo.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTimer>

#include <optional>

/// Readings of the machine that the panel runs on.
///
/// Parameter "interval" (ms, default 1000, at least 50): time between two readings. The first
/// reading is emitted in postInitialisation(). The outputs that compare two readings (cpu,
/// received, sent) stay silent until the second one, which follows 200 ms later at most.
///
/// A source that cannot be read or does not read as it should is reported in one alert, until it
/// reads well again; its outputs carry NaN ("nan" where they are texts) meanwhile.
class SystemDevice : public BaseDevice
{
    Q_OBJECT

public:
    explicit SystemDevice(const QString& procFolder = QStringLiteral("/proc"));

    static DeviceTypeInfo typeInfo();

    void takeReading(); ///< Reads everything once and emits it, as the timer does.

    bool initialise() override;
    void postInitialisation() override;
    void preShutdown() override;

signals:
    // Emitted in this order.
    void cpu(double percent);    ///< Load of all processors since the reading before, 0 to 100.
    void memory(double percent); ///< Memory in use, 0 to 100.
    void load(double average);   ///< Load average of the last minute.
    void received(double bytesPerSecond); ///< Over all interfaces but loopback; never negative.
    void sent(double bytesPerSecond);
    void uptime(QString text); ///< Such as "3 d 04:05:06".

public slots:
    void setPaused(bool paused); ///< No readings while paused. Lost at the stop.

private:
    void startReading();

    template <class T>
    std::optional<T> read(const char* file, std::optional<T> (*parse)(const QByteArray&));
    void emitCpu(const std::optional<norvo::CpuTimes>& now);
    void emitTraffic(const std::optional<norvo::TrafficCounters>& now, double seconds);

    QString m_procFolder;
    QTimer m_timer;
    int m_intervalMs = 0;
    bool m_paused = false;
    std::optional<norvo::CpuTimes> m_cpu; ///< Of the reading before, as the next one.
    std::optional<norvo::TrafficCounters> m_traffic;
    QElapsedTimer m_sinceTraffic;
    QSet<QString> m_reported; ///< Paths whose error has been reported.
};
