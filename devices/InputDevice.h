// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

/// A field into which the operator types a text or a number.
///
/// What the operator enters leaves as text and, where it reads as one, as a number; what the wiring
/// sends in is shown in the field.
class InputDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kStringType[] = "string";
    static constexpr char kIntType[] = "int";
    static constexpr char kDoubleType[] = "double";
    static constexpr char kSpinType[] = "spin";
    static constexpr char kHorizontalLayout[] = "horizontal"; ///< Any other layout is vertical.

    InputDevice();

    QString getType() const { return m_type; }
    QString getName() const { return m_name; }
    QString getUnits() const { return m_units; }
    QString getLayout() const { return m_layout; }
    double getMinValue() const { return m_minValue; }
    double getMaxValue() const { return m_maxValue; }
    double getValueStep() const { return m_valueStep; }
    int getDecimals() const; ///< Cut toward zero.
    bool getUseScreenNumpad() const { return m_useScreenNumpad; }
    bool getUseScreenKeyboard() const { return m_useScreenKeyboard; }
    double getCurrentNumber() const { return m_currentNumber; } ///< 0 until one has passed.
    QString getCurrentString() const { return m_currentString; }

    bool initialise() override;
    BaseWidget* createWidget() override;

signals:
    void output(double val);
    void output(QString val);
    void wgOutput(QString val); ///< To the device's own widget.
    void wgOutput(double val);

public slots:
    void wgInput(double val); ///< From the device's own widget; ignored unless running.
    void wgInput(QString val);
    void input(double val);
    void input(QString val);

private:
    QString m_type;
    QString m_name;
    QString m_units;
    QString m_layout;
    double m_minValue = 0;
    double m_maxValue = 0;
    double m_valueStep = 0;
    double m_decimals = 0;
    bool m_useScreenNumpad = false;
    bool m_useScreenKeyboard = false;
    double m_currentNumber = 0;
    QString m_currentString;
};
