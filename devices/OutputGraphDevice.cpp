// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/OutputGraphDevice.h"

#include "devices/Caption.h"

OutputGraphDevice::OutputGraphDevice()
{
    addParam(kName, "");
    addParam(kMinThreshold, "0");
    addParam(kMaxThreshold, "100");
    addParam(kTimePeriod, "10");
    addParam(kTimeFormat, "hh:mm:ss");
    addParam(kMinValue, "0");
    addParam(kMaxValue, "1");
    addParam(kAutoscale, "true");
    addParam(kTimeout, "1");
}

bool OutputGraphDevice::initialise()
{
    resolveCaption(*this, kName);
    return paramsOk();
}

void OutputGraphDevice::input(double value)
{
    if (!isRunning()) {
        return;
    }
    const QString text = QString::number(value, 'g', 6);
    emit output(text);
    if (!sender()) {
        return;
    }
    const QString from = sender()->objectName();
    emit output(value, from, secondsSinceEpoch());
    emit output(text, from);
}

void OutputGraphDevice::input(QString value)
{
    if (!isRunning()) {
        return;
    }
    emit output(value);
    if (!sender()) {
        return;
    }
    const QString from = sender()->objectName();
    const double time = secondsSinceEpoch();
    emit output(value, from);
    emit output(value.toDouble(), from, time);
}

void OutputGraphDevice::setFilled(bool fill)
{
    if (isRunning() && sender()) {
        m_fills.insert(sender()->objectName(), fill);
        emit outputFill(sender()->objectName(), fill);
    }
}

void OutputGraphDevice::setColor(QString color)
{
    if (isRunning() && sender()) {
        m_colors.insert(sender()->objectName(), color);
        emit outputColor(sender()->objectName(), color);
    }
}

void OutputGraphDevice::setName(QString name)
{
    if (isRunning() && sender()) {
        m_names.insert(sender()->objectName(), name);
        emit outputName(sender()->objectName(), name);
    }
}

void OutputGraphDevice::resendData()
{
    const QStringList senders = m_names.keys();
    for (const QString& from : senders) {
        emit outputName(from, m_names[from]);
        emit outputFill(from, m_fills[from]);
        emit outputColor(from, m_colors[from]);
    }
}
