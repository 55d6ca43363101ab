// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/ProcessDevice.h"

#include "plugins/sources/process/CommandWords.h"
#include "norvo/Categories.h"

#include <QDebug>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr norvo::LineQueue::Limits kOutputLimits{1024 * 1024, 50000, 4 * 1024 * 1024};
constexpr norvo::LineQueue::Limits kErrorLimits{4096, 200, 256 * 1024};
constexpr int kLoggedLinesPerSecond = 100;
constexpr int kMaxErrorLength = 200; ///< Of the last words of a program, in characters.
constexpr auto kGrace = 500ms;

/// In the order of Loss.
const QStringList kLossTexts{
    "lines of output dropped, they came too fast", "lines of output cut at 1 MiB",
    "lines of standard error not logged",          "inputs lost, the program does not read them",
    "inputs lost, the program is not running",     "inputs refused, they hold more than one line",
    "lines that match none of the named outputs"};

const QString kCommand = QStringLiteral("command");
const QString kRestart = QStringLiteral("restart");
const QStringList kRestarts{"never", "on-failure", "always"}; ///< In the order of Restart.

/// The file that the first word of a command names; empty when there is none.
QString findProgram(const QString& name)
{
    if (!name.contains('/')) {
        return QStandardPaths::findExecutable(name);
    }
    const QFileInfo file(name);
    return file.isFile() && file.isExecutable() ? name : QString();
}

/// Fit for a terminal: it must not obey what a program sends.
QString withoutControls(const QString& line)
{
    QString text;
    text.reserve(line.size());
    for (const QChar c : line) {
        if (c.category() == QChar::Other_Control && c != '\t') {
            text += QString("\\x%1").arg(c.unicode(), 2, 16, QChar('0'));
        } else {
            text += c;
        }
    }
    return text;
}

/// How the program ended, in words; empty where that is how it should end.
QString deathOf(int code, QProcess::ExitStatus status)
{
    if (status == QProcess::CrashExit) {
        return QString("signal %1 (%2) has ended the program")
            .arg(code)
            .arg(QString::fromLocal8Bit(::strsignal(code)));
    }
    return code == 0 ? QString() : QString("the program has ended with exit status %1").arg(code);
}

} // namespace

ProcessDevice::ProcessDevice()
    : LineDevice({"decimal", "resend"}),
      m_losses(kLossTexts, [this](const QString& text) { alert(text); })
{
    addParam(kCommand, QString());
    getParam(kCommand).setDescription("The program and its arguments; quotes keep spaces together");
    addParam(kRestart, kRestarts);
    getParam(kRestart).setDescription("Whether to start it again when it has ended");

    m_restartTimer.setSingleShot(true);
    connect(&m_restartTimer, &QTimer::timeout, this, &ProcessDevice::start);
    m_losses.setCollector([this] { collectLosses(); });
}

ProcessDevice::~ProcessDevice() = default;

DeviceTypeInfo ProcessDevice::typeInfo()
{
    return {"Process", "A program whose lines of output become values", {norvo::kCategorySystem}};
}

bool ProcessDevice::initialise()
{
    norvo::CommandWords command = norvo::splitCommand(getParam(kCommand));
    if (!command.error.isEmpty()) {
        return error(QString("parameter \"command\": %1").arg(command.error));
    }
    const QString name = command.words.takeFirst();
    m_program = findProgram(name);
    if (m_program.isEmpty()) {
        return error(QString("parameter \"command\": there is no program \"%1\"").arg(name));
    }
    m_arguments = command.words;
    m_restart = Restart(std::max(0, kRestarts.indexOf(getParam(kRestart))));
    m_delay = norvo::RetryDelay();
    return LineDevice::initialise();
}

void ProcessDevice::postInitialisation()
{
    if (isRunning()) {
        start();
    }
}

void ProcessDevice::preShutdown()
{
    m_restartTimer.stop();
    m_losses.stop();
    if (m_output) {
        m_output->disconnect(this);
        m_errors->disconnect(this);
    }
    if (m_child) {
        m_child->disconnect(this);
        m_child->terminateAll();
        m_stopping.start();
    }
}

void ProcessDevice::deinitialise()
{
    if (m_child && !m_stopping.isValid()) {
        preShutdown();
    }
    // What it still has to say is taken off it, so that it can end in order.
    while (m_child && !m_child->waitForEndOfAll(4ms) && !m_stopping.hasExpired(kGrace / 1ms)) {
        if (m_output) {
            m_output->discard();
            m_errors->discard();
        }
    }
    m_stopping.invalidate();
    m_output = nullptr;
    m_errors = nullptr;
    m_child.reset();
}

