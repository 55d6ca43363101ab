// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/serial/SerialDevice.h"

#include "plugins/common/Duration.h"
#include "norvo/Categories.h"

#include <QPointer>

#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr norvo::FrameQueue::Limits kLimits{10000, 1024 * 1024};
constexpr int kReadBytes = 64 * 1024;
constexpr qint64 kTurnNanoseconds = 2000000;
constexpr auto kTurnPause = 5ms;
constexpr auto kFirstPause = 30ms; ///< At least three characters at the slowest rates.
constexpr auto kFrameGap = 1000ms; ///< A frame that stands still that long has broken off.
constexpr auto kExtension = 50ms;
constexpr int kMaxMissed = 3;
constexpr auto kGrace = 200ms;

/// In the order of Loss.
const QStringList kLossTexts{"frames dropped, they came too fast",
                             "frames cut or dropped, they are longer than 65536 bytes",
                             "frames dropped, they broke off",
                             "bytes dropped, no pause showed where a frame begins",
                             "inputs lost, the port does not take them",
                             "inputs lost, the device is not connected",
                             "inputs refused, they are no single frame",
                             "frames that match none of the named outputs"};

const QString kPort = QStringLiteral("port");
const QString kBaud = QStringLiteral("baud");
const QString kFrame = QStringLiteral("frame");
const QString kFlow = QStringLiteral("flow");
const QString kFraming = QStringLiteral("framing");
const QString kEnd = QStringLiteral("end");
const QString kLength = QStringLiteral("length");
const QString kPrefix = QStringLiteral("prefix");
const QString kEncoding = QStringLiteral("encoding");
const QString kAsk = QStringLiteral("ask");
const QString kEvery = QStringLiteral("every");
const QString kTimeout = QStringLiteral("timeout");
const QString kSilence = QStringLiteral("silence");

const QStringList kFlows{"none", "hardware", "software"}; ///< In the order of Qt's enumeration.
const QStringList kFramings{"line", "fixed", "prefixed"}; ///< In the order of Framing::Kind.
const QStringList kPrefixes{"1", "2 big", "2 little", "4 big", "4 little"};
const QStringList kEncodings{"utf-8", "latin-1", "hex"}; ///< In the order of FrameText.

QString errorIn(const QString& param, const QString& text)
{
    return text.isEmpty() ? QString() : QString("parameter \"%1\": %2").arg(param, text);
}

} // namespace

SerialDevice::SerialDevice()
    : LineDevice({"decimal"}), m_losses(kLossTexts, [this](const QString& text) { alert(text); })
{
    addParam(kPort, QString());
    addParam(kBaud, "9600");
    addParam(kFrame, "8N1");
    addParam(kFlow, kFlows);
    addParam(kFraming, kFramings);
    addParam(kEnd, "LF");
    addParam(kLength, "1");
    addParam(kPrefix, kPrefixes);
    addParam(kEncoding, kEncodings);
    addParam(kAsk, QString());
    addParam(kEvery, "1000");
    getParam(kEvery).setUnit("ms");
    addParam(kTimeout, "500");
    getParam(kTimeout).setUnit("ms");
    addParam(kSilence, QString());

    for (QTimer* const timer : {&m_turnTimer, &m_pauseTimer, &m_silenceTimer}) {
        timer->setSingleShot(true);
    }
    m_turnTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_turnTimer, &QTimer::timeout, this, &SerialDevice::turn);
    connect(&m_pauseTimer, &QTimer::timeout, this, &SerialDevice::onPause);
    connect(&m_silenceTimer, &QTimer::timeout, this, &SerialDevice::watchSilence);
}

SerialDevice::~SerialDevice() = default;

DeviceTypeInfo SerialDevice::typeInfo()
{
    return {"Serial port", "A serial port whose frames become values", {norvo::kCategorySystem}};
}

bool SerialDevice::initialise()
{
    for (const QString& text : {readPort(), readFraming(), readTimes()}) {
        if (!text.isEmpty()) {
            return error(text);
        }
    }
    return LineDevice::initialise();
}

