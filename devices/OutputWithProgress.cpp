// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/OutputWithProgress.h"

#include "devices/Caption.h"

namespace {

constexpr char kName[] = "name";
constexpr char kMinThreshold[] = "minThreshold";
constexpr char kMaxThreshold[] = "maxThreshold";
constexpr char kTimeout[] = "timeout";
constexpr char kPrecision[] = "precision";
constexpr char kMinValue[] = "minValue";
constexpr char kMaxValue[] = "maxValue";
constexpr char kAlarm[] = "alarm";
constexpr char kAlarmFile[] = "alarmFile";
constexpr char kDigitsStep[] = "digitsStep";
constexpr char kDashesStep[] = "dashesStep";
constexpr char kType[] = "type";

constexpr char kLikeTheThreshold[] = "no";

double valueOr(double threshold, const Param& param)
{
    return param.value() == kLikeTheThreshold ? threshold : double(param);
}

} // namespace

OutputWithProgress::OutputWithProgress()
{
    addParam(kName, "");
    addParam(kMinThreshold, "0");
    addParam(kMaxThreshold, "100");
    addParam(kTimeout, "1000");
    addParam(kPrecision, "0");
    addParam(kMinValue, kLikeTheThreshold);
    addParam(kMaxValue, kLikeTheThreshold);
    addParam(kAlarm, "false");
    addParam(kAlarmFile, "");
    addParam(kDigitsStep, "0.5");
    addParam(kDashesStep, "0.1");
    addParam(kType, "digital");
}

bool OutputWithProgress::initialise()
{
    m_minThreshold = getParam(kMinThreshold);
    m_maxThreshold = getParam(kMaxThreshold);
    m_minValue = valueOr(m_minThreshold, getParam(kMinValue));
    m_maxValue = valueOr(m_maxThreshold, getParam(kMaxValue));
    m_timeoutMs = getParam(kTimeout);
    m_precision = getParam(kPrecision);
    m_digitsStep = getParam(kDigitsStep);
    m_dashesStep = getParam(kDashesStep);
    m_alarmEnabled = getParam(kAlarm);
    m_alarmFile = getParam(kAlarmFile).value();
    m_type = getParam(kType).value();
    m_name = resolveCaption(*this, kName);

    const bool ok = paramsOk();
    startTimeout(ok ? m_timeoutMs : 0);
    return ok;
}

void OutputWithProgress::timerTimeout()
{
    emit timeoutAlert();
    alarm();
}

void OutputWithProgress::input(double value)
{
    if (!passOnNumber(value)) {
        return;
    }
    if (m_minThreshold > value) {
        emit minThresholdAlert();
        alarm();
    }
    if (value > m_maxThreshold) {
        emit maxThresholdAlert();
        alarm();
    }
    restartTimeout();
}

void OutputWithProgress::input(QString text)
{
    if (passOnText(text)) {
        restartTimeout();
    }
}

void OutputWithProgress::alarm()
{
    if (m_alarmEnabled) {
        emit alarmAlert();
    }
}
