// SPDX-License-Identifier: GPL-3.0-or-later

#include "Harness.h"
#include "plugins/sources/ProcReadings.h"

using norvo::require;

/// Any text in the place of one below /proc gives a value in its range, or none.
NORVO_HARNESS(ProcTexts)
{
    const QByteArray first = input.left(input.size() / 2);
    const auto before = norvo::parseCpuTimes(first);
    const auto after = norvo::parseCpuTimes(input.mid(input.size() / 2));
    if (before && after) {
        const auto load = norvo::cpuLoad(*before, *after);
        require(!load || (*load >= 0 && *load <= 100), "a load is a percentage");
    }
    norvo::parseCpuTimes(input);
    const auto memory = norvo::parseUsedMemory(input);
    require(!memory || (*memory >= 0 && *memory <= 100), "used memory is a percentage");
    const auto average = norvo::parseLoadAverage(input);
    require(!average || *average >= 0, "a load average is not negative");
    const auto traffic = norvo::parseTraffic(input);
    const auto earlier = norvo::parseTraffic(first);
    if (traffic && earlier) {
        norvo::trafficBetween(*earlier, *traffic);
    }
    const auto uptime = norvo::parseUptime(input);
    require(!uptime || *uptime >= 0, "an uptime is not negative");
    require(!uptime || !norvo::uptimeText(*uptime).isEmpty(), "an uptime has a text");
}
