// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/PortsDevice.h"

#include <QCoreApplication>
#include <QImage>

#include <functional>
#include <memory>

/// A device's whole life, from its parameters to its end, as a panel leads it.
class HostileLife
{
public:
    using Work = std::function<void(BaseDevice& device, BaseWidget* widget)>;

    /// `device` passes to this. `whileItRuns` is called when all stands, with the widget, which is
    /// null for a device that has none.
    static void lead(BaseDevice* made, const Work& whileItRuns)
    {
        const std::unique_ptr<BaseDevice> device(made);
        device->setObjectName("device");
        if (!device->initialise()) { // A panel keeps it as a fault; stopping it is no fault.
            device->preShutdown();
            device->deinitialise();
            return;
        }
        device->setRunning(true);
        auto* const shown = qobject_cast<BaseGuiDevice*>(device.get());
        const std::unique_ptr<BaseWidget> widget(shown ? shown->createWidget() : nullptr);
        if (widget) {
            widget->initialise();
        }
        device->postInitialisation();
        QCoreApplication::processEvents();
        whileItRuns(*device, widget.get());
        QCoreApplication::processEvents();
        device->setRunning(false);
        device->preShutdown();
        if (widget) {
            widget->deinitialise();
        }
        device->deinitialise();
    }

    /// Draws the widget at a pixel, at less than it needs and at much.
    static void paint(BaseWidget* widget)
    {
        if (!widget) {
            return;
        }
        for (const QSize size : {QSize(1, 1), QSize(40, 30), QSize(800, 600)}) {
            widget->setMinimumSize(0, 0);
            widget->resize(size);
            QImage image(size, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::white);
            widget->render(&image);
        }
    }
};
