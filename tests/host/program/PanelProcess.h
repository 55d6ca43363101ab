// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

/// Drives the program as a child process. It runs off-screen unless the environment is changed.
class PanelProcess : public QProcess
{
public:
    static constexpr int kPatience = 60000; ///< ms; a machine under load and sanitizers are slow.

    explicit PanelProcess(const QStringList& arguments,
                          const QString& program = NORVO_BUILD_DIR "/bin/norvo-panel")
    {
        setProgram(program);
        setArguments(arguments);
        setEnvironment("QT_QPA_PLATFORM", "offscreen");
        setEnvironment("XDG_RUNTIME_DIR", m_runtime.path()); // Qt warns of an open one.
    }

    ~PanelProcess() override
    {
        kill();
        waitForFinished(kPatience);
    }

    void setEnvironment(const QString& name, const QString& value)
    {
        QProcessEnvironment changed = processEnvironment();
        if (changed.isEmpty()) {
            changed = QProcessEnvironment::systemEnvironment();
        }
        changed.insert(name, value);
        setProcessEnvironment(changed);
    }

    void removeEnvironment(const QString& name)
    {
        QProcessEnvironment changed = processEnvironment();
        changed.remove(name);
        setProcessEnvironment(changed);
    }

    /// No display that the environment would tell of.
    void takeDisplayAway()
    {
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            removeEnvironment(name);
        }
    }

    /// From start to end; the exit status, or -1 if there was none (a crash, no start, no end).
    int runToEnd()
    {
        start();
        return waitForEnd();
    }

    int waitForEnd()
    {
        waitForFinished(kPatience);
        m_errors += readAllStandardError();
        const bool hasEnded = state() == NotRunning && error() != FailedToStart;
        return hasEnded && exitStatus() == NormalExit ? exitCode() : -1;
    }

    bool waitForErrorText(const QByteArray& text)
    {
        QElapsedTimer clock;
        clock.start();
        while (!m_errors.contains(text) && clock.elapsed() < kPatience && state() != NotRunning) {
            waitForReadyRead(20);
            m_errors += readAllStandardError();
        }
        return m_errors.contains(text);
    }

    void sendSignal(int number) { ::kill(pid_t(processId()), number); }

    /// The lines of standard error.
    QStringList errorLines()
    {
        m_errors += readAllStandardError();
        return QString::fromUtf8(m_errors).split('\n', Qt::SkipEmptyParts);
    }

    QStringList outputLines()
    {
        return QString::fromUtf8(readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    }

private:
    QTemporaryDir m_runtime;
    QByteArray m_errors;
};

/// A folder with a panel file in it.
class PanelFolder : public QTemporaryDir
{
public:
    explicit PanelFolder(const QByteArray& panel) { fill("panel.yaml", panel); }

    QString panel() const { return filePath("panel.yaml"); }

    void fill(const QString& name, const QByteArray& content) const
    {
        QFile file(filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
    }

    QByteArray content(const QString& name) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

/// The folder of a fixture plug-in.
inline QString fixture(const QString& name)
{
    return NORVO_BUILD_DIR "/tests/fixtures/" + name;
}
