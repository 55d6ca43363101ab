// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/GeneratorDevice.h"

#include "norvo/Categories.h"

#include <algorithm>

namespace {

constexpr int kMinIntervalMs = 1;
constexpr int kMaxWindow = 100000;

const QStringList kShapes{"sine", "ramp", "square", "noise"}; ///< In the order of Shape.

} // namespace

GeneratorDevice::GeneratorDevice()
{
    declareParams();
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &GeneratorDevice::tick);
}

void GeneratorDevice::declareParams()
{
    const auto declare = [this](const char* name, const char* value, const char* unit,
                                const char* description) {
        addParam(name, QString(value));
        getParam(name).setUnit(unit);
        getParam(name).setDescription(description);
    };
    addParam("waveform", kShapes);
    getParam("waveform").setDescription("Shape of the signal");
    declare("period", "10", "s", "Time of one wave; 0: the signal stands still");
    declare("amplitude", "1", "", "From the middle of the wave to its top");
    declare("offset", "0", "", "Middle of the wave");
    declare("noise", "0", "", "Added at random, up to this much either way");
    declare("interval", "100", "ms", "Time between two values, at least 1");
    declare("on", "10", "s", "Time with values between two drop-outs");
    declare("off", "0", "s", "Length of a drop-out; 0: none");
    declare("seed", "1", "", "Another seed gives other random values");
    declare("length", "0", "", "Values in the array output, at most 100000; 0: no array");
}

DeviceTypeInfo GeneratorDevice::typeInfo()
{
    return {"Generator",
            "Sine, ramp, square or noise, with drop-outs, for trying panels out",
            {norvo::kCategoryDebug}};
}

bool GeneratorDevice::initialise()
{
    if (!paramsOk()) {
        return error(paramFaults().join("; "));
    }
    const int shape = std::max(0, kShapes.indexOf(getParam("waveform")));
    m_waveform.shape = norvo::Waveform::Shape(shape);
    m_waveform.periodSeconds = getParam("period");
    m_waveform.amplitude = getParam("amplitude");
    m_waveform.offset = getParam("offset");
    m_waveform.noise = getParam("noise");
    m_waveform.intervalMs = std::max<int>(kMinIntervalMs, getParam("interval"));
    m_waveform.seed = quint64(int(getParam("seed")));
    m_dropOuts.onSeconds = getParam("on");
    m_dropOuts.offSeconds = getParam("off");

    m_tick = 0;
    m_window.resize(std::clamp<int>(getParam("length"), 0, kMaxWindow));
    for (int i = 0; i < m_window.size(); ++i) {
        m_window[i] = m_waveform.valueAt(i - m_window.size());
    }
    return true;
}

void GeneratorDevice::postInitialisation()
{
    if (isRunning()) {
        m_timer.start(m_waveform.intervalMs);
        tick();
    }
}

void GeneratorDevice::preShutdown()
{
    m_timer.stop();
}

void GeneratorDevice::tick()
{
    const double value = m_waveform.valueAt(m_tick);
    const bool silent = m_dropOuts.isSilentAt(m_tick, m_waveform.intervalMs);
    ++m_tick;
    if (!m_window.isEmpty()) {
        std::move(m_window.begin() + 1, m_window.end(), m_window.begin());
        m_window.last() = value;
    }
    if (silent) {
        return;
    }
    emit output(value);
    if (!m_window.isEmpty()) {
        emit output(m_window);
    }
}
