// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/Duration.h"
#include "host/yaml/Place.h"

#include <QString>
#include <QVector>

#include <optional>

namespace norvo {

/// A signal that is recorded.
struct HistorySignal
{
    QString device; ///< The id.
    Place devicePlace;
    QString signal; ///< A name or a full signature.
    Place signalPlace;
    std::optional<double> deadband =
        {};            ///< Changes by no more are left out; none: all are recorded.
    Duration every{0}; ///< The least time from one recorded value to the next.

    /// What the history calls it: "device.signal", without types.
    QString name() const { return device + '.' + signal.section('(', 0, 0).trimmed(); }
};

/// The key "history" of a panel file.
struct HistorySetting
{
    static constexpr qint64 kMinBytes = 1000LL * 1000;
    static constexpr qint64 kMaxBytes = 1000LL * 1000 * 1000 * 1000;

    bool isGiven = false;
    QString file; ///< Relative to the panel's folder; empty: beside it.
    Duration keep = std::chrono::hours(30 * 24); ///< Older values are removed.
    qint64 maxBytes = 500LL * 1000 * 1000;       ///< Of the file.
    QVector<HistorySignal> recorded;             ///< In the order of the file.

    /// The file that belongs to a panel: panel.yaml has panel.history.sqlite beside it.
    static QString besidePanel(const QString& panelFile);
};

} // namespace norvo
