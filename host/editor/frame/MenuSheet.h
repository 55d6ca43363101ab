// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/sheet/Sheet.h"

#include <QList>
#include <QPair>

class QAction;

namespace norvo {

/// All that can be done, in groups with a title: a large key for each action, with its own key of
/// the keyboard. What cannot be done now is disabled. A tap closes the sheet and does it.
class MenuSheet : public Sheet
{
    Q_OBJECT

public:
    using Group = QPair<QString, QList<QAction*>>;

    MenuSheet(QWidget& opener, const QList<Group>& groups);
};

} // namespace norvo
