// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <limits>

namespace norvo {

/// Lets a message through when it is new, and counts those that follow, so that a warning that
/// comes with each value does not bury the others. Messages that differ in numbers alone, but for
/// places like ":12:3", are the same one.
///
/// Times are those of a clock that never goes back.
class MessageFilter
{
public:
    static constexpr qint64 kIntervalMs = 10000; ///< Between the lines on one message, at least.
    static constexpr int kMaxKinds = 100;        ///< Further messages are counted together.

    /// The lines to be written now that the message has come.
    QStringList take(const QString& message, qint64 nowMs);
    /// "message (12 more times)" for each whose interval is over. One that did not come again in
    /// its interval is new the next time.
    QStringList due(qint64 nowMs);
    QStringList dueAtTheEnd() { return due(std::numeric_limits<qint64>::max()); }

private:
    struct Kind
    {
        QString latest;
        qint64 reportedMs = 0;
        int count = 0; ///< Since then.
    };

    QMap<QString, Kind> m_kinds;
    Kind m_others;
};

} // namespace norvo
