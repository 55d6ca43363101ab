// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/DropDownListDevice.h"
#include "widgets/DeviceView.h"

class QComboBox;

/// The list of a DropDownListDevice, with a caption above it where there is one.
class DropDownListWidget : public DeviceView<DropDownListDevice>
{
    Q_OBJECT

public:
    using DeviceView::DeviceView;

signals:
    void output(int idx);
    void currentTextChanged(QString text);

public slots:
    void onIndexChanged(int idx);
    void input(int idx);      ///< Moves the list in silence. Beyond the list: nothing is chosen.
    void input(QString item); ///< The same; a text that is not in the list changes nothing.

protected:
    /// Shows what the device holds, the item rather than the index.
    void build(DropDownListDevice& device) override;

private:
    void placeUnderCaption(const QString& caption);

    QComboBox* m_list = nullptr;
};
