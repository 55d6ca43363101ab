// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QObject>

class QMouseEvent;
class QQuickWidget;
class QWheelEvent;

namespace norvo {

/// Draws a quick widget with more, or fewer, pixels than it has itself: its window is that much
/// larger, and its content with it, and the widget shows the window's picture. A child of the
/// widget.
class SharpQuickView : public QObject
{
    Q_OBJECT

public:
    explicit SharpQuickView(QQuickWidget& widget);

    void setFactor(double factor);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void enlarge();
    void paint();
    bool passOn(const QMouseEvent& event);
    bool passOn(const QWheelEvent& event);

    QQuickWidget& m_widget;
    double m_factor = 1;
    bool m_isAtWork = false; ///< What the window does then comes from here.
};

} // namespace norvo