void ProcessDevice::start()
{
    m_child = std::make_unique<norvo::ChildProcess>();
    connect(m_child.get(), &QProcess::started, this, &ProcessDevice::onStarted);
    connect(m_child.get(), &QProcess::errorOccurred, this, &ProcessDevice::onError);
    connect(m_child.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &ProcessDevice::onExited);
    m_run.start();
    m_child->launch(m_program, m_arguments);
}

void ProcessDevice::onStarted()
{
    using norvo::LinePump;

    m_output = new LinePump(m_child->takeOutput(), kOutputLimits, m_child.get());
    connect(m_output, &LinePump::line, this, &ProcessDevice::onLine);
    connect(m_output, &LinePump::drained, this, &ProcessDevice::onDrained);
    m_errors = new LinePump(m_child->takeErrors(), kErrorLimits, m_child.get());
    connect(m_errors, &LinePump::line, this, &ProcessDevice::onErrorLine);
    connect(m_errors, &LinePump::drained, this, &ProcessDevice::onDrained);
    m_pumpsLeft = 2;
    m_lastError.clear();
    resend(); // A program that has been started again knows nothing of what the last one was told.
    emit running(true);
    if (isRunning()) {
        setConnected(true);
    }
}

void ProcessDevice::onError(QProcess::ProcessError error)
{
    constexpr int anyFailure = 127;

    if (error == QProcess::FailedToStart) {
        const QString reason = m_child->errorString().section(": ", -1); // Behind the call's name.
        dismissChild();
        restartAfter(anyFailure);
        setConnected(false);
        reportFault(QString("cannot start \"%1\": %2").arg(m_program, reason));
    }
}

void ProcessDevice::onExited(int code, QProcess::ExitStatus status)
{
    m_child->killAll(); // What it left behind.
    m_exitCode = status == QProcess::CrashExit ? 128 + code : code;
    m_death = deathOf(code, status);
    m_output->finish();
    m_errors->finish();
}

void ProcessDevice::onDrained()
{
    if (--m_pumpsLeft > 0) {
        return;
    }
    m_losses.reportNow();
    dismissChild();
    restartAfter(m_exitCode);
    if (isRunning()) {
        emit running(false);
    }
    if (isRunning()) {
        emit finished(m_exitCode);
    }
    if (isRunning()) {
        setConnected(false);
    }
    if (isRunning() && !m_death.isEmpty()) {
        reportFault(m_death + (m_lastError.isEmpty() ? "" : "; it wrote last: ") + m_lastError);
    }
}

void ProcessDevice::dismissChild()
{
    m_output = nullptr;
    m_errors = nullptr;
    if (m_child) {
        m_child.release()->deleteLater(); // It has called us, or one of its pumps.
    }
}

void ProcessDevice::restartAfter(int code)
{
    const bool wanted =
        m_restart == Restart::Always || (m_restart == Restart::OnFailure && code != 0);
    if (wanted && isRunning()) {
        m_restartTimer.start(m_delay.next(std::chrono::milliseconds(m_run.elapsed())));
    }
}

void ProcessDevice::onLine(const QByteArray& line)
{
    if (m_output->queue().hasLosses()) {
        m_losses.reportSoon();
    }
    if (isRunning()) {
        // With its length, otherwise the text ends at a zero byte.
        sendLine(QString::fromUtf8(line.constData(), line.size()));
    }
}

void ProcessDevice::onErrorLine(const QByteArray& line)
{
    if (!m_logSecond.isValid() || m_logSecond.hasExpired(1000)) {
        m_logSecond.start();
        m_loggedLines = 0;
    }
    const QString text = withoutControls(QString::fromUtf8(line.constData(), line.size()));
    if (!text.trimmed().isEmpty()) {
        m_lastError = text.left(kMaxErrorLength);
    }
    if (++m_loggedLines <= kLoggedLinesPerSecond) {
        qInfo().noquote().nospace() << objectName() << ": " << text;
    } else {
        m_losses.add(UnloggedLines);
    }
}

bool ProcessDevice::write(const QString& line)
{
    if (line.contains('\n') || line.contains('\r')) {
        m_losses.add(RefusedInputs);
    } else if (!m_output) {
        m_losses.add(LateInputs);
    } else if (!m_child->send(line.toUtf8() + '\n')) {
        m_losses.add(UnreadInputs);
    } else {
        return true;
    }
    return false;
}

void ProcessDevice::collectLosses()
{
    if (m_output) {
        m_losses.add(DroppedLines, m_output->queue().takeDropped());
        m_losses.add(CutLines, m_output->queue().takeCut());
        m_losses.add(UnloggedLines, m_errors->queue().takeDropped());
    }
}
