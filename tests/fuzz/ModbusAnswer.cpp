// SPDX-License-Identifier: GPL-3.0-or-later

#include "FuzzInput.h"
#include "Harness.h"
#include "PortLine.h"
#include "plugins/modbus/PollBlock.h"
#include "plugins/modbus/TcpLine.h"

#include <QCoreApplication>
#include <QTcpServer>
#include <QTcpSocket>

#include <chrono>
#include <memory>

using norvo::ModbusPoint;
using norvo::ModbusRequest;
using norvo::require;

namespace {

constexpr quint8 kUnit = 1;

/// What a line that has asked `request` gives out of what a server sends and then hangs up: the
/// answer, or nothing.
QByteArray answerIn(const QByteArray& sent, const ModbusRequest& request)
{
    static auto* const server = [] {
        auto* const listening = new QTcpServer;
        require(listening->listen(QHostAddress::LocalHost), "a server can listen");
        return listening;
    }();

    norvo::TcpLine line("127.0.0.1", server->serverPort(), kUnit, std::chrono::seconds(10));
    QByteArray answer;
    bool isOver = false;
    QObject::connect(&line, &norvo::ModbusLine::opened, [&] { line.ask(request, 1); });
    QObject::connect(&line, &norvo::ModbusLine::answered, [&](const QByteArray& pdu) {
        require(!isOver, "a request has one answer");
        answer = pdu;
        isOver = true;
    });
    QObject::connect(&line, &norvo::ModbusLine::broken, [&] { isOver = true; });
    line.open();
    std::unique_ptr<QTcpSocket> peer;
    while (!isOver) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (!peer && server->hasPendingConnections()) {
            peer.reset(server->nextPendingConnection());
            QObject::connect(peer.get(), &QTcpSocket::readyRead, [&] { // It was asked.
                peer->write(sent);
                peer->disconnectFromHost();
            });
        }
    }
    return answer;
}

} // namespace

/// First line: what stands behind an output's name; then what a Modbus TCP server sends. An answer
/// is that of the request, and its value is within what the registers can hold.
NORVO_HARNESS(ModbusAnswer)
{
    norvo::FuzzInput parts(input);
    ModbusPoint point;
    if (!point.define(norvo::portDefinitionOf(parts.line())).isEmpty()) {
        return;
    }
    require(point.end() <= 0x10000, "a point lies among the addresses");
    const auto blocks = norvo::PollBlock::merge({point}, {0});
    require(blocks.size() == 1 && blocks.front().size == point.size(), "a point is one block");
    const auto request = ModbusRequest::read(point.table, point.address, point.size());
    const QByteArray answer = answerIn(parts.rest(), request);
    if (answer.isEmpty() || request.isRefusedBy(answer)) {
        return;
    }
    require(answer.size() == request.answerSize && answer.startsWith(request.answerHead),
            "an answer is that of the request");
    const double value = point.valueIn(answer.mid(2), point.address);
    require(!point.isYesNo() || value == 0 || value == 1, "a bit is 0 or 1");
    QString error;
    if (point.writeError().isEmpty()) {
        ModbusRequest::write(point, value, true, error);
    }
}