QString SerialDevice::readPort()
{
    if (const QString text = m_name.define(getParam(kPort)); !text.isEmpty()) {
        return errorIn(kPort, text);
    }
    m_settings.baud = getParam(kBaud);
    if (m_settings.baud < 1) {
        return errorIn(kBaud, "it is at least 1");
    }
    m_settings.flow = QSerialPort::FlowControl(std::max(0, kFlows.indexOf(getParam(kFlow))));
    return errorIn(kFrame, m_settings.readFrame(getParam(kFrame)));
}

QString SerialDevice::readFraming()
{
    m_framing = {};
    m_framing.kind = norvo::Framing::Kind(std::max(0, kFramings.indexOf(getParam(kFraming))));
    m_framing.readPrefix(kPrefixes.value(std::max(0, kPrefixes.indexOf(getParam(kPrefix)))));
    m_framing.length = getParam(kLength);
    if (m_framing.length < 1 || m_framing.length > norvo::Framing::kMaxLength) {
        return errorIn(kLength, QString("it is between 1 and %1").arg(norvo::Framing::kMaxLength));
    }
    return errorIn(kEnd, m_framing.readEnd(getParam(kEnd)) ? "" : "it is empty");
}

QString SerialDevice::readTimes()
{
    m_every = std::chrono::milliseconds(std::max(1, int(getParam(kEvery))));
    m_timeout = std::chrono::milliseconds(std::max(1, int(getParam(kTimeout))));
    const QString silence = getParam(kSilence);
    m_silence = norvo::readDuration(silence).value_or(0ms);
    if (!silence.isEmpty() && m_silence == 0ms) {
        return errorIn(
            kSilence,
            QString("\"%1\" is not a time; write one such as 500 ms, 5 s or 2 min").arg(silence));
    }
    m_encoding = norvo::FrameText(std::max(0, kEncodings.indexOf(getParam(kEncoding))));
    const QString ask = getParam(kAsk);
    const auto question = frameOf(ask);
    m_question = ask.isEmpty() ? QByteArray() : question.value_or(QByteArray());
    return errorIn(kAsk, ask.isEmpty() || question ? "" : "it is no single frame");
}

std::optional<QByteArray> SerialDevice::frameOf(const QString& text) const
{
    const auto bytes = norvo::writeFrameText(m_encoding, text);
    return bytes ? m_framing.wrap(*bytes) : std::nullopt;
}

void SerialDevice::postInitialisation()
{
    if (!isRunning()) {
        return;
    }
    m_queue = std::make_unique<norvo::FrameQueue>(m_framing, kLimits);
    m_link = std::make_unique<norvo::SerialLink>(m_name, m_settings);
    connect(m_link.get(), &norvo::SerialLink::opened, this, &SerialDevice::onOpened);
    connect(m_link.get(), &norvo::SerialLink::readyRead, this, &SerialDevice::turn);
    connect(m_link.get(), &norvo::SerialLink::lost, this, &SerialDevice::onLost);
    connect(m_link.get(), &norvo::SerialLink::failed, this, &SerialDevice::onLost);
    if (!m_question.isEmpty()) {
        m_poll = std::make_unique<norvo::Poll>(m_every, m_timeout);
        m_poll->setUnreadQuery([this] { return !m_queue->isEmpty() || m_link->hasUnread(); });
        connect(m_poll.get(), &norvo::Poll::ask, this, [this] { m_link->write(m_question); });
        connect(m_poll.get(), &norvo::Poll::missed, this, &SerialDevice::onMissed);
    }
    m_link->start();
}

void SerialDevice::preShutdown()
{
    m_poll.reset();
    m_turnTimer.stop();
    m_pauseTimer.stop();
    m_silenceTimer.stop();
    m_losses.stop();
    if (m_link) {
        m_link->disconnect(this);
    }
}

void SerialDevice::deinitialise()
{
    preShutdown();
    if (isConnected()) {
        m_link->finishWrites(kGrace);
        setConnected(false);
    }
    m_link.reset();
    m_queue.reset();
}

void SerialDevice::onOpened()
{
    waitForPause();
    m_sinceFrame.start();
    watchSilence();
}

