#pragma once

#include "norvo/BaseGuiDevice.h"

/// A number on a horizontal scale with a green zone between two thresholds. Passes values on.
class OutputBarDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    OutputBarDevice();

    bool initialise() override;
    BaseWidget* createWidget() override;

signals:
    void output(double value);

public slots:
    void input(double value); ///< Ignored unless the device is running.
};
