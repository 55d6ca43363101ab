// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseWidget.h"

class HoldDevice;

/// The key of a HoldDevice.
class HoldWidget : public BaseWidget
{
    Q_OBJECT

public:
    HoldWidget(HoldDevice* device, QWidget* parent);

    void initialise() override;

private:
    const QPointer<HoldDevice> m_device;
};
