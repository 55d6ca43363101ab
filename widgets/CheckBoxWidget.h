// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/CheckBoxDevice.h"
#include "widgets/DeviceView.h"

class QCheckBox;

/// The check box of a CheckBoxDevice. Unchecked at the start.
class CheckBoxWidget : public DeviceView<CheckBoxDevice>
{
    Q_OBJECT

public:
    using DeviceView::DeviceView;

signals:
    void output(bool check);

public slots:
    void onStateChanged(int state); ///< A Qt::CheckState; partly checked counts as checked.
    void input(bool check);

protected:
    void build(CheckBoxDevice& device) override;

private:
    QCheckBox* m_checkBox = nullptr;
};
