// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/AccessSetting.h"

#include <QPushButton>

namespace norvo {

/// The key in the strip that locks and unlocks the panel: a padlock, and who may operate it now.
class LockKey : public QPushButton
{
    Q_OBJECT

public:
    LockKey();

    void setRole(Role role);
    static QString nameOf(Role role); ///< For the operator, in his language.

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Role m_role = Role::View;
};

} // namespace norvo
