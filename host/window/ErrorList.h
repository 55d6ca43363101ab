// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/Diagnostics.h"

#include <QTextEdit>

namespace norvo {

/// What is wrong with a panel, each with its place, as text that can be selected and copied.
class ErrorList : public QTextEdit
{
    Q_OBJECT

public:
    explicit ErrorList(const DiagnosticList& diagnostics);
};

} // namespace norvo
