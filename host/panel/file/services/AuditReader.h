// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/ReadContext.h"
#include "host/panel/file/services/AuditSetting.h"

namespace norvo {

/// Reads the key "audit": the name of a file, or a map of file, size and keep.
void readAudit(const YamlEntry& entry, const ReadContext& context, AuditSetting& audit);

/// The pattern of a size such as "10 MB" for a JSON schema.
QString auditSizePattern();

} // namespace norvo
