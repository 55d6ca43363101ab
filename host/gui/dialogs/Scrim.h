// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QWidget>

namespace norvo {

/// Dims a whole window, whose child it is, and follows its size.
class Scrim : public QWidget
{
    Q_OBJECT

public:
    explicit Scrim(QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace norvo
