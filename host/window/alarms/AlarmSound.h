// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/AlarmSetting.h"

#include <QProcess>
#include <QTimer>

#include <functional>
#include <memory>

namespace norvo {

/// Sounds alarms: by a program beside this one, which knows the machine's audio and is started by
/// the first tone; by the bell where it is missing, can play nothing or does not answer. Neither
/// makes anybody wait.
class AlarmSound : public QObject
{
    Q_OBJECT

public:
    using Bell = std::function<void()>;

    static constexpr int kPatienceMs = 1500; ///< Within which a tone is heard, or it is the bell.

    static QString besideThisProgram(); ///< The program that plays the tones.

    AlarmSound(const QString& program, Bell bell);
    ~AlarmSound() override;

    void play(AlarmPriority priority); ///< Once; under a second.
    void end(); ///< There is nothing more to play. What failed is tried again the next time.

private:
    void start();
    void fail();

    const QString m_program;
    const Bell m_bell;
    std::unique_ptr<QProcess> m_player;
    QTimer m_answer;
    bool m_isUnanswered = false; ///< Since the last tone.
    bool m_hasFailed = false;
};

} // namespace norvo
