// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/MultilineDevice.h"
#include "widgets/DeviceView.h"
#include "widgets/LogArea.h"

#include <QPointer>

/// The text area of a MultilineDevice. The operator may edit what stands in it.
class TextWidget : public DeviceView<MultilineDevice>
{
    Q_OBJECT

public:
    using DeviceView::DeviceView;

    void setFontSize(int size);      ///< In points.
    void scrollEnable(bool enabled); ///< False: the first line stays in view.

public slots:
    void input(QString text); ///< Appends a paragraph, with its inline marks.

protected:
    void build(MultilineDevice& multiline) override;

private:
    QPointer<LogArea> m_text;
};
