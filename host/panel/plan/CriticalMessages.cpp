// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/CriticalMessages.h"

#include <QtGlobal>

#include <atomic>

namespace norvo {

namespace {

// Other threads write through the handler, too.
std::atomic<QtMessageHandler> s_before = nullptr;
thread_local QStringList* s_texts = nullptr;

} // namespace

CriticalMessages::CriticalMessages()
{
    s_texts = &m_texts;
    s_before = qInstallMessageHandler(nullptr);
    qInstallMessageHandler(receive);
}

CriticalMessages::~CriticalMessages()
{
    qInstallMessageHandler(s_before);
    s_texts = nullptr;
}

void CriticalMessages::receive(QtMsgType type, const QMessageLogContext& context,
                               const QString& text)
{
    if (type == QtCriticalMsg && s_texts) {
        s_texts->append(text);
    }
    s_before.load()(type, context, text);
}

} // namespace norvo
