// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseWidget.h"

#include <QDebug>

/// The widget of one class of device: initialise() looks for the device, build() makes its view.
///
/// A widget that is attached to no device or to one of another class writes that to the debug log
/// and stays empty. Without Q_OBJECT, so that a widget's meta-object follows on BaseWidget's.
template <class Device>
class DeviceView : public BaseWidget
{
public:
    using BaseWidget::BaseWidget;

    void initialise() override
    {
        if (Device* const compatible = device()) {
            build(*compatible);
            setInitialised(true);
        } else {
            qDebug().noquote().nospace()
                << metaObject()->className() << ": Error! Attached to incompatible device";
        }
    }

protected:
    /// Reads the parameters, builds the inner controls and connects them to the device. The
    /// initialised flag is set after it; a widget that needs it earlier sets it itself.
    virtual void build(Device& device) = 0;

    /// Null where it is of another class, and once it is gone.
    Device* device() const { return dynamic_cast<Device*>(BaseWidget::device()); }
};
