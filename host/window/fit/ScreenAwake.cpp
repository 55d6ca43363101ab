// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/ScreenAwake.h"

#include <QDebug>
#include <QProcess>
#include <QRegularExpression>

#include <optional>

namespace norvo {

namespace {

/// What it prints; nothing where it is not there, fails, or does not end.
std::optional<QString> runXset(const QStringList& options)
{
    constexpr int patienceMs = 5000;
    QProcess xset;
    xset.start("xset", options, QIODevice::ReadOnly);
    if (!xset.waitForFinished(patienceMs) || xset.exitStatus() != QProcess::NormalExit ||
        xset.exitCode() != 0) {
        return std::nullopt;
    }
    return QString::fromLocal8Bit(xset.readAllStandardOutput());
}

} // namespace

ScreenAwake::ScreenAwake(const QString& display)
    : m_server(display.isEmpty() ? QStringList() : QStringList{"-display", display})
{
    const auto state = runXset(m_server + QStringList("q"));
    if (!state) {
        qWarning("the screen may go blank: the program xset, which keeps it on, does not run");
        return;
    }
    static const QRegularExpression timeouts("timeout:\\s*(\\d+)\\s+cycle:\\s*(\\d+)");
    const auto found = timeouts.match(*state);
    QStringList off;
    if (found.hasMatch() && found.captured(1) != "0") {
        off << "s"
            << "off";
        m_restore << "s" << found.captured(1) << found.captured(2);
    }
    if (state->contains("DPMS is Enabled")) {
        off << "-dpms";
        m_restore << "+dpms";
    }
    if (!off.isEmpty()) {
        runXset(m_server + off);
    }
}

ScreenAwake::~ScreenAwake()
{
    if (!m_restore.isEmpty()) {
        runXset(m_server + m_restore);
    }
}

} // namespace norvo
