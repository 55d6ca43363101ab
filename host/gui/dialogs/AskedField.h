// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QRect>
#include <QString>
#include <QWidget>

namespace norvo {

/// The field on the panel for which a dialog opens: what has the focus when this is made.
class AskedField
{
public:
    AskedField();

    /// Its name and unit, "Speed, rpm", as its device's parameters give them; its accessible name
    /// where it belongs to no device. Empty without a field.
    QString caption() const;
    QRect screenArea() const; ///< What the screen has for windows.
    /// A place of that size beside it, or of `least` where only that has room, inside the screen;
    /// otherwise, and without a field, the middle of the screen, at most as large as that.
    /// It is nowhere smaller than `least`, unless the screen is.
    QRect placeBeside(const QSize& preferred, const QSize& least) const;
    /// What goes when the panel stops: its device's widget, or the field itself. May be null.
    QWidget* owner() const;
    /// The window on the screen that the field is seen in. Null without a field.
    QWidget* window() const;

private:
    QPointer<QWidget> m_field;
};

} // namespace norvo
