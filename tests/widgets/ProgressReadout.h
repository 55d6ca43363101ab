// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ReadoutLooks.h"
#include "Stand.h"

#include "devices/OutputWithProgress.h"
#include "widgets/DigitalWithProgress.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>

/// A readout with progress and its parts; without time-out unless it is asked for.
struct ProgressReadout : Stand<OutputWithProgress>
{
    explicit ProgressReadout(Params params = {}) : Stand(withoutTimeout(params)) {}

    QLabel* caption() const { return at<QLabel>(0, 0); }
    QLabel* value() const { return at<QLabel>(1, 0); }
    QLabel* minLabel() const { return at<QLabel>(3, 0); }
    QLabel* maxLabel() const { return at<QLabel>(3, 1); }
    QProgressBar* bar() const { return only<QProgressBar>(); }
    DigitalWithProgress& digital() const { return static_cast<DigitalWithProgress&>(*widget); }

    QColor valueBackground() const { return pixelNearTheLeft(*value()); }
    QColor barChunk() const { return pixelNearTheLeft(*bar()); }

private:
    static Params withoutTimeout(Params params)
    {
        if (!params.contains("timeout")) {
            params["timeout"] = "0";
        }
        return params;
    }
    template <class T>
    T* at(int row, int column) const
    {
        QLayoutItem* const item = widget->getLayout()->itemAtPosition(row, column);
        return item ? qobject_cast<T*>(item->widget()) : nullptr;
    }
    static QColor pixelNearTheLeft(QWidget& part)
    {
        const QImage image = part.grab().toImage();
        return image.pixelColor(6, image.height() / 2);
    }
};
