// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/streams/QtMessages.h"

#include "host/program/streams/Console.h"
#include "host/program/streams/MessageFilter.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <atomic>
#include <mutex>

namespace norvo {

namespace {

constexpr int kMaxLength = 4000; ///< Characters; a message may hold a value of any length.

bool s_isVerbose = false;
std::atomic<bool> s_awaitsDue = false;
std::mutex s_mutex; ///< Of the filter: messages come from any thread.

/// Never destroyed, because messages come to the very end.
MessageFilter& filter()
{
    static auto* const made = new MessageFilter;
    return *made;
}

qint64 nowMs()
{
    return QDeadlineTimer::current().deadline();
}

void write(const QStringList& lines)
{
    for (const QString& line : lines) {
        Console::report(line);
    }
}

void writeDue()
{
    s_awaitsDue = false;
    const std::lock_guard<std::mutex> lock(s_mutex);
    write(filter().due(nowMs()));
}

/// What stays counted after the last of a row of messages is written in the application's thread.
void writeDueLater()
{
    if (qApp && !s_awaitsDue.exchange(true)) {
        QMetaObject::invokeMethod(
            qApp, [] { QTimer::singleShot(MessageFilter::kIntervalMs, qApp, writeDue); },
            Qt::QueuedConnection);
    }
}

/// True, and of no help to a user.
bool isDetail(QtMsgType type, const QString& message)
{
    return type == QtDebugMsg || message.startsWith("This plugin does not support ") ||
           message.startsWith("QStandardPaths: XDG_RUNTIME_DIR not set");
}

void receive(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!s_isVerbose && isDetail(type, message)) {
        return;
    }
    QString text = qFormatLogMessage(type, context, message);
    if (text.size() > kMaxLength) {
        text = text.left(kMaxLength) + "...";
    }
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        writeDueLater();
        const std::lock_guard<std::mutex> lock(s_mutex);
        write(filter().take(text, nowMs()));
    } else {
        Console::report(text);
    }
    if (type == QtFatalMsg) {
        Console::finish(); // The process ends as soon as this returns.
    }
}

} // namespace

QtMessages::QtMessages(bool isVerbose)
{
    s_isVerbose = isVerbose;
    qInstallMessageHandler(receive);
}

QtMessages::~QtMessages()
{
    const std::lock_guard<std::mutex> lock(s_mutex);
    write(filter().dueAtTheEnd());
}

} // namespace norvo
