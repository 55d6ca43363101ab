// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/alarms/AlarmSound.h"

#include <QTimer>
#include <QWidget>

class QPushButton;

namespace norvo {

class AlarmBar;
class AlarmService;

/// The part of the window's strip that tells of alarms: the worst of them, a key to what helps
/// against it, one that silences the sound, and the key to the list with the count. Hidden while
/// all is quiet.
class AlarmStrip : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kSoundMs = 2000; ///< From one sound to the next.

    /// `soundProgram` plays the tones; see AlarmSound.
    explicit AlarmStrip(AlarmService& service,
                        const QString& soundProgram = AlarmSound::besideThisProgram());

    /// Gives the bar the focus; opens the list where it has it, or all is quiet.
    void takeFocus();

signals:
    void listRequested();

private:
    void refresh();
    void followSound();
    void sound();
    void showHelp();
    void tellBegun();

    AlarmService& m_service;
    AlarmBar* m_bar;
    QPushButton* m_help;
    QPushButton* m_silence;
    QPushButton* m_list;
    AlarmSound m_sound;
    QTimer m_nextSound;
};

} // namespace norvo
