// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace norvo {

/// Turns SIGINT, SIGTERM and SIGHUP into a Qt signal for as long as it lives; at most one at a
/// time.
///
/// A second SIGINT or SIGTERM ends the process where it is, with the exit status 128 and its
/// number, even if no event is handled any more. Where it follows within kDoubledMs, it may be the
/// first one, which timeout(1) and others send twice: the process then has two seconds to end by
/// itself.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    static constexpr int kDoubledMs = 300; ///< A busy machine may lie between the two.

    explicit UnixSignals(QObject* parent = nullptr);
    ~UnixSignals() override; ///< The signals end the process again.

    /// Once stopRequested() was emitted.
    bool isStopRequested() const { return m_isStopRequested; }

signals:
    void stopRequested();

private:
    void drain();

    std::unique_ptr<QSocketNotifier> m_notifier;
    bool m_isStopRequested = false;
};

} // namespace norvo
