// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace norvo {

/// Frames a widget of the panel for a few seconds, so that it is found. Takes no touches.
class DeviceFrame : public QWidget
{
public:
    static constexpr int kTimeMs = 4000;

    static void mark(QWidget& widget); ///< In place of one that another widget may have.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    explicit DeviceFrame(QWidget& around);
};

} // namespace norvo
