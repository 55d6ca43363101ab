// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/sources/process/ChildProcess.h"
#include "plugins/common/LineDevice.h"
#include "plugins/common/LossReport.h"
#include "plugins/sources/process/LinePump.h"
#include "plugins/common/RetryDelay.h"
#include "norvo/DeviceTypeInfo.h"

#include <QElapsedTimer>
#include <QTimer>

#include <memory>

/// A child program whose lines of output become values.
///
/// Parameters: "command", the program and its arguments (see splitCommand()), and "restart":
/// "never", "on-failure" (any exit status but 0) or "always". It is started in
/// postInitialisation(), with the panel's environment and working folder, in a process group of its
/// own. All that it starts ends with it, with the panel, and at the stop (SIGTERM to the group, and
/// SIGKILL to all half a second later); only a process that leaves the group and clears its
/// environment escapes. Before each restart in a row passes twice the time, from 0.5 s to 30 s, and
/// 0.5 s again after a run of 10 s.
///
/// A line has 1 MiB at most, the rest is cut. 50,000 lines or 4 MiB may wait to be emitted; of more
/// than that the oldest are dropped. What has been lost is reported in an alert from time to time.
/// Standard error goes to the log, 100 lines a second at most, control characters as "\x1b".
///
/// Named outputs are found in each line by a LinePattern, each that matches sends; named inputs
/// write a line each by a LineFormat. It is connected while the program runs; one that ends by a
/// signal or with another exit status than 0 is a fault().
class ProcessDevice : public LineDevice
{
    Q_OBJECT

public:
    ProcessDevice();
    ~ProcessDevice() override;

    static DeviceTypeInfo typeInfo();

    /// False where the command does not read or there is no such program.
    bool initialise() override;
    void postInitialisation() override;
    void preShutdown() override;
    void deinitialise() override;

signals:
    /// The exit status, or 128 and the number of the signal that killed it; after running(false).
    void finished(int code);
    void running(bool on);

protected:
    /// Writes the text and a line feed to the program's standard input. A text that holds a line
    /// end is refused: the program would take it for two commands. While the program does not run,
    /// and where it does not read, the text is lost, never kept for later.
    bool write(const QString& line) override;
    void countUnmatchedLine() override { m_losses.add(UnmatchedLines); }

private:
    enum class Restart { Never, OnFailure, Always };
    /// Late inputs came while the program did not run.
    enum Loss {
        DroppedLines,
        CutLines,
        UnloggedLines,
        UnreadInputs,
        LateInputs,
        RefusedInputs,
        UnmatchedLines
    };

    void start();
    void onStarted();
    void onError(QProcess::ProcessError error);
    void onExited(int code, QProcess::ExitStatus status);
    void onLine(const QByteArray& line);
    void onErrorLine(const QByteArray& line);
    void onDrained();
    void dismissChild();
    void restartAfter(int code);
    void collectLosses();

    QString m_program; ///< The path of its file.
    QStringList m_arguments;
    Restart m_restart = Restart::Never;
    norvo::RetryDelay m_delay;
    QTimer m_restartTimer;
    std::unique_ptr<norvo::ChildProcess> m_child;
    norvo::LinePump* m_output = nullptr; ///< Of the child, as is the next; null: not running.
    norvo::LinePump* m_errors = nullptr;
    int m_pumpsLeft = 0; ///< Of a program that has ended: those with lines left.
    int m_exitCode = 0;
    QString m_death; ///< In words; empty after exit status 0.
    QElapsedTimer m_run;
    QElapsedTimer m_stopping;
    QElapsedTimer m_logSecond;
    int m_loggedLines = 0;      ///< Within that second.
    norvo::LossReport m_losses; ///< By Loss.
    QString m_lastError;        ///< The last line of standard error of this run.
};
