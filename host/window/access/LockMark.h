// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/marks/Overlay.h"

namespace norvo {

/// A veil over a locked control and a padlock in its corner; what it shows can be read through it.
class LockMark : public Overlay
{
    Q_OBJECT

public:
    explicit LockMark(QWidget& control);

    void setLocked(bool isLocked); ///< Seen only then.

    /// A padlock that fills the square, closed or open.
    static void paintLock(QPainter& painter, const QRectF& square, const QColor& colour,
                          bool isClosed);

protected:
    bool isWanted() const override { return m_isLocked; }
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_isLocked = true;
};

} // namespace norvo
