// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmSign.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace norvo {

namespace {

QString say(const char* text)
{
    return QCoreApplication::translate("norvo::AlarmSign", text);
}

QPainterPath shapeOf(AlarmPriority priority, const QRectF& area)
{
    QPainterPath path;
    switch (priority) {
    case AlarmPriority::High:
        path.addPolygon(QVector<QPointF>{QPointF(area.center().x(), area.top()), area.bottomRight(),
                                         area.bottomLeft()});
        break;
    case AlarmPriority::Medium:
        path.addPolygon(QVector<QPointF>{
            QPointF(area.center().x(), area.top()), QPointF(area.right(), area.center().y()),
            QPointF(area.center().x(), area.bottom()), QPointF(area.left(), area.center().y())});
        break;
    default:
        path.addEllipse(area);
    }
    path.closeSubpath();
    return path;
}

/// Each with black or white reads at 4.5 : 1 at least.
QColor fillOf(AlarmPriority priority)
{
    return priority == AlarmPriority::High     ? QColor(0xc6, 0x28, 0x28)
           : priority == AlarmPriority::Medium ? QColor(0xff, 0xb3, 0x00)
                                               : QColor(0x15, 0x65, 0xc0);
}

} // namespace

void AlarmSign::paint(QPainter& painter, const QRectF& area, AlarmPriority priority, bool isFilled,
                      const QPalette& palette)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal width = qMax(1.5, area.height() / 14);
    painter.setPen(QPen(palette.color(QPalette::WindowText), width));
    painter.setBrush(isFilled ? QBrush(fillOf(priority)) : QBrush(Qt::NoBrush));
    const QRectF inner = area.adjusted(width, width, -width, -width);
    painter.drawPath(shapeOf(priority, inner));
    painter.setPen(!isFilled                           ? palette.color(QPalette::WindowText)
                   : priority == AlarmPriority::Medium ? QColor(Qt::black)
                                                       : QColor(Qt::white));
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(qMax(6, int(inner.height() * 0.55)));
    painter.setFont(font);
    const qreal lower = priority == AlarmPriority::High ? inner.height() * 0.2 : 0;
    painter.drawText(inner.adjusted(0, lower, 0, 0), Qt::AlignCenter,
                     priority == AlarmPriority::Low ? "i" : "!");
    painter.restore();
}

QIcon AlarmSign::icon(AlarmPriority priority, bool isFilled, int size, const QPalette& palette)
{
    QPixmap picture(2 * size, 2 * size); // For dense screens, too.
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(painter, picture.rect(), priority, isFilled, palette);
    painter.end();
    return picture;
}

QString AlarmSign::nameOf(AlarmPriority priority)
{
    return say(priority == AlarmPriority::High     ? QT_TRANSLATE_NOOP("norvo::AlarmSign", "High")
               : priority == AlarmPriority::Medium ? QT_TRANSLATE_NOOP("norvo::AlarmSign", "Medium")
                                                   : QT_TRANSLATE_NOOP("norvo::AlarmSign", "Low"));
}

QString AlarmSign::nameOf(const Alarm& alarm)
{
    if (alarm.isShelved()) {
        return say(QT_TRANSLATE_NOOP("norvo::AlarmSign", "shelved"));
    }
    switch (alarm.state) {
    case AlarmState::ActiveUnacknowledged:
        return say(QT_TRANSLATE_NOOP("norvo::AlarmSign", "active"));
    case AlarmState::ActiveAcknowledged:
        return say(QT_TRANSLATE_NOOP("norvo::AlarmSign", "active, acknowledged"));
    case AlarmState::ClearedUnacknowledged:
        return say(QT_TRANSLATE_NOOP("norvo::AlarmSign", "over, not acknowledged"));
    default:
        return say(QT_TRANSLATE_NOOP("norvo::AlarmSign", "over"));
    }
}

} // namespace norvo
