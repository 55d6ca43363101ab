// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/AccessSetting.h"

#include <QMap>
#include <QObject>

#include <functional>

namespace norvo {

/// Counts wrong PINs, for each role by itself, and says how long each role's PIN must wait for the
/// next try: nothing after two, then 1 s, 2 s, 4 s and so on, up to 5 min.
///
/// The counts stand in a file, and no time does: a new start waits in full, and a clock that jumps
/// neither shortens nor prolongs a wait.
class PinAttempts : public QObject
{
    Q_OBJECT

public:
    using Clock = std::function<qint64()>; ///< Milliseconds that never go back.

    static constexpr int kFreeTries = 2;
    static constexpr qint64 kMaxWaitMs = 5LL * 60 * 1000;

    /// Without a file name the counts are forgotten at the end.
    explicit PinAttempts(const QString& fileName, Clock clock = {});

    /// What an earlier run has left; a file that cannot be understood costs the longest wait.
    void read();
    qint64 waitMs(Role role) const; ///< From now; 0: its PIN may be tried.
    /// Counts a wrong PIN, on disk when this returns; to be called before the PIN is looked at, so
    /// that killing the program does not save a try.
    void count(const QList<Role>& roles);
    void forget(Role upTo); ///< The right PIN of that role was given.

    static qint64 waitAfter(int wrongPins);

signals:
    void problem(QString line); ///< The file cannot be written; told once.

private:
    struct Count
    {
        int wrong = 0;
        qint64 last = 0; ///< By the clock, of the last wrong one or of the start.
    };

    void write();

    const QString m_fileName; ///< Absolute; empty: none.
    const Clock m_clock;
    QMap<Role, Count> m_counts;
    bool m_isProblemTold = false;
};

} // namespace norvo
