// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <optional>

class QDateTime;
class QString;

namespace norvo {

struct Options;

/// Milliseconds since the epoch of an ISO 8601 time, local where it has no zone, or of a time ago
/// such as "1 h"; none for any other text.
std::optional<qint64> toMoment(const QString& text, const QDateTime& now);

/// Writes what the panel's history holds as a table, also while the panel runs: signal by signal,
/// each in the order of time. Returns the exit status.
int exportHistory(const Options& options);

} // namespace norvo
