// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/ProcReadings.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <string_view>
#include <vector>

namespace norvo {

namespace {

constexpr std::string_view kSpaces = " \t\r";

/// Takes the part of `text` up to `separator`, which goes as well.
std::string_view takeUntil(std::string_view& text, char separator)
{
    const size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

/// Takes the next word of `line`; empty when there is none left.
std::string_view takeWord(std::string_view& line)
{
    line.remove_prefix(std::min(line.find_first_not_of(kSpaces), line.size()));
    const size_t end = std::min(line.find_first_of(kSpaces), line.size());
    const std::string_view word = line.substr(0, end);
    line.remove_prefix(end);
    return word;
}

template <class Number>
std::optional<Number> readNumber(std::string_view word)
{
    Number number{};
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size()) {
        return std::nullopt;
    }
    return number;
}

std::string_view viewOf(const QByteArray& text)
{
    return {text.constData(), size_t(text.size())};
}

/// The first word as a number that is finite and not negative.
std::optional<double> readAmount(const QByteArray& text)
{
    std::string_view line = viewOf(text);
    const std::optional<double> number = readNumber<double>(takeWord(line));
    return number && std::isfinite(*number) && *number >= 0.0 ? number : std::nullopt;
}

/// The first `most` words as numbers, fewer where there are no more; none where one does not read.
std::vector<quint64> readNumbers(std::string_view line, std::size_t most)
{
    std::vector<quint64> numbers;
    for (auto word = takeWord(line); !word.empty() && numbers.size() < most;
         word = takeWord(line)) {
        const std::optional<quint64> number = readNumber<quint64>(word);
        if (!number) {
            return {};
        }
        numbers.push_back(*number);
    }
    return numbers;
}

/// That of the first line "key: number kB".
std::optional<double> amountOf(std::string_view key, const QByteArray& meminfo)
{
    std::string_view text = viewOf(meminfo);
    while (!text.empty()) {
        std::string_view line = takeUntil(text, '\n');
        if (takeUntil(line, ':') == key) {
            return readNumber<quint64>(takeWord(line));
        }
    }
    return std::nullopt;
}

quint64 growth(quint64 before, quint64 after)
{
    return after >= before ? after - before : after;
}

} // namespace

std::optional<CpuTimes> parseCpuTimes(const QByteArray& stat)
{
    // user nice system idle iowait irq softirq steal; old kernels end after the fourth. What
    // follows (guest times) is contained in the first two already.
    std::string_view line = viewOf(stat);
    if (takeWord(line) != "cpu") {
        return std::nullopt;
    }
    const std::vector<quint64> ticks = readNumbers(takeUntil(line, '\n'), 8);
    if (ticks.size() < 4) {
        return std::nullopt;
    }
    return CpuTimes{ticks[3] + (ticks.size() > 4 ? ticks[4] : 0),
                    std::accumulate(ticks.begin(), ticks.end(), quint64(0))};
}

std::optional<double> parseUsedMemory(const QByteArray& meminfo)
{
    const std::optional<double> total = amountOf("MemTotal", meminfo);
    std::optional<double> available = amountOf("MemAvailable", meminfo);
    if (!available) { // Kernels before 3.14 do not say it.
        if (const std::optional<double> free = amountOf("MemFree", meminfo)) {
            available = *free + amountOf("Buffers", meminfo).value_or(0.0) +
                        amountOf("Cached", meminfo).value_or(0.0);
        }
    }
    if (!available || total.value_or(0.0) <= 0.0) {
        return std::nullopt;
    }
    return std::clamp(100.0 * (1.0 - *available / *total), 0.0, 100.0);
}

std::optional<double> parseLoadAverage(const QByteArray& loadavg)
{
    return readAmount(loadavg);
}

std::optional<TrafficCounters> parseTraffic(const QByteArray& netDev)
{
    std::string_view text = viewOf(netDev);
    if (takeUntil(text, '\n').find("Receive") == std::string_view::npos) {
        return std::nullopt;
    }
    takeUntil(text, '\n'); // The names of the columns.

    TrafficCounters traffic;
    while (!text.empty()) {
        std::string_view line = takeUntil(text, '\n');
        // The last colon: alias names ("eth0:1") have one of their own, numbers have none.
        const size_t colon = line.rfind(':');
        if (colon == std::string_view::npos) {
            return std::nullopt;
        }
        std::string_view head = line.substr(0, colon);
        const std::string_view name = takeWord(head);
        // Bytes received stand first, bytes sent ninth.
        const std::vector<quint64> numbers = readNumbers(line.substr(colon + 1), 9);
        if (numbers.size() < 9) {
            return std::nullopt;
        }
        if (name != "lo") {
            traffic.insert(QByteArray(name.data(), int(name.size())), {numbers[0], numbers[8]});
        }
    }
    return traffic;
}

std::optional<qint64> parseUptime(const QByteArray& uptime)
{
    constexpr double kMaxSeconds = 1e15; // Well inside the integer's range.

    const std::optional<double> seconds = readAmount(uptime);
    if (!seconds || *seconds > kMaxSeconds) {
        return std::nullopt;
    }
    return qint64(*seconds);
}

std::optional<double> cpuLoad(const CpuTimes& before, const CpuTimes& after)
{
    // The sums may have wrapped; their differences are right nevertheless.
    const auto total = qint64(after.total - before.total);
    const auto idle = qint64(after.idle - before.idle);
    if (total <= 0) {
        return std::nullopt;
    }
    return std::clamp(100.0 * (1.0 - double(idle) / double(total)), 0.0, 100.0);
}

InterfaceCounters trafficBetween(const TrafficCounters& before, const TrafficCounters& after)
{
    InterfaceCounters moved;
    for (auto now = after.cbegin(); now != after.cend(); ++now) {
        const auto then = before.constFind(now.key());
        if (then != before.cend()) {
            moved.received += growth(then->received, now->received);
            moved.sent += growth(then->sent, now->sent);
        }
    }
    return moved;
}

QString uptimeText(qint64 seconds)
{
    constexpr QChar zero('0');
    return QStringLiteral("%1 d %2:%3:%4")
        .arg(seconds / 86400)
        .arg(seconds / 3600 % 24, 2, 10, zero)
        .arg(seconds / 60 % 60, 2, 10, zero)
        .arg(seconds % 60, 2, 10, zero);
}

} // namespace norvo
