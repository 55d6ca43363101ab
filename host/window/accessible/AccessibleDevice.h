// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessibleWidget>
#include <QCoreApplication>

class BaseWidget;

namespace norvo {

/// A device's widget as screen readers see it: its caption or else its id, what it is made of, and
/// what it shows now.
class AccessibleDevice : public QAccessibleWidget
{
    Q_DECLARE_TR_FUNCTIONS(AccessibleDevice)

public:
    explicit AccessibleDevice(BaseWidget* widget);

    static QString nameOf(const BaseWidget& widget);
    /// Whether it is a control that does not show its own name, such as a slider or a picture.
    static bool isNameless(const QWidget& part);

    QAccessible::Role role() const override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;

private:
    const BaseWidget& m_device;
};

} // namespace norvo
