// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <chrono>

class ParametersEntity;
class QString;

namespace norvo {

/// How a broker is reached.
struct BrokerSettings
{
    QByteArray host;
    int port = 1883;
    bool isEncrypted = false;
    QByteArray user; ///< Empty: none, and no password.
    QByteArray password;
    QByteArray clientId;    ///< Never empty.
    QByteArray statusTopic; ///< Where "online" and "offline" are published; empty: nowhere.
    QByteArray caFile;      ///< Empty: the authorities that the machine trusts.
    QByteArray certificateFile;
    QByteArray keyFile;
    /// How long the broker may be silent, although it is asked, before it counts as away.
    std::chrono::milliseconds maxSilence{2000};
    bool isVersion5 = true;
    /// Whether the broker keeps what has been published with QoS 1 and 2 while the connection is
    /// broken; see BrokerThread.
    bool keepsSession = false;

    /// "mqtts://host:8883".
    QString address() const;
};

/// Declares the parameters that readSettings() reads.
void declareSettings(ParametersEntity& entity);

/// Reads them, and the password from its file. What is wrong, or an empty text; it begins with the
/// parameter's name, as paramFaults() does.
QString readSettings(ParametersEntity& entity, BrokerSettings& settings);

} // namespace norvo
