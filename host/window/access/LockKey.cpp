// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/LockKey.h"

#include "host/window/access/LockMark.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace norvo {

namespace {

constexpr int kSymbol = 22; // pixels
constexpr int kGap = 10;

} // namespace

LockKey::LockKey()
{
    setObjectName("lockKey");
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setShortcut(Qt::CTRL + Qt::Key_L);
    setRole(Role::View);
}

QString LockKey::nameOf(Role role)
{
    switch (role) {
    case Role::Operate:
        return tr("Operator");
    case Role::Engineer:
        return tr("Engineer");
    case Role::View:
        break;
    }
    return tr("Locked");
}

void LockKey::setRole(Role role)
{
    m_role = role;
    setAccessibleName(role == Role::View ? tr("Locked. Unlock") : tr("%1. Lock").arg(nameOf(role)));
    setToolTip(accessibleName());
    updateGeometry();
    update();
}

/// The same for all roles: nothing beside it moves.
QSize LockKey::sizeHint() const
{
    int text = 0;
    for (const Role role : {Role::View, Role::Operate, Role::Engineer}) {
        text = qMax(text, fontMetrics().horizontalAdvance(nameOf(role)));
    }
    return {text + kSymbol + 3 * kGap, QPushButton::sizeHint().height()};
}

void LockKey::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    const QColor colour = palette().color(QPalette::ButtonText);
    LockMark::paintLock(painter, QRectF(kGap, (height() - kSymbol) / 2., kSymbol, kSymbol), colour,
                        m_role == Role::View);
    painter.setPen(colour);
    painter.drawText(rect().adjusted(2 * kGap + kSymbol, 0, -kGap, 0), Qt::AlignVCenter,
                     nameOf(m_role));
}

} // namespace norvo
