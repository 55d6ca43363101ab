// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace norvo {

/// A page whose grid is a PageGrid: paints a card behind each device of several parts.
class CardPage : public QWidget
{
    Q_OBJECT

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace norvo
