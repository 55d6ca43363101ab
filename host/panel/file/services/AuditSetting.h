// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace norvo {

/// Where a panel records what is done at it.
struct AuditSetting
{
    static constexpr qint64 kMinBytes = 1000;
    static constexpr qint64 kMaxBytes = 1000LL * 1000 * 1000;
    static constexpr int kMaxKept = 1000;

    QString file;                         ///< Relative to the panel's folder; empty: nowhere.
    qint64 maxBytes = 10LL * 1000 * 1000; ///< Of one file.
    int kept = 5;                         ///< Older files.
};

} // namespace norvo
