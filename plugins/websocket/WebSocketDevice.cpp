// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/websocket/WebSocketDevice.h"

#include "plugins/websocket/JsonDialect.h"
#include "plugins/websocket/RosbridgeDialect.h"
#include "norvo/Categories.h"

#include <QPointer>

#include <chrono>
#include <cmath>
#include <utility>

namespace {

using namespace std::chrono_literals;

const QString kPreset = QStringLiteral("preset");
const QStringList kPresets{"json", "rosbridge"};

constexpr auto kPause = 5ms;
constexpr auto kRequestCheck = 1s;
constexpr qint64 kTurnNanoseconds = 2000000;
constexpr qint64 kServerErrorMilliseconds = 1000; ///< Between two that are reported.
constexpr qint64 kMaxRestMilliseconds = 1000;     ///< For what came before the end of a connection.

/// In the order of Loss.
const QStringList kLossTexts{"messages dropped, they came too fast",
                             "messages ignored, they are binary",
                             "messages refused, they are not JSON",
                             "messages that no output has a use for",
                             "writes refused, the server is not connected",
                             "writes refused, the server does not take them fast enough",
                             "writes refused, they are longer than 1 MiB",
                             "writes refused, JSON has no such number",
                             "error messages of the server not shown"};

} // namespace

WebSocketDevice::WebSocketDevice()
    : m_losses(kLossTexts, [this](const QString& text) { alert(text); }),
      m_isHeard([this](int output) { return isHeard(output); })
{
    norvo::declareSettings(*this);
    addParam(kPreset, kPresets);
    getParam(kPreset).setDescription("The messages that the server understands");
    m_losses.setCollector([this] { collectLosses(); });
    m_turn.setSingleShot(true);
    m_turn.setTimerType(Qt::PreciseTimer);
    connect(&m_turn, &QTimer::timeout, this, &WebSocketDevice::turn);
    connect(&m_second, &QTimer::timeout, this, &WebSocketDevice::sendRequests);
}

WebSocketDevice::~WebSocketDevice() = default;

DeviceTypeInfo WebSocketDevice::typeInfo()
{
    return {"WebSocket", "Messages of a WebSocket server as values", {norvo::kCategoryNetwork}};
}

norvo::Dialect& WebSocketDevice::dialect()
{
    if (!m_dialect) {
        if (QString(getParam(kPreset)) == kPresets.last()) {
            m_dialect = std::make_unique<norvo::RosbridgeDialect>();
        } else {
            m_dialect = std::make_unique<norvo::JsonDialect>();
        }
    }
    return *m_dialect;
}

QString WebSocketDevice::defineOutput(int, const QString&, const PortDefinition& definition)
{
    QString error = unknownOption(definition, dialect().outputOptions());
    error = error.isEmpty() ? dialect().defineOutput(definition) : error;
    m_hasOutputs |= error.isEmpty();
    return error;
}

QString WebSocketDevice::defineInput(int, const QString&, const PortDefinition& definition)
{
    const QString error = unknownOption(definition, dialect().inputOptions());
    return error.isEmpty() ? dialect().defineInput(definition) : error;
}

bool WebSocketDevice::initialise()
{
    if (!paramsOk()) {
        return error(paramFaults().join("; "));
    }
    dialect();
    const QString wrong = norvo::readSettings(*this, m_settings);
    m_lastError.clear();
    m_sinceServerError.invalidate();
    return wrong.isEmpty() || error(wrong);
}

void WebSocketDevice::postInitialisation()
{
    using norvo::ServerLink;

    if (!isRunning()) {
        return;
    }
    const auto startTurn = [this] {
        if (!m_turn.isActive()) {
            m_turn.start(0);
        }
    };
    m_isGreeted = false;
    m_end.clear();
    m_link = std::make_unique<ServerLink>();
    connect(m_link.get(), &ServerLink::opened, this, startTurn);
    connect(m_link.get(), &ServerLink::arrived, this, startTurn);
    connect(m_link.get(), &ServerLink::closed, this, [this, startTurn](const QString& why) {
        m_isGreeted = false;
        m_end = why;
        m_sinceEnd.start();
        startTurn();
    });
    m_link->start(m_settings);
    m_second.start(kRequestCheck);
}

void WebSocketDevice::preShutdown()
{
    m_turn.stop();
    m_second.stop();
    m_losses.stop();
    if (m_link) {
        m_link->stop(m_isGreeted ? m_dialect->closing() : QStringList());
    }
}

