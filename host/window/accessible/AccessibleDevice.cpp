// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/accessible/AccessibleDevice.h"

#include "host/window/accessible/LastValue.h"
#include "host/window/accessible/ShownValue.h"
#include "norvo/BaseWidget.h"

#include <QLabel>

#include <algorithm>

namespace norvo {

namespace {

constexpr const char* kNames[] = {"name", "widget/name", "widget/caption", "widget/label", "text"};

QAccessible::Role paintedRole(const BaseWidget& widget)
{
    const LastValue* const last = LastValue::of(widget);
    if (last) {
        return last->isState() ? QAccessible::Indicator : QAccessible::ProgressBar;
    }
    return widget.findChild<QLabel*>() ? QAccessible::StaticText : QAccessible::Graphic;
}

/// Readouts switch their captions off while no value comes.
bool isStale(const QWidget& widget)
{
    const auto labels = widget.findChildren<QLabel*>();
    return std::any_of(labels.cbegin(), labels.cend(),
                       [&widget](const QLabel* label) { return !label->isEnabledTo(&widget); });
}

} // namespace

AccessibleDevice::AccessibleDevice(BaseWidget* widget)
    : QAccessibleWidget(widget), m_device(*widget)
{}

QString AccessibleDevice::nameOf(const BaseWidget& widget)
{
    const auto& params = widget.params();
    for (const char* name : kNames) {
        QString value = params.value(name).value().replace("\\n", " ").simplified();
        if (!value.isEmpty()) {
            return value;
        }
    }
    return widget.getObjectName();
}

bool AccessibleDevice::isNameless(const QWidget& part)
{
    const ShownPart::Kind kind = ShownPart::kindOf(part);
    return kind != ShownPart::Kind::None && kind != ShownPart::Kind::Button &&
           kind != ShownPart::Kind::CheckBox;
}

QAccessible::Role AccessibleDevice::role() const
{
    const ShownPart part = ShownPart::of(m_device);
    return part.widget ? part.role() : paintedRole(m_device);
}

QString AccessibleDevice::text(QAccessible::Text kind) const
{
    switch (kind) {
    case QAccessible::Name:
        return nameOf(m_device);
    case QAccessible::Value:
        return shownValue(m_device);
    case QAccessible::Description:
        return isStale(m_device) ? tr("no current value") : QAccessibleWidget::text(kind);
    default:
        return QAccessibleWidget::text(kind);
    }
}

QAccessible::State AccessibleDevice::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    const ShownPart part = ShownPart::of(m_device);
    if (QAccessibleInterface* const inner = QAccessible::queryAccessibleInterface(part.widget)) {
        state.checkable = inner->state().checkable;
        state.checked = inner->state().checked;
        state.readOnly = inner->state().readOnly;
        state.disabled |= inner->state().disabled;
    }
    return state;
}

} // namespace norvo
