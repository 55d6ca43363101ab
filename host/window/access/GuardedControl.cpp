// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/GuardedControl.h"

#include "host/window/access/AccessFace.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScopedValueRollback>

#include <utility>

namespace norvo {

namespace {

bool isScene(const QWidget& widget)
{
    return widget.inherits("QQuickWidget");
}

bool isOfKind(const QWidget& widget)
{
    return qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QAbstractSlider*>(&widget) ||
           qobject_cast<const QAbstractSpinBox*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           isScene(widget);
}

/// What a button would be after it was pressed.
Intent intentOf(QWidget& widget, const QString& value, std::function<void()> perform)
{
    auto* const button = qobject_cast<QAbstractButton*>(&widget);
    return button ? Intents::click(*button) : Intent{value, std::move(perform)};
}

} // namespace

QAccessibleInterface* GuardedControl::make(QWidget& widget)
{
    static const QWidget* s_made = nullptr;
    if (s_made == &widget || !isOfKind(widget)) {
        return nullptr;
    }
    const QScopedValueRollback<const QWidget*> making(s_made, &widget); // Qt makes its own.
    QAccessibleInterface* const plain = QAccessible::queryAccessibleInterface(&widget);
    return plain ? new GuardedControl(widget, *plain) : nullptr;
}

GuardedControl::GuardedControl(QWidget& widget, QAccessibleInterface& plain)
    : m_widget(&widget), m_plainId(QAccessible::uniqueId(&plain)), m_plain(plain)
{}

/// At the end of the program Qt deletes both, in any order.
GuardedControl::~GuardedControl()
{
    if (QAccessible::accessibleInterface(m_plainId) == &m_plain) {
        QAccessible::deleteAccessibleInterface(m_plainId);
    }
}

void GuardedControl::attempt(const QString& value,
                             std::function<void(QAccessibleInterface&)> change)
{
    if (!m_widget) {
        return;
    }
    const QPointer<QWidget> guard(m_widget);
    QAccessibleInterface* const plain = &m_plain; // It lives as long as the widget.
    AccessFace::attempt(*m_widget,
                        intentOf(*m_widget, value, [guard, plain, change = std::move(change)] {
                            if (guard) {
                                change(*plain);
                            }
                        }));
}

bool GuardedControl::isValid() const
{
    return m_widget && m_plain.isValid();
}

QObject* GuardedControl::object() const
{
    return m_widget;
}

QVector<QPair<QAccessibleInterface*, QAccessible::Relation>>
GuardedControl::relations(QAccessible::Relation match) const
{
    return m_plain.relations(match);
}

QAccessibleInterface* GuardedControl::focusChild() const
{
    return m_plain.focusChild();
}

QAccessibleInterface* GuardedControl::childAt(int x, int y) const
{
    return childCount() == 0 ? nullptr : m_plain.childAt(x, y);
}

QAccessibleInterface* GuardedControl::parent() const
{
    return m_plain.parent();
}

QAccessibleInterface* GuardedControl::child(int index) const
{
    return childCount() == 0 ? nullptr : m_plain.child(index);
}

int GuardedControl::childCount() const
{
    const bool isHidden = m_widget && isScene(*m_widget) && !AccessFace::isFree(*m_widget);
    return isHidden ? 0 : m_plain.childCount();
}

int GuardedControl::indexOfChild(const QAccessibleInterface* child) const
{
    return m_plain.indexOfChild(child);
}

QString GuardedControl::text(QAccessible::Text kind) const
{
    return m_plain.text(kind);
}

void GuardedControl::setText(QAccessible::Text kind, const QString& text)
{
    attempt(text, [kind, text](QAccessibleInterface& plain) { plain.setText(kind, text); });
}

QRect GuardedControl::rect() const
{
    return m_plain.rect();
}

QAccessible::Role GuardedControl::role() const
{
    return m_plain.role();
}

QAccessible::State GuardedControl::state() const
{
    return m_plain.state();
}

QColor GuardedControl::foregroundColor() const
{
    return m_plain.foregroundColor();
}

QColor GuardedControl::backgroundColor() const
{
    return m_plain.backgroundColor();
}

void* GuardedControl::interface_cast(QAccessible::InterfaceType type)
{
    void* const plain = m_plain.interface_cast(type);
    if (!plain) {
        return nullptr;
    }
    switch (type) {
    case QAccessible::ActionInterface:
        return static_cast<QAccessibleActionInterface*>(this);
    case QAccessible::ValueInterface:
        return static_cast<QAccessibleValueInterface*>(this);
    case QAccessible::EditableTextInterface:
        return static_cast<QAccessibleEditableTextInterface*>(this);
    default:
        return plain;
    }
}

QStringList GuardedControl::actionNames() const
{
    return m_plain.actionInterface()->actionNames();
}

QString GuardedControl::localizedActionDescription(const QString& name) const
{
    return m_plain.actionInterface()->localizedActionDescription(name);
}

void GuardedControl::doAction(const QString& name)
{
    if (name == setFocusAction()) {
        m_plain.actionInterface()->doAction(name);
    } else {
        attempt({},
                [name](QAccessibleInterface& plain) { plain.actionInterface()->doAction(name); });
    }
}

QStringList GuardedControl::keyBindingsForAction(const QString& name) const
{
    return m_plain.actionInterface()->keyBindingsForAction(name);
}

QVariant GuardedControl::currentValue() const
{
    return m_plain.valueInterface()->currentValue();
}

void GuardedControl::setCurrentValue(const QVariant& value)
{
    attempt(value.toString(), [value](QAccessibleInterface& plain) {
        plain.valueInterface()->setCurrentValue(value);
    });
}

QVariant GuardedControl::maximumValue() const
{
    return m_plain.valueInterface()->maximumValue();
}

QVariant GuardedControl::minimumValue() const
{
    return m_plain.valueInterface()->minimumValue();
}

QVariant GuardedControl::minimumStepSize() const
{
    return m_plain.valueInterface()->minimumStepSize();
}

void GuardedControl::deleteText(int start, int end)
{
    attempt({}, [start, end](QAccessibleInterface& plain) {
        plain.editableTextInterface()->deleteText(start, end);
    });
}

void GuardedControl::insertText(int offset, const QString& text)
{
    attempt(text, [offset, text](QAccessibleInterface& plain) {
        plain.editableTextInterface()->insertText(offset, text);
    });
}

void GuardedControl::replaceText(int start, int end, const QString& text)
{
    attempt(text, [start, end, text](QAccessibleInterface& plain) {
        plain.editableTextInterface()->replaceText(start, end, text);
    });
}

} // namespace norvo
