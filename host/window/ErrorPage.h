// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/Diagnostics.h"

#include <QWidget>

namespace norvo {

/// What a panel that cannot start shows instead of itself: every error with its place, as text that
/// can be selected and copied.
class ErrorPage : public QWidget
{
    Q_OBJECT

public:
    explicit ErrorPage(const Diagnostics& diagnostics, QWidget* parent = nullptr);
};

} // namespace norvo
