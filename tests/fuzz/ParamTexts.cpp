// SPDX-License-Identifier: GPL-3.0-or-later

#include "Harness.h"
#include "host/panel/file/services/Duration.h"
#include "host/panel/plan/Placement.h"
#include "norvo/Param.h"
#include "norvo/Readings.h"
#include "plugins/common/Duration.h"

#include <cmath>

using norvo::require;

/// Texts of parameters read as what they are, the same way everywhere.
NORVO_HARNESS(ParamTexts)
{
    const QString text = QString::fromUtf8(input);
    Param param("a", "1", {}, true, {});
    param.setValue(text);
    const auto number = norvo::readDouble(text);
    require(number.has_value() == param.fault().isEmpty(), "a number is what reads as one");
    require(!number || std::isnan(*number) || double(param) == *number, "it has one value");
    require(!number || !(std::abs(*number) < 1e9) || std::abs(int(param) - *number) < 1,
            "as a whole number it is cut");
    require(bool(param) == norvo::readBool(text).value_or(false), "yes is what reads as yes");
    if (number && std::isfinite(*number)) {
        require(norvo::readDouble(norvo::numberText(*number)) == number,
                "a number is written so that it reads as itself");
    }
    const auto duration = norvo::toDuration(text);
    require(!duration || (duration->count() >= 0 && *duration <= norvo::kMaxDuration),
            "a time has its bounds");
    const auto time = norvo::readDuration(text);
    require(!time || (time->count() >= 1 && *time <= std::chrono::hours(24)), "so has a short one");
    const auto cells = norvo::readCells([&](const QString&) { return text; });
    require(cells.row >= -1 && cells.row <= norvo::Cells::kLimit && cells.rowspan >= 1 &&
                cells.rowspan <= norvo::Cells::kLimit,
            "cells have their bounds");
    const bool isRow = norvo::placementError("widget/row", text).isEmpty();
    require(isRow || cells.row == -1, "a row with an error is the next free one");
}
