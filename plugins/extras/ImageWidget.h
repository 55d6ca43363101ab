// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseWidget.h"

#include <QPointer>

class ImageDevice;

/// The picture of an ImageDevice. A stale one is veiled, and says so.
class ImageWidget : public BaseWidget
{
    Q_OBJECT

public:
    ImageWidget(ImageDevice* device, QWidget* parent);

    void initialise() override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect place(const QSize& picture) const;

    const QPointer<ImageDevice> m_device;
    QString m_scaling;
};
