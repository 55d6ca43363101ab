// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"

#include <QtWidgets>
#include <QMap>

#include <memory>

/// A device and its widget, driven as a panel drives them.
template <class Device>
class Stand
{
public:
    using Params = QMap<QString, QString>;

    /// Goes as far as the widget's initialise().
    explicit Stand(const Params& params = {})
    {
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            device.setParam(param.key(), param.value());
        }
        device.setObjectName("device");
        device.setRunning(device.initialise());
        widget.reset(device.createWidget());
        widget->initialise();
    }

    /// The only child of that type; null when there is none or more than one.
    template <class T>
    T* only() const
    {
        const QList<T*> found = widget->template findChildren<T*>();
        return found.size() == 1 ? found.first() : nullptr;
    }

    Device device;
    std::unique_ptr<BaseWidget> widget; ///< Without parent, not yet shown.
};
