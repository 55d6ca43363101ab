// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <cstdio>
#include <functional>

/// Catches what is written to Qt's message log while it lives, each as "debug: text" and so on.
/// Only one can live at a time.
class MessageLog
{
public:
    explicit MessageLog(std::function<void()> onMessage = {})
    {
        Q_ASSERT(!s_current);
        s_current = this;
        m_onMessage = std::move(onMessage);
        m_previous = qInstallMessageHandler(&MessageLog::receive);
    }
    ~MessageLog()
    {
        qInstallMessageHandler(m_previous);
        s_current = nullptr;
    }
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    /// What was written since the last call.
    QStringList take()
    {
        QStringList messages;
        messages.swap(m_messages);
        return messages;
    }

private:
    static void receive(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        static const char* const names[] = {"debug", "warning", "critical", "fatal", "info"};
        QString line = QString("%1: %2").arg(names[type], text);
        if (context.file || context.function || context.line) {
            line += " (with a source place)";
        }
        if (qstrcmp(context.category, "default") != 0) {
            line += QString(" (category %1)").arg(context.category);
        }
        if (type == QtFatalMsg) { // The last one: nobody can take it any more.
            fprintf(stderr, "%s\n", qPrintable(line));
        }
        s_current->m_messages.append(line);
        if (s_current->m_onMessage) {
            s_current->m_onMessage();
        }
    }

    static inline MessageLog* s_current = nullptr;
    QtMessageHandler m_previous = nullptr;
    std::function<void()> m_onMessage;
    QStringList m_messages;
};
