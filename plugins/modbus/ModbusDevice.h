// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/common/LossReport.h"
#include "plugins/common/RetryDelay.h"
#include "plugins/modbus/ModbusLine.h"
#include "plugins/modbus/ModbusSettings.h"
#include "plugins/modbus/PollBlock.h"
#include "norvo/DeviceTypeInfo.h"
#include "norvo/SourceDevice.h"

#include <QElapsedTimer>
#include <QTimer>

#include <deque>
#include <memory>
#include <optional>
#include <vector>

/// The registers and coils of one Modbus server, by TCP or a serial line.
///
/// Every "poll" ms the outputs that are heard are read, neighbours together; a poll that is still
/// under way is not begun again. What the server refuses of several values is tried in halves, so
/// that an address that it lacks takes no other value along. Where nothing is heard, one value is
/// read each second, so that silence shows. The server is there from its first answer on, and away
/// when a request has had no answer.
///
/// A write goes before polls. Of each input one write at most waits; a newer one takes its place.
/// It is sent once, and confirmed by the answer. While the server is away writes are refused, and
/// those that waited are dropped: none is ever sent later.
class ModbusDevice : public SourceDevice
{
    Q_OBJECT

public:
    ModbusDevice();
    ~ModbusDevice() override;

    static DeviceTypeInfo typeInfo();

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
    enum Loss { WhileAway, Replaced, Unfit, RefusedByServer, Dropped };

    struct Output
    {
        QString name;
        bool sendsChanges;
        std::optional<double> last; ///< That has been sent.
    };
    struct Input
    {
        QString name;
        norvo::ModbusPoint point;
        bool writesMultiple;
        std::optional<norvo::ModbusRequest> waiting;
        QString error; ///< That has been reported of it last.
    };
    void openLine();
    void onOpened();
    void lose(const QString& reason);
    void dropLine();

    void poll();
    void updateBlocks();
    void askNext();
    void ask(const norvo::ModbusRequest& request, int attempts);
    void askProbe();
    void onAnswered(const QByteArray& pdu);
    void onBlock(const QByteArray& pdu);
    void onBlockRefused(quint8 code);
    void deliver(std::vector<int> outputs, const QByteArray& data, int firstAddress);
    void deliverOne(int output, const QByteArray& data, int firstAddress);

    void onWritten(const QByteArray& pdu);
    /// Reports what is wrong where that is news; empty: nothing is any more.
    void report(QString& last, const QString& text);

    norvo::ModbusSettings m_settings;
    std::vector<Output> m_outputs;
    norvo::PollBlock::Points m_points; ///< Of the outputs.
    std::vector<Input> m_inputs;

    std::unique_ptr<norvo::ModbusLine> m_line;
    int m_lineNumber = 0; ///< Tells what came from the line there is from what is still queued.
    bool m_isOpen = false;
    bool m_isAsking = false; ///< Until the answer is here; the line has it a little earlier.
    QTimer m_reopenTimer;
    norvo::RetryDelay m_delay;
    QElapsedTimer m_run; ///< Since the first answer.
    QString m_error;     ///< Why the server is away, as reported last.

    QTimer m_pollTimer;
    QElapsedTimer m_sinceAnswer;
    std::vector<int> m_heard;
    std::vector<norvo::PollBlock> m_blocks; ///< Of the outputs that are heard.
    std::size_t m_nextBlock = 0;       ///< Of the poll under way; the count of blocks: none is.
    std::optional<int> m_writtenInput; ///< Of the write under way.
    bool m_isProbing = false;
    std::deque<int> m_waitingInputs;
    norvo::LossReport m_losses;
};
