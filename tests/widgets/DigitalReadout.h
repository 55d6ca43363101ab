// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ReadoutLooks.h"
#include "Stand.h"

#include "devices/OutputDigitalDevice.h"
#include "widgets/DigitalWidget.h"

#include <QGridLayout>
#include <QLabel>

/// A readout without time-out unless it is asked for, and its labels by their place.
struct DigitalReadout : Stand<OutputDigitalDevice>
{
    explicit DigitalReadout(Params params = {}) : Stand(withoutTimeout(params)) {}

    QLabel* caption() const { return at(0, 0); }
    QLabel* value() const { return at(1, 0); }
    QLabel* units() const { return at(1, 2); }
    DigitalWidget& digital() const { return static_cast<DigitalWidget&>(*widget); }

    /// The value's background, left of the digits.
    QColor background() const
    {
        const QImage image = value()->grab().toImage();
        return image.pixelColor(5, image.height() / 2);
    }

private:
    static Params withoutTimeout(Params params)
    {
        if (!params.contains("timeout")) {
            params["timeout"] = "0";
        }
        return params;
    }
    QLabel* at(int row, int column) const
    {
        QLayoutItem* const item = widget->getLayout()->itemAtPosition(row, column);
        return item ? qobject_cast<QLabel*>(item->widget()) : nullptr;
    }
};
