// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTabWidget>

namespace norvo {

class EditSession;

/// What concerns a panel as a whole: its own settings, and beside them its pages.
class PanelPane : public QTabWidget
{
    Q_OBJECT

public:
    PanelPane(EditSession& session, QWidget* parent);

signals:
    void problem(const QString& text);
};

} // namespace norvo
