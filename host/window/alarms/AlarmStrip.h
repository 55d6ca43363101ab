// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QWidget>

class QPushButton;

namespace norvo {

class AlarmBar;
class AlarmService;

/// The part of the window's strip that tells of alarms: the worst of them, a key that silences the
/// bell while it is heard, and the key to the list with the count. Hidden while all is quiet.
class AlarmStrip : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kBellMs = 2000; ///< From one stroke of the bell to the next.

    explicit AlarmStrip(AlarmService& service);

    void takeFocus(); ///< Gives the bar the focus, or opens the list where all is quiet.

signals:
    void listRequested();

private:
    void refresh();
    void tellBegun();

    AlarmService& m_service;
    AlarmBar* m_bar;
    QPushButton* m_silence;
    QPushButton* m_list;
    QTimer m_bell;
};

} // namespace norvo
