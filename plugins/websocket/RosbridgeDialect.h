// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/common/JsonPath.h"
#include "plugins/websocket/Dialect.h"

#include <QHash>
#include <QJsonObject>
#include <QMap>

#include <vector>

namespace norvo {

/// Messages of rosbridge, protocol 2.0: topics of a robot with ROS.
///
/// What stands behind a name: a topic, its type and the JSON path to a field of its messages, as in
/// "/cmd_vel geometry_msgs/Twist $.linear.x". An output needs no type, and without a path it is the
/// whole message. Options of an output: "throttle", a time such as "100 ms" that lies between two
/// messages at least. Of several outputs of a topic the shortest holds.
///
/// Only topics whose output is heard are subscribed to. Inputs of one topic fill one message: each
/// value sends it with the last values of all of them since the connection began; what has not got
/// one is left out, and counts as 0 or empty there.
class RosbridgeDialect : public Dialect
{
public:
    QStringList outputOptions() const override { return {"throttle"}; }
    QStringList inputOptions() const override { return {}; }
    QString defineOutput(const PortDefinition& definition) override;
    QString defineInput(const PortDefinition& definition) override;

    QStringList opening() override; ///< Advertises the topics of the inputs.
    QStringList requests(const IsHeard& isHeard) override;
    QStringList closing() override;
    bool read(const QJsonValue& message, const IsHeard& isHeard, std::vector<Value>& values,
              QString& error) override;
    QString write(int input, const QJsonValue& value, const QString& text) override;

private:
    struct Port
    {
        QString topic;
        QString type; ///< Empty: the bridge knows it.
        JsonPath path;
        int throttleMs = 0;
    };
    using Throttles = QMap<QString, int>; ///< Topic to milliseconds.

    QString define(const PortDefinition& definition, bool isInput, Port& port);
    QString subscription(const QString& topic, int throttleMs) const;

    std::vector<Port> m_outputs;
    std::vector<Port> m_inputs;
    QHash<QString, std::vector<int>> m_readers; ///< Topic to outputs.
    QMap<QString, QString> m_types;             ///< Of topics, where given.
    QHash<QString, QJsonValue> m_written;       ///< Topic to its last message.
    Throttles m_subscribed;
};

} // namespace norvo
