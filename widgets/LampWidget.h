// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/IndicatorDevice.h"
#include "widgets/DeviceView.h"

#include <QPointer>

class PlateLabel;
namespace norvo::Looks {
struct Lamp;
}

/// The lamp of an IndicatorDevice: a rounded plate with a caption, bright when lit.
class LampWidget : public DeviceView<IndicatorDevice>
{
    Q_OBJECT

public:
    using DeviceView::DeviceView;

    void setState(bool on);
    void setFontSize(int size); ///< In points.

public slots:
    void input(bool value);

protected:
    void build(IndicatorDevice& indicator) override; ///< Again: a new lamp replaces the old one.

private:
    const norvo::Looks::Lamp* m_look = nullptr; ///< Null: the plate keeps its plain look.
    QPointer<PlateLabel> m_lamp;
};
