// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace norvo {

/// A control as Qt shows it to screen readers, but for what changes it: that is done as a hand does
/// it, so that a lock refuses it and a question is asked first.
class GuardedControl : public QAccessibleInterface,
                       public QAccessibleActionInterface,
                       public QAccessibleValueInterface,
                       public QAccessibleEditableTextInterface
{
public:
    /// Null where the widget is of no kind that anything can be done to, or Qt shows nothing of it.
    static QAccessibleInterface* make(QWidget& widget);
    ~GuardedControl() override;

    bool isValid() const override;
    QObject* object() const override;
    QVector<QPair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override;
    QAccessibleInterface* focusChild() const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    int childCount() const override; ///< 0 for a scene that is locked or asked for.
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString& text) override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QColor foregroundColor() const override;
    QColor backgroundColor() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    QString localizedActionDescription(const QString& name) const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& name) const override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

    void deleteText(int start, int end) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int start, int end, const QString& text) override;

private:
    GuardedControl(QWidget& widget, QAccessibleInterface& plain);

    void attempt(const QString& value, std::function<void(QAccessibleInterface&)> change);

    const QPointer<QWidget> m_widget;
    const QAccessible::Id m_plainId; ///< What Qt makes of the widget.
    QAccessibleInterface& m_plain;
};

} // namespace norvo
