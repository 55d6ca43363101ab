// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmBar.h"

#include "host/services/alarms/AlarmService.h"
#include "host/window/alarms/AlarmSign.h"

#include <QDateTime>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace norvo {

namespace {

constexpr int kGap = 8; // pixels, between the parts of the line

} // namespace

AlarmBar::AlarmBar(AlarmService& service) : m_service(service)
{
    setObjectName("alarmBar");
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_blink.setInterval(kBlinkMs);
    m_hold.setInterval(kHoldMs);
    m_hold.setSingleShot(true);
    connect(&m_blink, &QTimer::timeout, this, [this] {
        m_isLit = !m_isLit;
        update();
    });
    connect(&m_hold, &QTimer::timeout, this, &AlarmBar::acknowledgeAll);
    connect(this, &QAbstractButton::pressed, this, [this] {
        m_wasHeld = false;
        m_hold.start();
    });
    connect(this, &QAbstractButton::released, &m_hold, &QTimer::stop);
    connect(this, &QAbstractButton::clicked, this, &AlarmBar::tap);
    connect(&service, &AlarmService::changed, this, &AlarmBar::refresh);
    refresh();
}

QSize AlarmBar::sizeHint() const
{
    return {40 * fontMetrics().averageCharWidth(), 2 * fontMetrics().height()};
}

void AlarmBar::refresh()
{
    m_lines = alarmLines(m_service.model());
    const bool isWaiting = worst() && worst()->isUnacknowledged();
    if (!isWaiting) {
        m_blink.stop();
        m_isLit = true;
    } else if (!m_blink.isActive()) {
        m_blink.start();
    }
    setAccessibleName(m_lines.isEmpty() ? QString() : line());
    setAccessibleDescription(isWaiting ? tr("Press to acknowledge, hold to acknowledge all") : "");
    update();
}

const Alarm* AlarmBar::worst() const
{
    return m_lines.isEmpty() ? nullptr : &m_service.model().at(m_lines[0].alarms.constFirst());
}

QString AlarmBar::line() const
{
    const Alarm* const alarm = worst();
    if (!alarm) {
        return {};
    }
    const QDateTime since = QDateTime::fromMSecsSinceEpoch(alarm->since.wall);
    const bool isToday = since.date() == QDate::currentDate();
    return QString("%1  %2  %3  –  %4")
        .arg(AlarmSign::nameOf(alarm->definition.priority),
             since.toString(isToday ? "HH:mm:ss" : "yyyy-MM-dd HH:mm"),
             textOf(m_lines.constFirst(), m_service.model()), AlarmSign::nameOf(*alarm));
}

void AlarmBar::tap()
{
    if (m_wasHeld || m_lines.isEmpty()) {
        return;
    }
    if (worst()->isUnacknowledged()) {
        m_service.acknowledge(m_lines.constFirst().alarms);
    } else {
        emit listRequested();
    }
}

void AlarmBar::acknowledgeAll()
{
    m_wasHeld = true;
    QVector<int> all;
    for (const AlarmLine& line : qAsConst(m_lines)) {
        all += line.alarms;
    }
    m_service.acknowledge(all);
}

void AlarmBar::paintEvent(QPaintEvent* /*event*/)
{
    const Alarm* const alarm = worst();
    if (!alarm) {
        return;
    }
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(isDown() ? QPalette::Mid : QPalette::Base));
    const int side = qMin(height() - 2 * kGap, 2 * fontMetrics().height());
    const QRectF sign(kGap, (height() - side) / 2., side, side);
    AlarmSign::paint(painter, sign, alarm->definition.priority,
                     alarm->isUnacknowledged() && m_isLit, palette());
    painter.setPen(palette().color(QPalette::WindowText));
    QFont font = painter.font();
    font.setBold(alarm->isUnacknowledged());
    painter.setFont(font);
    const QRect room = rect().adjusted(int(sign.right()) + kGap, 0, -kGap, 0);
    const QFontMetrics metrics(font);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                     metrics.elidedText(line(), Qt::ElideRight, room.width()));
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = rect().adjusted(1, 1, -1, -1);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

} // namespace norvo
