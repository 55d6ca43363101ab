// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/InputDevice.h"

#include "devices/LenientNumber.h"
#include "norvo/Truncation.h"

namespace {

constexpr char kType[] = "type";
constexpr char kLayout[] = "layout";
constexpr char kName[] = "name";
constexpr char kUnits[] = "units";
constexpr char kMin[] = "min";
constexpr char kMax[] = "max";
constexpr char kValueStep[] = "value step";
constexpr char kDecimals[] = "decimals";
constexpr char kUseScreenNumpad[] = "use screen numpad";
constexpr char kUseScreenKeyboard[] = "use screen keyboard";

} // namespace

InputDevice::InputDevice()
{
    addParam(kType, kSpinType, {kStringType, kIntType, kDoubleType, kSpinType});
    addParam(kLayout, "vertical", {"vertical", kHorizontalLayout});
    addParam(kName, "");
    addParam(kUnits, "");
    addParam(kMin, "0");
    addParam(kMax, "1");
    addParam(kValueStep, "0.1");
    addParam(kDecimals, "2");
    addParam(kUseScreenNumpad, "false");
    addParam(kUseScreenKeyboard, "false");
    getParam(kUseScreenNumpad).addEnabledCondition(kType, {kIntType, kDoubleType, kSpinType});
    getParam(kUseScreenKeyboard).addEnabledCondition(kType, {kStringType});
}

int InputDevice::getDecimals() const
{
    return norvo::truncatedToInt(m_decimals);
}

bool InputDevice::initialise()
{
    m_type = getParam(kType).value();
    m_name = getParam(kName).value();
    m_units = getParam(kUnits).value();
    m_layout = getParam(kLayout).value();
    m_minValue = getParam(kMin);
    m_maxValue = getParam(kMax);
    m_valueStep = getParam(kValueStep);
    m_decimals = getParam(kDecimals);
    m_useScreenNumpad = getParam(kUseScreenNumpad);
    m_useScreenKeyboard = getParam(kUseScreenKeyboard);
    return paramsOk();
}

void InputDevice::wgInput(double val)
{
    if (!isRunning()) {
        return;
    }
    m_currentString = QString::number(val, 'g', 6);
    m_currentNumber = val;
    emit output(val);
    emit output(m_currentString); // whoever heard the number may have answered with another
    setDescription(m_currentString);
}

void InputDevice::wgInput(QString val)
{
    if (!isRunning()) {
        return;
    }
    emit output(val);
    setDescription(val);
    m_currentString = val;
    if (const std::optional<double> number = parseNumber(val)) {
        m_currentNumber = *number;
        emit output(*number);
    }
}

void InputDevice::input(double val)
{
    m_currentString = QString::number(val, 'g', 6);
    m_currentNumber = val;
    emit wgOutput(m_currentString);
    emit wgOutput(val);
}

void InputDevice::input(QString val)
{
    emit wgOutput(val);
    m_currentString = val;
    if (const std::optional<double> number = parseNumber(val)) {
        emit wgOutput(*number);
        m_currentNumber = *number;
    }
}
