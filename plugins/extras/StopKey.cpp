// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/StopKey.h"

#include "plugins/extras/StopDevice.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int kTickMs = 40;
constexpr int kYellowEdge = 10;
constexpr int kBarHeight = 10;
constexpr int kPadding = 12;
const QColor kYellow("#ffd500");
const QColor kRed("#b00000"); ///< White on it: 7.4 to 1.

const QString kStopped = QStringLiteral("STOPPED");
const QString kUnconfirmed = QStringLiteral("STOPPED,\nnot confirmed");
const QString kHint = QStringLiteral("hold to release");

} // namespace

StopKey::StopKey(StopDevice& device, int releaseMs)
    : HeldKey(QString()),
      m_device(&device),
      m_caption(device.getParam(StopDevice::kText).value()),
      m_releaseMs(releaseMs)
{
    m_tick.setInterval(kTickMs);
    connect(&m_tick, &QTimer::timeout, this, &StopKey::countRelease);
    connect(this, &HeldKey::handOn, this, &StopKey::hit);
    connect(this, &HeldKey::handOff, this, &StopKey::endRelease);
    connect(&device, &StopDevice::stopped, this, &StopKey::showState);
    connect(&device, &StopDevice::confirmed, this, &StopKey::showState);
    showState();
}

void StopKey::hit()
{
    if (!m_device) {
        return;
    }
    if (m_device->isStopped()) {
        m_heldMs = 0;
        m_sinceTick.start();
        m_tick.start();
    }
    m_device->hit();
}

void StopKey::endRelease()
{
    m_tick.stop();
    update();
}

void StopKey::countRelease()
{
    m_heldMs += int(std::min(qint64(2 * kTickMs), m_sinceTick.restart()));
    update();
    if (m_heldMs >= m_releaseMs) {
        m_tick.stop();
        if (m_device) {
            m_device->unlatch();
        }
    }
}

void StopKey::showState()
{
    const bool isStopped = m_device && m_device->isStopped();
    const QString caption = QString(m_caption).replace('&', "&&"); // else it marks a shortcut
    setText(!isStopped ? caption : m_device->isUnconfirmed() ? kUnconfirmed : kStopped);
    setDown(isStopped);
}

/// Room for all that it may say, so that nothing moves when its state changes.
QSize StopKey::sizeHint() const
{
    QSize size;
    for (const QString& text : {m_caption, kUnconfirmed}) {
        size = size.expandedTo(fontMetrics().size(0, text));
    }
    const int margin = 2 * (kYellowEdge + kPadding);
    const int below = kBarHeight + fontMetrics().height();
    return (size + QSize(margin, margin + below)).expandedTo({2 * kMinSide, 2 * kMinSide});
}

void StopKey::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen(Qt::black, 3) : QPen(Qt::black, 1));
    painter.setBrush(kYellow);
    painter.drawRoundedRect(rect().adjusted(2, 2, -2, -2), kYellowEdge, kYellowEdge);
    const QRect red = rect().adjusted(kYellowEdge, kYellowEdge, -kYellowEdge, -kYellowEdge);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kRed);
    painter.drawRoundedRect(red, kYellowEdge, kYellowEdge);
    painter.setPen(QPen(Qt::white, isDown() ? 3 : 0, isDown() ? Qt::SolidLine : Qt::NoPen));
    painter.drawRoundedRect(red.adjusted(3, 3, -3, -3), kYellowEdge, kYellowEdge); // pressed in

    const QRect inner = red.adjusted(kPadding, kPadding, -kPadding, -kPadding);
    QRect words = inner;
    painter.setPen(Qt::white);
    if (isDown()) {
        words.setBottom(inner.bottom() - kBarHeight - fontMetrics().height());
        QFont small = font();
        small.setPointSizeF(std::max(9.0, font().pointSizeF() * 0.6));
        painter.setFont(small);
        painter.drawText(QRect(inner.left(), words.bottom(), inner.width(), fontMetrics().height()),
                         Qt::AlignCenter, kHint);
    }
    painter.setFont(font());
    painter.drawText(words, Qt::AlignCenter | Qt::TextWordWrap, isDown() ? text() : m_caption);
    if (m_tick.isActive()) {
        const int done = inner.width() * m_heldMs / m_releaseMs;
        painter.fillRect(inner.left(), inner.bottom() - kBarHeight, done, kBarHeight, kYellow);
    }
}
