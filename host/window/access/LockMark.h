// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>

namespace norvo {

/// A veil over a locked control and a padlock in its corner; what it shows can be read through it.
///
/// Follows its control on the page and lets everything through that is meant for it.
class LockMark : public QWidget
{
    Q_OBJECT

public:
    /// Owned by the page that the control stands on.
    explicit LockMark(QWidget& control);

    void setLocked(bool isLocked); ///< Seen only then.

    /// A padlock that fills the square, closed or open.
    static void paintLock(QPainter& painter, const QRectF& square, const QColor& colour,
                          bool isClosed);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void follow();

    const QPointer<QWidget> m_control;
    bool m_isLocked = true;
};

} // namespace norvo
