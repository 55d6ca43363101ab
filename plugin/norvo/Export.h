// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QtGlobal>

/// Marks what the two host libraries export; everything else in them is hidden.
#define NORVO_EXPORT Q_DECL_EXPORT
#define NORVOGUI_EXPORT Q_DECL_EXPORT
