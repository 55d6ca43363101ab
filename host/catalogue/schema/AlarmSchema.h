// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QJsonObject;

namespace norvo {

/// The list of alarms of a panel or a template, as a JSON schema describes it. A text that matches
/// `placeholder` may stand for each value.
QJsonObject alarmSchema(const QString& placeholder);

} // namespace norvo
