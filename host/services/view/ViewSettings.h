// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace norvo {

/// Where a running panel can be looked at from afar, and by whom.
struct ViewSettings
{
    QString address = QStringLiteral("127.0.0.1"); ///< That is listened at, as a number.
    quint16 port = 0;                              ///< 0: any that is free.
    QByteArray token; ///< What a viewer must know; empty: nothing, which loopback alone allows.
    QString certificateFile; ///< PEM, with what leads to its root; empty: without TLS.
    QString keyFile;         ///< PEM; of the certificate.
    int maxViewers = 4;      ///< Who look at the same time.
};

} // namespace norvo
