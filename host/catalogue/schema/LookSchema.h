// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QJsonObject;

namespace norvo {

/// Adds the keys of a panel that say how it is shown, as a JSON schema describes them.
void addLookKeys(QJsonObject& keys);
void addAccessKey(QJsonObject& keys); ///< The same of who may operate it.
/// Adds those of what runs beside it.
void addServiceKeys(QJsonObject& keys);

} // namespace norvo
