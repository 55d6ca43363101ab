// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/accessible/LastValue.h"

#include "norvo/BaseWidget.h"

#include <QMetaMethod>
#include <QStringList>

namespace norvo {

namespace {

/// Widens what a widget keeps for the types that are derived from it.
class Open : public BaseWidget
{
public:
    static BaseGuiDevice* deviceOf(const BaseWidget& widget) { return (widget.*(&Open::device))(); }
};

/// Of its own class: those of a QML document are other objects'.
QStringList outputsOf(const BaseGuiDevice& device)
{
    return device.BaseDevice::grabMethods("output", QMetaMethod::Signal, false);
}

} // namespace

void LastValue::follow(BaseWidget& widget)
{
    BaseGuiDevice* const device = Open::deviceOf(widget);
    if (!device || of(widget)) {
        return;
    }
    const QStringList outputs = outputsOf(*device);
    if (outputs == QStringList("output(bool)")) {
        connect(device, SIGNAL(output(bool)), new LastValue(&widget, true), SLOT(set(bool)));
    } else if (outputs == QStringList("output(double)")) {
        connect(device, SIGNAL(output(double)), new LastValue(&widget, false), SLOT(set(double)));
    }
}

const LastValue* LastValue::of(const BaseWidget& widget)
{
    return widget.findChild<LastValue*>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace norvo
