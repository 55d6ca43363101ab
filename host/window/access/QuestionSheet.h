// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/sheet/Sheet.h"

#include <QTimer>

class QLabel;

namespace norvo {

/// Asks an operator whether he means what he is about to do. No is what Enter, Escape and 30 s
/// without an answer say; Yes is to be chosen, and not within the first half second, as the second
/// tap of a hurried hand comes then.
///
/// accepted() is Yes. The parts can be found by their object names: "value", "yes", "no".
class QuestionSheet : public Sheet
{
    Q_OBJECT

public:
    static constexpr int kTimeoutSeconds = 30;
    static constexpr int kPauseMs = 500;

    /// `what` says what would be done: the name of the device, and the value.
    QuestionSheet(QWidget& opener, const QString& question, const QString& what);

    void setSecondsLeft(int seconds);

private:
    void countDown();

    QPushButton* m_yes;
    QTimer m_second;
    int m_secondsLeft = kTimeoutSeconds;
};

} // namespace norvo
