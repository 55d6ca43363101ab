// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PanelProcess.h"

#include "tests/fixtures/probes/CounterRecord.h"

#include <QRegularExpression>

/// The options that make the probes known.
inline QStringList probes(const QStringList& more)
{
    return QStringList{"--plugins", fixture("probes")} + more;
}

/// A panel with a counter in it, and what the counter has counted and saved.
class CountingFolder : public PanelFolder
{
public:
    CountingFolder() : PanelFolder("")
    {
        fill("panel.yaml", "devices:\n"
                           "  counter: {device: counter, params: {log: '" +
                               filePath("log").toUtf8() + "'}}\n");
    }

    /// Adds lines to the panel's devices.
    void add(const QByteArray& devices) const
    {
        fill("panel.yaml", content("panel.yaml") + devices);
    }

    int counted() const { return readLastRecord(filePath("log")).count; }

    /// The count in the state file; -1 where there is none.
    int saved(const QString& name = "panel.state.yaml") const
    {
        const QString text = QString::fromUtf8(content(name));
        const auto match = QRegularExpression("\"count\": \"(\\d+)\"").match(text);
        return match.hasMatch() ? match.captured(1).toInt() : -1;
    }
};
