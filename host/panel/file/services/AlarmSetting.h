// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/Duration.h"
#include "host/yaml/Place.h"

#include <QString>

namespace norvo {

/// In rising order.
enum class AlarmPriority { Low, Medium, High };

/// When the value of a signal is an alarm.
struct AlarmLimit
{
    enum class Kind {
        Above,  ///< The number.
        Below,  ///< The number.
        Equals, ///< The number where the limit reads as one and the value is one; else the text.
        Is      ///< Yes or no.
    };

    Kind kind = Kind::Above;
    QString text;        ///< As written.
    double number = 0;   ///< NaN where the text is no number.
    bool isYes = false;  ///< For Is.
    double deadband = 0; ///< By how much a number must come back; for Above and Below.
};

/// One entry of the key "alarms" of a panel file.
struct AlarmSetting
{
    QString id;     ///< Of this alarm from one run to the next: "boiler.output above 80".
    QString device; ///< The id.
    Place devicePlace;
    QString signal; ///< A name or a full signature.
    Place signalPlace;
    AlarmLimit limit;
    Place limitPlace;
    Duration delay{0};    ///< The limit must be passed for so long before the alarm begins.
    Duration offDelay{0}; ///< And must be kept for so long before it ends.
    AlarmPriority priority = AlarmPriority::Medium;
    QString text; ///< Never empty: without one it is the id.
    QString help; ///< What is to be done; may be empty.
    bool hasSound = true;
};

} // namespace norvo
