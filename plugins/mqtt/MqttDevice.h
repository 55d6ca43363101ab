// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "plugins/common/LossReport.h"
#include "plugins/mqtt/AgeWatch.h"
#include "plugins/mqtt/BrokerThread.h"
#include "plugins/mqtt/TopicPort.h"
#include "norvo/DeviceTypeInfo.h"
#include "norvo/SourceDevice.h"

#include <QHash>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

/// Topics of an MQTT broker as outputs and inputs.
///
/// Parameters: see norvo::declareSettings(). Named outputs and inputs: see norvo::TopicPort. Only
/// topics whose output is connected to something are subscribed to, each once; looked at at the
/// start and every second.
///
/// A message leaves in the order in which it came. 50,000 messages or 16 MiB may wait; when more
/// do, the newest one of each topic stays. A payload is text in UTF-8 of up to 1 MiB. Messages that
/// the broker had retained leave as others do, but do not end the staleness of an output: their age
/// is not known.
///
/// What is written while the broker is away is refused, and what was on its way when the connection
/// broke is thrown away. All that is lost is counted and reported in an alert from time to time.
class MqttDevice : public SourceDevice
{
    Q_OBJECT

public:
    MqttDevice();
    ~MqttDevice() override;

    static DeviceTypeInfo typeInfo();

    /// False where a parameter does not read or one of its files cannot be read.
    bool initialise() override;
    void postInitialisation() override;
    void preShutdown() override;
    void deinitialise() override;

signals:
    void stale(bool on); ///< Whether the age of any output is above its option "stale".
    /// An output that had been reported as stale has got a message.
    void recovered(QString text);

protected:
    QString defineOutput(int output, const QString& name,
                         const PortDefinition& definition) override;
    QString defineInput(int input, const QString& name, const PortDefinition& definition) override;
    void receive(int input, const QVariant& value) override;

private:
    enum Loss {
        DroppedMessages,
        OversizedMessages,
        UnreadableMessages,
        MisfitMessages,
        LateWrites,
        HastyWrites,
        OversizedWrites,
        RefusedWrites,
        UnconfirmedWrites
    };

    void updateFilters();
    void turn();
    void take(const norvo::News& news);
    void takeMessage(const norvo::News& news);
    void reportOnce(const QString& error);
    std::vector<int> outputsOf(const norvo::News& news) const;
    void sendFrom(int output, const norvo::News& news, std::optional<QJsonValue>& json);
    bool sendValue(int output, const norvo::News& news, std::optional<QJsonValue>& json);
    void checkAges();
    void collectLosses();

    std::vector<norvo::TopicPort> m_outputs;
    std::vector<QString> m_outputNames;
    std::vector<norvo::TopicPort> m_inputs;
    QVector<norvo::TopicFilter> m_allFilters; ///< Of the outputs; number 1 is the first.
    QHash<QByteArray, int> m_numbers;         ///< Of the filters, by their text.
    std::vector<std::vector<int>> m_readers;  ///< Outputs of each filter.
    norvo::BrokerSettings m_settings;
    std::unique_ptr<norvo::BrokerThread> m_broker;
    QVector<norvo::TopicFilter> m_filters; ///< That the broker has been asked for.
    norvo::AgeWatch m_ages;
    norvo::LossReport m_losses;
    QString m_lastError;
    QTimer m_pause;
    QTimer m_second;
    QTimer m_ageTimer;
    bool m_isInTurn = false;
};
