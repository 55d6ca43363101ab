// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QCoreApplication;

namespace norvo {

/// Keeps the context menus of fields and texts (Undo, Cut, Paste) from opening, in all widgets of
/// the application for as long as it lives.
class MenuGuard : public QObject
{
    Q_OBJECT

public:
    explicit MenuGuard(QCoreApplication& application);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace norvo
