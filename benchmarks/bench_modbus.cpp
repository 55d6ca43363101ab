// SPDX-License-Identifier: GPL-3.0-or-later
// What polling a thousand named outputs costs the panel's thread; see the column CPU.

#include "plugins/modbus/ModbusDevice.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <benchmark/benchmark.h>

#include <future>
#include <memory>

namespace {

constexpr int kPorts = 1000;

/// Answers every read of registers with zeros, in a thread of its own.
class Server
{
public:
    Server()
        : m_thread(QThread::create([this] {
              QTcpServer server;
              QObject::connect(&server, &QTcpServer::newConnection, [&server] {
                  QTcpSocket* const socket = server.nextPendingConnection();
                  QObject::connect(socket, &QTcpSocket::readyRead, [socket] { answer(*socket); });
              });
              server.listen(QHostAddress::LocalHost);
              m_port.set_value(server.serverPort());
              QEventLoop().exec();
          }))
    {
        m_thread->start();
    }
    ~Server()
    {
        m_thread->quit();
        m_thread->wait();
    }
    quint16 port() { return m_port.get_future().get(); } ///< Once.

private:
    static void answer(QTcpSocket& socket)
    {
        while (socket.bytesAvailable() >= 12) {
            const QByteArray request = socket.read(12);
            const int bytes = 2 * quint8(request[11]);
            socket.write(request.left(5) + char(3 + bytes) + request.mid(6, 2) + char(bytes) +
                         QByteArray(bytes, '\0'));
        }
    }

    std::promise<quint16> m_port;
    const std::unique_ptr<QThread> m_thread;
};

class Counter : public QObject
{
    Q_OBJECT

public:
    int count = 0;

public slots:
    void take(double) { ++count; }
};

/// The device with its outputs connected, running.
void start(ModbusDevice& device, Counter& counter, quint16 port)
{
    device.setParam("target", QString("tcp://127.0.0.1:%1").arg(port));
    device.setParam("poll", "10");
    for (int i = 0; i < kPorts; ++i) {
        const QString name = QString("x%1").arg(i);
        device.addOutput(name, QString("holding %1 int16 x0.1").arg(i));
    }
    for (int i = 0; i < kPorts; ++i) {
        const QString name = QString("x%1").arg(i);
        QString signature;
        QObject* const provider = device.getProvider(name + "(double)", signature);
        QObject::connect(provider, ("2" + signature.toUtf8()).constData(), &counter,
                         SLOT(take(double)));
    }
    device.initialise();
    device.setRunning(true);
    device.postInitialisation();
}

void polls(benchmark::State& state)
{
    Server server;
    ModbusDevice device;
    Counter counter;
    start(device, counter, server.port());
    for (auto _ : state) {
        for (const int end = counter.count + kPorts; counter.count < end;) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    device.setRunning(false);
    device.deinitialise();
    state.SetItemsProcessed(state.iterations() * kPorts);
}
BENCHMARK(polls)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

#include "bench_modbus.moc"
