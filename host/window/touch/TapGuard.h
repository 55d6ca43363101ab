// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QAbstractButton;
class QCoreApplication;
class QMouseEvent;

namespace norvo {

/// Makes one tap of two that follow each other at once on a button of a device that stays down, or
/// on its check box: a hand that bounces must not switch a pump on and off again. Keys of dialogs,
/// and buttons that spring back, take every tap.
///
/// Works on all widgets of the application for as long as it lives.
class TapGuard : public QObject
{
    Q_OBJECT

public:
    using Clock = std::function<qint64()>; ///< Milliseconds that only grow.

    static constexpr qint64 kPauseMs = 300; ///< From the end of a tap until another one counts.

    explicit TapGuard(QCoreApplication& application, Clock clock = {});

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool press(QAbstractButton& button);
    bool release(const QMouseEvent& event);

    Clock m_clock;
    QPointer<QAbstractButton> m_button; ///< The last that was tapped.
    qint64 m_endOfTap = 0;
    bool m_isSwallowing = false; ///< From the press of a tap that does not count to its release.
};

} // namespace norvo
