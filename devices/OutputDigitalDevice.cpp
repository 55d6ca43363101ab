#include "devices/OutputDigitalDevice.h"

#include "devices/Caption.h"
#include "devices/ReadoutOutputs.h"

#include <QTimer>

namespace {

constexpr char kTimeout[] = "timeout";

} // namespace

OutputDigitalDevice::OutputDigitalDevice()
{
    addParam(kName, "");
    addParam(kTimeout, "1000");
    addParam(kUnits, "");
    addParam(kMinThreshold, "0");
    addParam(kMaxThreshold, "100");
    addParam(kPrecision, "0");
    addParam(kLabelSize, "16");
    addParam(kValueSize, "60");
}

OutputDigitalDevice::~OutputDigitalDevice() = default;

bool OutputDigitalDevice::initialise()
{
    m_caption = settleCaption(*this, kName);
    if (!paramsOk()) {
        return false;
    }
    m_timeoutMs = getParam(kTimeout);
    if (m_timeoutMs >= 1) {
        m_timeout = std::make_unique<QTimer>();
        connect(m_timeout.get(), SIGNAL(timeout()), this, SLOT(timerTimeout()));
        m_timeout->start(m_timeoutMs);
    }
    return true;
}

void OutputDigitalDevice::deinitialise()
{
    m_timeout.reset();
}

void OutputDigitalDevice::timerTimeout()
{
    emit timeoutAlert();
}

void OutputDigitalDevice::input(double value)
{
    if (!isRunning()) {
        return;
    }
    ReadoutOutputs<OutputDigitalDevice>::emitNumber(*this, value);
    restartTimeout();
}

void OutputDigitalDevice::input(QString text)
{
    if (!isRunning()) {
        return;
    }
    ReadoutOutputs<OutputDigitalDevice>::emitText(*this, text);
    restartTimeout();
}

void OutputDigitalDevice::restartTimeout()
{
    if (m_timeout) {
        m_timeout->start(m_timeoutMs);
    }
}