void WebSocketDevice::deinitialise()
{
    preShutdown();
    m_link.reset();
}

/// Takes what has come, a bounded part of it; comes back after a pause until there is nothing.
void WebSocketDevice::turn()
{
    if (m_isInTurn || !isRunning()) { // A receiver may run an event loop.
        return;
    }
    const QPointer<WebSocketDevice> self(this);
    m_isInTurn = true;
    if (m_end.isEmpty() && m_link->isOpen() && !m_isGreeted) {
        greet();
    }
    const bool isDone = self && isRunning() && takeMessages();
    if (isDone && !m_end.isEmpty()) {
        announceEnd();
    }
    if (!self) {
        return;
    }
    m_isInTurn = false;
    if (isRunning() && (!isDone || (m_link->isOpen() && !m_isGreeted))) {
        m_turn.start(kPause);
    }
}

/// True where none is left and the device still runs.
bool WebSocketDevice::takeMessages()
{
    if (!m_end.isEmpty() && m_sinceEnd.hasExpired(kMaxRestMilliseconds)) {
        m_link->messages().drop();
    }
    QElapsedTimer clock;
    clock.start();
    while (!m_link->messages().isEmpty()) {
        if (clock.nsecsElapsed() > kTurnNanoseconds || !take(m_link->messages().takeFirst())) {
            return false;
        }
    }
    collectLosses();
    return true;
}

/// False where a receiver has ended the device's running.
bool WebSocketDevice::take(const QByteArray& message)
{
    const QPointer<WebSocketDevice> self(this);
    const auto json = norvo::readJson(message);
    if (!json) {
        m_losses.add(UnreadableMessages);
        return true;
    }
    std::vector<norvo::Dialect::Value> values;
    QString complaint;
    if (!m_dialect->read(*json, m_isHeard, values, complaint) && m_hasOutputs) {
        m_losses.add(UnusedMessages);
    }
    for (const auto& [output, value] : values) {
        if (value.userType() == QMetaType::Double) {
            sendNumber(output, value.toDouble());
        } else if (value.userType() == QMetaType::Bool) {
            sendBool(output, value.toBool());
        } else {
            sendText(output, value.toString());
        }
        if (!self || !isRunning()) {
            return false;
        }
    }
    if (!complaint.isEmpty()) {
        reportServerError(complaint);
    }
    return self && isRunning();
}

void WebSocketDevice::greet()
{
    m_isGreeted = true;
    m_lastError.clear();
    for (const QString& message : m_dialect->opening()) {
        m_link->send(message);
    }
    sendRequests();
    setConnected(true);
}

void WebSocketDevice::sendRequests()
{
    if (m_isGreeted) {
        for (const QString& message : m_dialect->requests(m_isHeard)) {
            m_link->send(message);
        }
    }
}

void WebSocketDevice::announceEnd()
{
    const QPointer<WebSocketDevice> self(this);
    const QString why = std::exchange(m_end, QString());
    setConnected(false);
    if (self && isRunning()) {
        reportOnce(why);
    }
}

/// What goes wrong at each attempt to connect is not said again and again.
void WebSocketDevice::reportOnce(const QString& error)
{
    if (std::exchange(m_lastError, error) != error) {
        reportFault(error);
    }
}

/// A server may complain of each of thousands of messages.
void WebSocketDevice::reportServerError(const QString& text)
{
    if (m_sinceServerError.isValid() && !m_sinceServerError.hasExpired(kServerErrorMilliseconds)) {
        m_losses.add(ServerErrors);
        return;
    }
    m_sinceServerError.start();
    reportOnce(text);
}

void WebSocketDevice::receive(int input, const QVariant& value)
{
    const bool isNumber = value.userType() == QMetaType::Double;
    const bool isFinite = !isNumber || std::isfinite(value.toDouble());
    if (!isFinite || !m_isGreeted || !isConnected()) {
        m_losses.add(isFinite ? LateWrites : InfiniteWrites);
        return;
    }
    if (m_link->isFull()) {
        m_losses.add(HastyWrites);
        return;
    }
    const QString message = m_dialect->write(input, QJsonValue::fromVariant(value), textOf(value));
    if (message.toUtf8().size() > norvo::ServerLink::kMaxMessage) {
        m_losses.add(OversizedWrites);
    } else {
        m_link->send(message);
    }
}

void WebSocketDevice::collectLosses()
{
    if (m_link) {
        m_losses.add(DroppedMessages, m_link->messages().takeDropped());
        m_losses.add(BinaryMessages, m_link->takeBinary());
    }
}
