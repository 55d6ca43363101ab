// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/DeviceFrame.h"

#include <QPainter>
#include <QTimer>

namespace norvo {

namespace {

constexpr int kWidth = 4;  // pixels
constexpr int kMargin = 6; // pixels, around the widget

} // namespace

DeviceFrame::DeviceFrame(QWidget& around) : QWidget(around.parentWidget())
{
    setObjectName("deviceFrame");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(around.geometry().adjusted(-kMargin, -kMargin, kMargin, kMargin));
    QTimer::singleShot(kTimeMs, this, &QObject::deleteLater);
    show();
    raise();
}

void DeviceFrame::mark(QWidget& widget)
{
    if (widget.parentWidget()) {
        delete widget.window()->findChild<QWidget*>("deviceFrame");
        new DeviceFrame(widget);
    }
}

/// Two lines, so that it is seen on any ground.
void DeviceFrame::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QRectF frame = QRectF(rect()).adjusted(kWidth, kWidth, -kWidth, -kWidth);
    painter.setPen(QPen(palette().color(QPalette::Base), 2 * kWidth));
    painter.drawRect(frame);
    painter.setPen(QPen(palette().color(QPalette::Highlight), kWidth, Qt::DashLine));
    painter.drawRect(frame);
}

} // namespace norvo
