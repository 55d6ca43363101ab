// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/common/LossReport.h"
#include "plugins/websocket/Dialect.h"
#include "plugins/websocket/ServerLink.h"
#include "norvo/DeviceTypeInfo.h"
#include "norvo/SourceDevice.h"

#include <QElapsedTimer>
#include <QTimer>

#include <memory>
#include <vector>

/// Messages of a WebSocket server as outputs and inputs.
///
/// Parameters: see norvo::declareSettings(), and "preset": "json" or "rosbridge". Named outputs and
/// inputs: see norvo::JsonDialect and norvo::RosbridgeDialect.
///
/// Messages leave in the order in which they came. One has 1 MiB at most, a longer one ends the
/// connection; 50,000 or 16 MiB may wait, of more the oldest are dropped. What came before the end
/// of a connection leaves before connected(false), within a second.
///
/// What is written while the server is away is refused. All that is lost is counted and reported in
/// an alert from time to time.
class WebSocketDevice : public SourceDevice
{
    Q_OBJECT

public:
    WebSocketDevice();
    ~WebSocketDevice() override;

    static DeviceTypeInfo typeInfo();

    /// False where a parameter does not read or one of its files cannot be read.
    bool initialise() override;
    void postInitialisation() override;
    void preShutdown() override;
    void deinitialise() override;

protected:
    QString defineOutput(int output, const QString& name,
                         const PortDefinition& definition) override;
    QString defineInput(int input, const QString& name, const PortDefinition& definition) override;
    void receive(int input, const QVariant& value) override;

private:
    enum Loss {
        DroppedMessages,
        BinaryMessages,
        UnreadableMessages,
        UnusedMessages,
        LateWrites,
        HastyWrites,
        OversizedWrites,
        InfiniteWrites,
        ServerErrors
    };

    norvo::Dialect& dialect(); ///< Of the preset when it is asked for first.
    void turn();
    bool takeMessages();
    bool take(const QByteArray& message);
    void greet();
    void sendRequests();
    void announceEnd();
    void reportOnce(const QString& error);
    void reportServerError(const QString& text);
    void collectLosses();

    std::unique_ptr<norvo::Dialect> m_dialect;
    norvo::ServerSettings m_settings;
    std::unique_ptr<norvo::ServerLink> m_link;
    norvo::LossReport m_losses; ///< By Loss.
    norvo::Dialect::IsHeard m_isHeard;
    QString m_lastError;
    QString m_end; ///< Why the last connection has ended, until that is announced.
    QElapsedTimer m_sinceEnd;
    QElapsedTimer m_sinceServerError; ///< Since the last one was reported.
    QTimer m_turn;
    QTimer m_second;
    bool m_hasOutputs = false;
    bool m_isGreeted = false; ///< The server of the present connection.
    bool m_isInTurn = false;
};
