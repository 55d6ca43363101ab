// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/status/StaleMarks.h"

#include "host/panel/run/Panel.h"
#include "host/services/status/SourceWatch.h"

#include "norvo/BaseWidget.h"

#include <QPainter>

namespace norvo {

namespace {

constexpr int kTextPixels = 13;
constexpr int kPadding = 6;
constexpr int kHatch = 12; // pixels, between two lines
// Seen on light and on dark ground, as plots are light in both themes; what lies below is still to
// be read.
constexpr QColor kLine(128, 128, 128, 150);

} // namespace

StaleMark::StaleMark(QWidget& display) : Overlay(display)
{
    setObjectName("staleMark");
    setAccessibleName(tr("not current: source lost"));
    connect(&display, &QObject::destroyed, this, &QObject::deleteLater);
    follow();
}

void StaleMark::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kLine, 1));
    for (int x = -height(); x < width(); x += kHatch) {
        painter.drawLine(x, height(), x + height(), 0);
    }
    QFont font = this->font();
    font.setPixelSize(kTextPixels);
    font.setBold(true);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const QString text = metrics.elidedText(QChar(0x2717) + QString(' ') + tr("no source"),
                                            Qt::ElideRight, width() - 2 * kPadding);
    QRectF plate(0, 0, metrics.horizontalAdvance(text) + 2 * kPadding, metrics.height() + 2);
    plate.moveTopRight(QPointF(width() - 1, 1)); // At the end of the caption, where there is one.
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
    painter.setBrush(palette().window());
    painter.drawRoundedRect(plate, 3, 3);
    painter.drawText(plate, Qt::AlignCenter, text);
}

StaleMarks::StaleMarks(const SourceWatch& watch, const Panel& panel) : m_panel(panel)
{
    connect(&watch, &SourceWatch::staleChanged, this, &StaleMarks::set);
}

void StaleMarks::set(const QString& device, bool isStale)
{
    BaseWidget* const widget = m_panel.widget(device);
    const StaleMark* const known = m_marks.value(device);
    if (isStale && widget && known && known->display() == widget) {
        return;
    }
    delete m_marks.take(device);
    if (isStale && widget && widget->parentWidget()) {
        m_marks.insert(device, new StaleMark(*widget));
    }
}

} // namespace norvo
