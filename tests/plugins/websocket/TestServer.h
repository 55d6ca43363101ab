// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QTcpServer>
#include <QtTest>

#include <csignal>
#include <memory>

#include <sys/prctl.h>

/// A server written in Python, on loopback; it ends with the test, however that ends.
class TestServer
{
public:
    explicit TestServer(QString script = "server.py", QStringList arguments = {})
        : m_script(NORVO_SOURCE_DIR "/tests/plugins/websocket/" + std::move(script)),
          m_arguments(std::move(arguments)),
          m_port(freePort())
    {}
    ~TestServer() { kill(); }

    void start() ///< At the same port as before.
    {
        kill();
        m_process = std::make_unique<Mortal>();
        m_process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QObject::connect(m_process.get(), &QProcess::readyReadStandardOutput, [this] { read(); });
        m_process->start("/usr/bin/python3",
                         QStringList{m_script, QString::number(m_port)} + m_arguments);
        QTRY_VERIFY_WITH_TIMEOUT(news.contains("ready"), 60000);
        news.clear();
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
    void obey(const QString& command) { m_process->write(command.toUtf8() + '\n'); }

    int port() const { return m_port; }
    QString url(const QString& path = "/") const
    {
        return QString("ws://127.0.0.1:%1%2").arg(m_port).arg(path);
    }

    QStringList news; ///< What it has written since the start, a line each.

private:
    class Mortal : public QProcess
    {
    protected:
        void setupChildProcess() override { ::prctl(PR_SET_PDEATHSIG, SIGKILL); }
    };

    static int freePort()
    {
        QTcpServer server;
        return server.listen(QHostAddress::LocalHost) ? server.serverPort() : 0;
    }
    void read()
    {
        while (m_process->canReadLine()) {
            news << QString::fromUtf8(m_process->readLine()).chopped(1);
        }
    }
    void signal(int number) { QCOMPARE(::kill(pid_t(m_process->processId()), number), 0); }

    const QString m_script;
    const QStringList m_arguments;
    const int m_port;
    std::unique_ptr<Mortal> m_process;
};
