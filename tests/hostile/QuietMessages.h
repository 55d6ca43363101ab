// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QtGlobal>

#include <cstdio>

/// Devices say much about what they are given here: only what tells of a fault of ours is shown.
inline void quietMessages()
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg || type == QtInfoMsg || text.startsWith("QObject::connect")) {
            std::fprintf(stderr, "%s\n", qPrintable(text));
        }
    });
}
