// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/ButtonDevice.h"
#include "widgets/DeviceView.h"

/// The push button of a ButtonDevice.
class ButtonWidget : public DeviceView<ButtonDevice>
{
    Q_OBJECT

public:
    using DeviceView::DeviceView;

signals:
    void pressed(); ///< Never emitted.

protected:
    void build(ButtonDevice& device) override;
};
