// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/SystemDevice.h"

#include "norvo/Categories.h"

#include <QFile>

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr int kMinIntervalMs = 50;
constexpr int kMaxFirstIntervalMs = 200;
constexpr int kMaxFileSize = 1024 * 1024;
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

const QString kInterval = QStringLiteral("interval");

} // namespace

SystemDevice::SystemDevice(const QString& procFolder) : m_procFolder(procFolder)
{
    addParam(kInterval, "1000");
    Param& interval = getParam(kInterval);
    interval.setDescription("Time between two readings, at least 50");
    interval.setUnit("ms");

    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_timer.setInterval(m_intervalMs);
        takeReading();
    });
}

DeviceTypeInfo SystemDevice::typeInfo()
{
    return {"System",
            "Load, memory, network traffic and uptime of this machine",
            {norvo::kCategorySystem}};
}

bool SystemDevice::initialise()
{
    if (!paramsOk()) {
        return error(paramFaults().join("; "));
    }
    m_intervalMs = std::max<int>(kMinIntervalMs, getParam(kInterval));
    m_cpu.reset();
    m_traffic.reset();
    m_reported.clear();
    m_paused = false;
    return true;
}

void SystemDevice::postInitialisation()
{
    if (isRunning()) {
        startReading();
    }
}

void SystemDevice::startReading()
{
    takeReading();
    if (!m_paused) {
        m_timer.start(std::min(m_intervalMs, kMaxFirstIntervalMs));
    }
}

void SystemDevice::setPaused(bool paused)
{
    if (m_paused == paused) {
        return;
    }
    m_paused = paused;
    m_timer.stop();
    if (!m_paused && isRunning()) {
        // What happened during the pause is not to count as the load of now.
        m_cpu.reset();
        m_traffic.reset();
        startReading();
    }
}

void SystemDevice::preShutdown()
{
    m_timer.stop();
}

void SystemDevice::takeReading()
{
    const auto cpuNow = read("stat", norvo::parseCpuTimes);
    const auto memoryNow = read("meminfo", norvo::parseUsedMemory);
    const auto loadNow = read("loadavg", norvo::parseLoadAverage);
    const auto trafficNow = read("net/dev", norvo::parseTraffic);
    const double seconds = m_sinceTraffic.isValid() ? m_sinceTraffic.nsecsElapsed() * 1e-9 : 0.0;
    m_sinceTraffic.start();
    const auto uptimeNow = read("uptime", norvo::parseUptime);

    emitCpu(cpuNow);
    emit memory(memoryNow.value_or(kUnknown));
    emit load(loadNow.value_or(kUnknown));
    emitTraffic(trafficNow, seconds);
    emit uptime(uptimeNow ? norvo::uptimeText(*uptimeNow) : QStringLiteral("nan"));
}

void SystemDevice::emitCpu(const std::optional<norvo::CpuTimes>& now)
{
    const auto before = std::exchange(m_cpu, now);
    if (!now) {
        emit cpu(kUnknown);
    } else if (before) {
        if (const auto percent = norvo::cpuLoad(*before, *now)) {
            emit cpu(*percent);
        }
    }
}

void SystemDevice::emitTraffic(const std::optional<norvo::TrafficCounters>& now, double seconds)
{
    const auto before = std::exchange(m_traffic, now);
    if (!now) {
        emit received(kUnknown);
        emit sent(kUnknown);
    } else if (before && seconds > 0.0) {
        const norvo::InterfaceCounters moved = norvo::trafficBetween(*before, *now);
        emit received(double(moved.received) / seconds);
        emit sent(double(moved.sent) / seconds);
    }
}

template <class T>
std::optional<T> SystemDevice::read(const char* file, std::optional<T> (*parse)(const QByteArray&))
{
    const QString path = m_procFolder + '/' + QLatin1String(file);
    QFile source(path);
    source.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    const QByteArray text = source.isOpen() ? source.read(kMaxFileSize + 1) : QByteArray();
    std::optional<T> value;
    QString reason = QStringLiteral("its text is not what was expected");
    if (source.error() != QFile::NoError) {
        reason = source.errorString();
    } else if (text.size() > kMaxFileSize) {
        reason = QStringLiteral("longer than 1 MiB");
    } else {
        value = parse(text);
    }
    if (value) {
        m_reported.remove(path);
    } else if (!m_reported.contains(path)) {
        m_reported.insert(path);
        alert(QString("Cannot read %1: %2").arg(path, reason));
    }
    return value;
}
