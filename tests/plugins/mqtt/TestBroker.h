// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <memory>

#include <sys/prctl.h>

/// A child that ends with the test, however that ends.
class MortalProcess : public QProcess
{
    Q_OBJECT

protected:
    void setupChildProcess() override { ::prctl(PR_SET_PDEATHSIG, SIGKILL); }
};

/// A broker on loopback, with a folder of its own.
class TestBroker
{
public:
    /// `settings`: lines of its configuration; "%" stands for the folder.
    explicit TestBroker(QStringList settings = {"allow_anonymous true"})
        : m_settings(std::move(settings)), m_port(freePort())
    {}
    ~TestBroker() { kill(); }

    /// At the same port as before. Where it may choose, it stays who it is, so that it can use its
    /// folder.
    void start()
    {
        write("broker.conf",
              QString("listener %1 127.0.0.1\nlog_type all\nuser root\nmax_queued_messages 0\n")
                      .arg(m_port) +
                  m_settings.join('\n').replace('%', m_folder.path()) + '\n');
        for (int i = 0; i < 100; ++i) { // The port of the one before may still be closing.
            launch();
            if (waitUntilReady()) {
                return;
            }
            kill();
            QTest::qWait(100);
        }
        QFAIL("the broker does not start");
    }
    void stop() ///< It writes down what it is to keep.
    {
        m_process->terminate();
        QVERIFY(m_process->waitForFinished());
    }
    void kill()
    {
        if (m_process) {
            m_process->kill(); // Ends one that is stopped, too.
            m_process->waitForFinished();
            m_process.reset();
        }
    }
    void freeze() { signal(SIGSTOP); }
    void thaw() { signal(SIGCONT); }

    int port() const { return m_port; }
    QString address() const { return QString("mqtt://127.0.0.1:%1").arg(m_port); }
    QString path(const QString& file) const { return m_folder.filePath(file); }
    void write(const QString& name, const QString& text) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
    }
    /// What it has logged of the connection and the subscriptions of its clients.
    QString log() const
    {
        QFile file(path("log"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    static int freePort()
    {
        QTcpServer server;
        return server.listen(QHostAddress::LocalHost) ? server.serverPort() : 0;
    }

private:
    void launch()
    {
        m_process = std::make_unique<MortalProcess>();
        m_process->setProcessChannelMode(QProcess::MergedChannels);
        m_process->setStandardOutputFile(path("log"), QIODevice::Append);
        m_process->setWorkingDirectory(m_folder.path());
        m_process->start("/usr/sbin/mosquitto", {"-c", path("broker.conf")});
        QVERIFY(m_process->waitForStarted());
    }
    bool waitUntilReady() const
    {
        for (int i = 0; i < 500 && m_process->state() == QProcess::Running; ++i) {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress(QHostAddress::LocalHost), quint16(m_port));
            if (socket.waitForConnected(1000)) {
                return true;
            }
            m_process->waitForFinished(20);
        }
        return false;
    }
    void signal(int number) { QCOMPARE(::kill(pid_t(m_process->processId()), number), 0); }

    const QStringList m_settings;
    const int m_port;
    QTemporaryDir m_folder;
    std::unique_ptr<MortalProcess> m_process;
};
