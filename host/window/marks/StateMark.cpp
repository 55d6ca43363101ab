// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/marks/StateMark.h"

#include <QPainter>
#include <QStyle>

namespace norvo {

namespace {

constexpr int kTextPixels = 15;
constexpr int kMinTextPixels = 9;
constexpr int kPadding = 8;

} // namespace

StateMark::StateMark(QWidget& display, Kind kind, std::optional<bool> state)
    : Overlay(display), m_kind(kind), m_state(state)
{
    setObjectName("stateMark");
    describe();
    follow();
}

void StateMark::take()
{
    hide();
    deleteLater();
}

void StateMark::take(bool isOn)
{
    if (m_state != isOn) {
        m_state = isOn;
        describe();
        update();
    }
}

QRect StateMark::area(const QRect& display) const
{
    const QRect beside(display.left(), display.center().y() - kLampSize / 2, kLampSize, kLampSize);
    return m_kind == Kind::Value
               ? display
               : QStyle::visualRect(this->display()->layoutDirection(), display, beside);
}

void StateMark::describe()
{
    setAccessibleName(!m_state ? tr("no value yet") : *m_state ? tr("on") : tr("off"));
}

void StateMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    m_kind == Kind::Lamp ? paintLamp(painter) : paintValue(painter);
}

/// A disc of the page's colour, and on it a dot for on, a ring for off, a broken ring for neither.
void StateMark::paintLamp(QPainter& painter) const
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().window());
    painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    constexpr qreal radius = 6;
    QPen pen(palette().windowText(), 2.5);
    if (!m_state) {
        pen.setDashPattern({1.2, 1.2});
        pen.setCapStyle(Qt::FlatCap);
    }
    painter.setPen(pen);
    painter.setBrush(m_state.value_or(false) ? palette().windowText() : QBrush(Qt::NoBrush));
    painter.drawEllipse(QRectF(rect()).center(), radius, radius);
}

/// A plate over the number that nobody has sent.
void StateMark::paintValue(QPainter& painter) const
{
    const QString text = accessibleName();
    QFont plain = font();
    plain.setPixelSize(kTextPixels);
    while (plain.pixelSize() > kMinTextPixels &&
           QFontMetrics(plain).horizontalAdvance(text) + 2 * kPadding > width()) {
        plain.setPixelSize(plain.pixelSize() - 1);
    }
    const QFontMetrics metrics(plain);
    QRectF plate(0, 0, metrics.horizontalAdvance(text) + 2 * kPadding, metrics.height() + kPadding);
    plate.moveCenter(QRectF(rect()).center());
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.setBrush(palette().window());
    painter.drawRoundedRect(plate, plate.height() / 2, plate.height() / 2);
    painter.setFont(plain);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(plate, Qt::AlignCenter, text);
}

} // namespace norvo
