// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/accessible/Accessibility.h"

#include "host/window/accessible/AccessibleDevice.h"
#include "host/window/accessible/LastValue.h"
#include "norvo/BaseWidget.h"

#include <QAccessible>

namespace norvo {

namespace {

bool s_isInstalled = false;
Accessibility::MakeControl s_makeControl = nullptr;

/// Qt asks here for each class of an object, before it makes an interface of its own.
QAccessibleInterface* interfaceFor(const QString& className, QObject* object)
{
    auto* const widget = qobject_cast<QWidget*>(object);
    if (!widget) {
        return nullptr;
    }
    if (className == "BaseWidget") {
        return new AccessibleDevice(static_cast<BaseWidget*>(widget));
    }
    const auto* const device = qobject_cast<BaseWidget*>(widget->parentWidget());
    if (device && widget->accessibleName().isEmpty() && AccessibleDevice::isNameless(*widget)) {
        widget->setAccessibleName(AccessibleDevice::nameOf(*device));
    }
    return s_makeControl(*widget);
}

} // namespace

void Accessibility::install(MakeControl makeControl)
{
    s_makeControl = makeControl;
    QAccessible::installFactory(interfaceFor);
    s_isInstalled = true;
}

void Accessibility::follow(QWidget& placed)
{
    auto* const widget = s_isInstalled ? qobject_cast<BaseWidget*>(&placed) : nullptr;
    if (widget) {
        LastValue::follow(*widget);
    }
}

} // namespace norvo