void SerialDevice::onLost(const QString& reason)
{
    m_queue->restart();
    countLosses();
    m_turnTimer.stop();
    m_pauseTimer.stop();
    m_silenceTimer.stop();
    if (m_poll) {
        m_poll->stop();
    }
    setConnected(false);
    if (isRunning()) {
        reportFault(reason);
    }
}

/// Reads a bounded piece and emits for a bounded time; a port that keeps us busy waits in between.
void SerialDevice::turn()
{
    if (m_inTurn || m_turnTimer.isActive()) { // A receiver may run an event loop of its own.
        return;
    }
    m_inTurn = true;
    const QByteArray bytes = m_link->read(kReadBytes);
    m_queue->append(bytes);
    countLosses();
    if (m_poll && !m_poll->isActive() && m_queue->isInStep()) {
        m_poll->start();
    }
    if (!m_queue->isInStep() || m_queue->isInFrame()) {
        waitForPause();
    }
    const QPointer<SerialDevice> self(this);
    QElapsedTimer clock;
    clock.start();
    while (isRunning() && !m_queue->isEmpty() && clock.nsecsElapsed() < kTurnNanoseconds) {
        take(m_queue->takeFirst());
        if (!self) {
            return;
        }
    }
    m_inTurn = false;
    // What has come while a receiver ran an event loop is not announced again.
    if (isRunning() && (m_link->hasUnread() || !m_queue->isEmpty())) {
        m_turnTimer.start(kTurnPause);
    }
}

void SerialDevice::waitForPause()
{
    const auto characters = 36000ms / m_settings.baud;
    m_pauseTimer.start(m_queue->isInStep()
                           ? kFrameGap
                           : std::max<std::chrono::milliseconds>(kFirstPause, characters));
}

void SerialDevice::onPause()
{
    if (m_link->hasUnread()) {
        waitForPause();
        return;
    }
    m_queue->notePause();
    countLosses();
    if (m_poll && !m_poll->isActive()) {
        m_poll->start();
    }
    if (!m_poll && m_silence == 0ms) { // It need not speak by itself.
        setConnected(true);
    }
}

void SerialDevice::take(const QByteArray& frame)
{
    m_sinceFrame.start();
    if (m_silence > 0ms && !m_silenceTimer.isActive()) {
        watchSilence();
    }
    if (m_poll) {
        m_poll->noteAnswer();
    }
    setConnected(true);
    if (isRunning()) {
        sendLine(norvo::readFrameText(m_encoding, frame));
    }
}

void SerialDevice::onMissed(int inARow)
{
    if (inARow >= kMaxMissed) {
        leave();
    }
    if (inARow == 1 && isRunning()) {
        reportFault(QString("no answer within %1 ms").arg(m_timeout.count()));
    }
}

void SerialDevice::watchSilence()
{
    if (m_silence == 0ms) {
        return;
    }
    const auto left = m_silence - std::chrono::milliseconds(m_sinceFrame.elapsed());
    const bool isLate = left <= 0ms && !m_isSilenceExtended && m_link->hasUnread();
    m_isSilenceExtended = isLate; // This thread may be late, not the device.
    if (left > 0ms || isLate) {
        m_silenceTimer.start(std::max<std::chrono::milliseconds>(left, kExtension));
        return;
    }
    leave();
    if (isRunning()) {
        reportFault(QString("the device has sent nothing for %1").arg(QString(getParam(kSilence))));
    }
}

void SerialDevice::leave()
{
    m_link->forgetWrites();
    setConnected(false);
}

bool SerialDevice::write(const QString& text)
{
    const auto frame = frameOf(text);
    if (!frame) {
        m_losses.add(RefusedInputs);
    } else if (!isConnected()) {
        m_losses.add(LateInputs);
    } else if (!m_link->write(*frame)) {
        m_losses.add(UnreadInputs);
    } else {
        return true;
    }
    return false;
}

void SerialDevice::countLosses()
{
    const auto losses = m_queue->takeLosses();
    m_losses.add(DroppedFrames, losses.dropped);
    m_losses.add(LongFrames, losses.tooLong);
    m_losses.add(IncompleteFrames, losses.incomplete);
    m_losses.add(StrayBytes, losses.stray);
}
