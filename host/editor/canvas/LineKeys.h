// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QAction;

namespace norvo {

/// Small keys beside the number of a row or a column that was tapped, one for each of its actions.
class LineKeys : public QWidget
{
    Q_OBJECT

public:
    /// `beside`: the cell next to the number, on `cover`; `target`: the least size of a key.
    LineKeys(QWidget& cover, const QList<QAction*>& actions, const QRect& beside, int target);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace norvo
