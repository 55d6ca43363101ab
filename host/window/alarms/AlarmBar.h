// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/alarms/AlarmLines.h"

#include <QAbstractButton>
#include <QTimer>

namespace norvo {

class AlarmService;

/// The worst alarm in one line: sign, priority, time and text, and how many more there are. A tap,
/// or the space bar, acknowledges it; held for kHoldMs, all that are shown. Where nothing waits to
/// be acknowledged, a tap asks for the list.
class AlarmBar : public QAbstractButton
{
    Q_OBJECT

public:
    static constexpr int kHoldMs = 700;
    static constexpr int kBlinkMs = 500; ///< On, and off: once a second.

    explicit AlarmBar(AlarmService& service);

    QString line() const;       ///< What it says, without the count.
    const Alarm* worst() const; ///< That it tells of; null: none is shown.
    QSize sizeHint() const override;

signals:
    void listRequested();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    void tap();
    void acknowledgeAll();

    AlarmService& m_service;
    QVector<AlarmLine> m_lines;
    QTimer m_blink;
    QTimer m_hold;
    bool m_isLit = true;
    bool m_wasHeld = false;
};

} // namespace norvo
