// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/AlarmSetting.h"

#include <QString>

namespace norvo {

/// A moment on both clocks: spans are measured on the one that never jumps, and what is shown and
/// kept is the time of day. In milliseconds, the latter since 1970.
struct AlarmMoment
{
    qint64 steady = 0;
    qint64 wall = 0;
};

enum class AlarmState {
    Normal,
    ActiveUnacknowledged,
    ActiveAcknowledged,
    ClearedUnacknowledged ///< It came and went, and nobody has said that he knows.
};

/// What an alarm is, before it has ever begun.
struct AlarmDefinition
{
    QString id;     ///< Unique, and the same from one run to the next.
    QString device; ///< That it is about.
    QString text;
    QString help = {};
    AlarmPriority priority = AlarmPriority::Medium;
    Duration delay{0};
    Duration offDelay{0};
    bool hasSound = true;
};

/// An alarm as it stands.
struct Alarm
{
    AlarmDefinition definition;
    AlarmState state = AlarmState::Normal;
    QString detail;            ///< What has been said with it, such as the value; may be empty.
    AlarmMoment since;         ///< When it last began.
    AlarmMoment shelvedUntil;  ///< Steady 0: it is not shelved.
    int burst = 0;             ///< The same number: they began within a second of each other.
    bool isFirst = false;      ///< It began when all was quiet.
    bool isFromBefore = false; ///< As it was when the panel last ran; nothing was heard since.

    bool isActive() const
    {
        return state == AlarmState::ActiveUnacknowledged || state == AlarmState::ActiveAcknowledged;
    }
    bool isUnacknowledged() const
    {
        return state == AlarmState::ActiveUnacknowledged ||
               state == AlarmState::ClearedUnacknowledged;
    }
    bool isShelved() const { return shelvedUntil.steady > 0; }
    /// Whether the operator is to see it.
    bool isShown() const { return state != AlarmState::Normal && !isShelved(); }
};

/// Something that happened to an alarm.
struct AlarmEvent
{
    enum class Kind { Began, Ended, Acknowledged, Shelved, Unshelved };

    Kind kind = Kind::Began;
    AlarmMoment when;
    const Alarm& alarm; ///< As it stands after it.
};

} // namespace norvo
