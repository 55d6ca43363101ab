// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QScrollArea>

namespace norvo {

/// Shows a page, and scrolls where it does not fit: by its bars, and by a finger that is drawn over
/// it. A press that a control on the page takes never scrolls.
class FingerScrollArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit FingerScrollArea(QWidget* page); ///< Takes the page over.

    QSize sizeHint() const override; ///< Of the page.

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QPoint m_finger; ///< On the screen.
};

} // namespace norvo
