// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QCoreApplication;

namespace norvo {

/// Keeps the wheel from changing a value that nobody has chosen: number fields, sliders,
/// drop-down lists and QML without the focus leave it to the page, which scrolls. The wheel itself
/// never gives the focus. Works on all widgets of the application for as long as it lives.
class WheelGuard : public QObject
{
    Q_OBJECT

public:
    explicit WheelGuard(QCoreApplication& application);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace norvo
