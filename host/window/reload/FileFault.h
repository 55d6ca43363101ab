// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/Diagnostics.h"

#include <QPushButton>

namespace norvo {

/// The key of the strip that says that the panel's file has an error, so that what runs is not what
/// it says. Hidden while it has none. Opens the list of all; F5 reads the file again.
class FileFault : public QPushButton
{
    Q_OBJECT

public:
    FileFault();

    void show(const DiagnosticList& diagnostics); ///< Hides where none is an error.

    QSize sizeHint() const override; ///< It takes what the strip leaves.
    QSize minimumSizeHint() const override;

signals:
    void readAgainRequested();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void openList();

    DiagnosticList m_diagnostics;
};

} // namespace norvo
