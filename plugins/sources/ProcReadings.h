// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

/// What the texts below /proc say. A text that is cut short, empty or otherwise not what the
/// kernel writes gives no value, never a wrong one.
namespace norvo {

/// Processor time since the start of the machine, over all processors, in clock ticks.
struct CpuTimes
{
    quint64 idle = 0; ///< Waiting for input or output counts as idle.
    quint64 total = 0;
};

/// Bytes that an interface has moved since it came up.
struct InterfaceCounters
{
    quint64 received = 0;
    quint64 sent = 0;
};

/// By interface name, the loopback interface left out.
using TrafficCounters = QHash<QByteArray, InterfaceCounters>;

std::optional<CpuTimes> parseCpuTimes(const QByteArray& stat);
/// Percent of the memory in use. Memory that the kernel would give back at once counts as free.
std::optional<double> parseUsedMemory(const QByteArray& meminfo);
std::optional<double> parseLoadAverage(const QByteArray& loadavg); ///< Of the last minute.
std::optional<TrafficCounters> parseTraffic(const QByteArray& netDev);
std::optional<qint64> parseUptime(const QByteArray& uptime); ///< In whole seconds.

/// Percent of the time between the two that was not idle, 0 to 100; none when no time has passed.
std::optional<double> cpuLoad(const CpuTimes& before, const CpuTimes& after);
/// Bytes moved between the two, over all interfaces. An interface that is new or gone adds nothing;
/// one whose counter has fallen began again at 0.
InterfaceCounters trafficBetween(const TrafficCounters& before, const TrafficCounters& after);
/// Such as "3 d 04:05:06".
QString uptimeText(qint64 seconds);

} // namespace norvo
