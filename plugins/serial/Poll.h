// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace norvo {

/// Ask and answer: asks from time to time, and no second time before the answer has come or is
/// overdue.
class Poll : public QObject
{
    Q_OBJECT

public:
    using Milliseconds = std::chrono::milliseconds;

    /// `timeout`: an answer that has not come by then is missing.
    Poll(Milliseconds every, Milliseconds timeout);

    /// Tells whether something has come that has not been looked at: this thread may be late, not
    /// the answer.
    void setUnreadQuery(std::function<bool()> hasUnread) { m_hasUnread = std::move(hasUnread); }

    bool isActive() const { return m_timer.isActive(); }
    void start(); ///< Asks at once.
    void stop();
    void noteAnswer(); ///< Without a question open: does nothing.

signals:
    void ask();
    void missed(int inARow);

private:
    void onTimer();
    void waitForNext();

    Milliseconds m_every;
    Milliseconds m_timeout;
    std::function<bool()> m_hasUnread = [] { return false; };
    QTimer m_timer;
    QElapsedTimer m_sinceAsked;
    bool m_isOpen = false; ///< Asked, and not answered.
    bool m_isExtended = false;
    int m_missed = 0; ///< In a row.
};

} // namespace norvo
