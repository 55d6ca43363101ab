// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace norvo {

class SourceWatch;
class ValueTable;

/// All values and sources of a panel as one JSON object, with the field names that docs/view.md
/// gives.
QByteArray valuesJson(const QString& title, const ValueTable& values, const SourceWatch& sources);

} // namespace norvo
