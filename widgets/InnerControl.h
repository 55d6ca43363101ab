#pragma once

#include "norvo/BaseWidget.h"

#include <QDebug>
#include <QFont>
#include <QGridLayout>

/// What the widgets that wrap one Qt control have in common.

/// `device` as the class that `widget` is made for. Null where it is none such, which the debug log
/// is told in the widget's name.
template <class Device>
Device* compatibleDevice(BaseGuiDevice* device, const BaseWidget& widget)
{
    auto* compatible = dynamic_cast<Device*>(device);
    if (!compatible) {
        qDebug().noquote().nospace()
            << widget.metaObject()->className() << ": Error! Attached to incompatible device";
    }
    return compatible;
}

/// The font of a control inside `widget`: the widget's own family, neither bold nor italic.
inline QFont controlFont(const QWidget& widget, int pointSize)
{
    return QFont(widget.font().family(), pointSize, QFont::Normal, false);
}

/// Puts `control` into the widget's layout, which makes the widget its owner; the widget then takes
/// its room and passes its focus on as the control alone would.
inline void embedControl(BaseWidget& widget, QWidget* control)
{
    widget.setSizePolicy(control->sizePolicy());
    widget.getLayout()->addWidget(control);
    widget.setFocusProxy(control);
}
