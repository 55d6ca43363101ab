// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace norvo {

/// Gathers what the thread writes as critical while it lives; it is written all the same. At most
/// one in the process.
class CriticalMessages
{
public:
    CriticalMessages();
    ~CriticalMessages();
    Q_DISABLE_COPY_MOVE(CriticalMessages)

    const QStringList& texts() const { return m_texts; }

private:
    static void receive(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QStringList m_texts;
};

} // namespace norvo
