#include "devices/OutputGraphDevice.h"

#include "devices/Caption.h"

#include <QDateTime>

namespace {

double secondsSinceEpoch()
{
    return double(QDateTime::currentMSecsSinceEpoch()) * 0.001;
}

} // namespace

OutputGraphDevice::OutputGraphDevice()
{
    addParam("name", "", {}, true, {});
    addParam("widget/minThreshold", "0", {}, true, {});
    addParam("widget/maxThreshold", "100", {}, true, {});
    addParam("widget/timePeriod", "10", {}, true, {});
    addParam("widget/timeFormat", "hh:mm:ss", {}, true, {});
    addParam("widget/minValue", "0", {}, true, {});
    addParam("widget/maxValue", "1", {}, true, {});
    addParam("widget/autoscale", "true", {}, true, {});
    addParam("widget/timeout", "1", {}, true, {});
}

bool OutputGraphDevice::initialise()
{
    settleCaption(*this, "name");
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
    if (!isRunning() || !sender()) {
        return;
    }
    const QString from = sender()->objectName();
    m_fills.insert(from, fill);
    emit outputFill(from, fill);
}

void OutputGraphDevice::setColor(QString color)
{
    if (!isRunning() || !sender()) {
        return;
    }
    const QString from = sender()->objectName();
    m_colors.insert(from, color);
    emit outputColor(from, color);
}

void OutputGraphDevice::setName(QString name)
{
    if (!isRunning() || !sender()) {
        return;
    }
    const QString from = sender()->objectName();
    m_names.insert(from, name);
    emit outputName(from, name);
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
