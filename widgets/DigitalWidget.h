// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/OutputDigitalDevice.h"
#include "widgets/DeviceView.h"
#include "widgets/ReadoutFace.h"

class QLabel;

/// The readout of an OutputDigitalDevice: caption, digits and, where there is one, the unit.
class DigitalWidget : public DeviceView<OutputDigitalDevice>
{
    Q_OBJECT

public:
    using DeviceView::DeviceView;

    /// Places the labels; vertical: the digits alone.
    void setLayout(Qt::Orientation orientation);
    void setActive(bool active); ///< Inactive: grey digits and a caption switched off.

    void deinitialise() override; ///< Does nothing: values are shown to the end.

public slots:
    void timeout();
    void input(double value);
    void blinkTimerExpired();

protected:
    void build(OutputDigitalDevice& readout) override;
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void createUnits(int pointSize);
    void makeRoom(); ///< For the longest number of the band.

    ReadoutFace m_face;
    QLabel* m_units = nullptr; ///< Null: no unit.
};
