// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseWidget.h"

#include <QPointer>

class StopDevice;

/// The key of a StopDevice.
class StopWidget : public BaseWidget
{
    Q_OBJECT

public:
    StopWidget(StopDevice* device, QWidget* parent);

    void initialise() override;

private:
    const QPointer<StopDevice> m_device;
};
