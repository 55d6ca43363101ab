// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/ControlPainter.h"

#include <QPainter>

namespace norvo {

namespace {

constexpr double kRadius = 8; // pixels, of corners
constexpr double kRing = 2;   // pixels, the width of a focus ring

/// Keeps the painter as it was for whoever draws next.
class SmoothPainting
{
public:
    explicit SmoothPainting(QPainter& painter) : m_painter(painter)
    {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
    }
    ~SmoothPainting() { m_painter.restore(); }
    SmoothPainting(const SmoothPainting&) = delete;
    SmoothPainting& operator=(const SmoothPainting&) = delete;

private:
    QPainter& m_painter;
};

QRectF inset(const QRect& rect, double by)
{
    return QRectF(rect).adjusted(by, by, -by, -by);
}

void pill(QPainter& painter, const QRectF& rect, const QColor& fill)
{
    const double radius = qMin(rect.width(), rect.height()) / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect, radius, radius);
}

QPen roundPen(const QColor& color, double width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

} // namespace

int ControlPainter::markSize() const
{
    return m_target / 2;
}

QColor ControlPainter::buttonText(const QStyleOptionButton& option) const
{
    if (!(option.state & QStyle::State_Enabled)) {
        return m_theme.quiet;
    }
    return option.state & (QStyle::State_On | QStyle::State_Sunken) ? m_theme.textOnAccent
                                                                    : m_theme.text;
}

/// What is pressed has the colour of what is on, at once: the finger hides the rest.
void ControlPainter::button(QPainter& painter, const QStyleOption& option, Mark mark) const
{
    const SmoothPainting smooth(painter);
    const bool isEnabled = option.state & QStyle::State_Enabled;
    const bool isFilled = isEnabled && option.state & (QStyle::State_On | QStyle::State_Sunken);
    plate(painter, option.rect,
          isFilled    ? m_theme.accent
          : isEnabled ? m_theme.button
                      : m_theme.page,
          false);
    if (option.state & QStyle::State_HasFocus) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(isFilled ? m_theme.textOnAccent : m_theme.text, kRing));
        painter.drawRoundedRect(inset(option.rect, 4), kRadius - 3, kRadius - 3);
    }
    if (mark == Mark::None) {
        return;
    }
    const QColor color = !isEnabled ? m_theme.quiet
                         : isFilled ? m_theme.textOnAccent
                                    : m_theme.text;
    const double radius = m_target / 8.0;
    const double left = qMin(m_target / 3.0, option.rect.width() / 6.0); // keys can be narrow
    const QPointF center(option.rect.left() + left, QRectF(option.rect).center().y());
    painter.setPen(QPen(color, kRing));
    painter.setBrush(mark == Mark::On ? QBrush(color) : QBrush(Qt::NoBrush));
    painter.drawEllipse(center, radius, radius);
}

void ControlPainter::checkMark(QPainter& painter, const QStyleOption& option) const
{
    const SmoothPainting smooth(painter);
    const QRectF box = inset(option.rect, 1);
    const bool isOn = option.state & QStyle::State_On;
    const bool isEnabled = option.state & QStyle::State_Enabled;
    const QColor color = isEnabled ? m_theme.accent : m_theme.quiet;
    painter.setPen(QPen(isOn ? color : m_theme.quiet, 2));
    painter.setBrush(isOn ? color : m_theme.field);
    painter.drawRoundedRect(box, box.width() / 6, box.width() / 6);
    if (isOn) {
        painter.setPen(
            roundPen(isEnabled ? m_theme.textOnAccent : m_theme.page, qMax(2.0, box.width() / 8)));
        const auto at = [&box](double x, double y) {
            return QPointF(box.left() + box.width() * x, box.top() + box.height() * y);
        };
        const QPointF lines[] = {at(0.22, 0.53), at(0.43, 0.74), at(0.79, 0.28)};
        painter.drawPolyline(lines, 3);
    }
}

void ControlPainter::field(QPainter& painter, const QStyleOption& option) const
{
    const SmoothPainting smooth(painter);
    plate(painter, option.rect, option.state & QStyle::State_Enabled ? m_theme.field : m_theme.page,
          option.state & QStyle::State_HasFocus);
}

void ControlPainter::focusRing(QPainter& painter, const QRect& around) const
{
    const SmoothPainting smooth(painter);
    painter.setPen(QPen(m_theme.text, kRing));
    painter.drawRoundedRect(inset(around, kRing / 2), kRadius / 2, kRadius / 2);
}

void ControlPainter::frame(QPainter& painter, const QRect& around) const
{
    const SmoothPainting smooth(painter);
    painter.setPen(m_theme.edge);
    painter.drawRoundedRect(inset(around, 0.5), kRadius / 4, kRadius / 4);
}

void ControlPainter::comboBox(QPainter& painter, const QStyleOptionComboBox& option) const
{
    const SmoothPainting smooth(painter);
    plate(painter, option.rect,
          option.state & QStyle::State_Enabled ? m_theme.button : m_theme.page,
          option.state & QStyle::State_HasFocus);
    const QRect key(option.rect.right() - m_target, option.rect.top(), m_target,
                    option.rect.height());
    chevron(painter, QStyle::visualRect(option.direction, option.rect, key), false, option);
}

void ControlPainter::spinBox(QPainter& painter, const QStyleOptionSpinBox& option, const QRect& up,
                             const QRect& down) const
{
    field(painter, option);
    const SmoothPainting smooth(painter);
    for (const QRect& key : {up, down}) {
        painter.setPen(m_theme.edge);
        painter.drawLine(key.topLeft() + QPoint(0, 4), key.bottomLeft() - QPoint(0, 4));
        chevron(painter, key, key == up, option);
    }
}

/// The handle is drawn smaller than it can be touched.
void ControlPainter::slider(QPainter& painter, const QStyleOptionSlider& option,
                            const QRect& groove, const QRect& handle) const
{
    const SmoothPainting smooth(painter);
    const bool isLevel = option.orientation == Qt::Horizontal;
    const bool isEnabled = option.state & QStyle::State_Enabled;
    const double thickness = m_target / 6.0;
    const double end = m_target / 2.0;
    const QPointF center = QRectF(handle).center();
    const QRectF line = isLevel ? QRectF(groove.left() + end, center.y() - thickness / 2,
                                         groove.width() - 2 * end, thickness)
                                : QRectF(center.x() - thickness / 2, groove.top() + end, thickness,
                                         groove.height() - 2 * end);
    pill(painter, line, m_theme.edge);
    // The least value is on the left or on top, unless upside down.
    QRectF filled = line;
    if (isLevel) {
        option.upsideDown ? filled.setLeft(center.x()) : filled.setRight(center.x());
    } else {
        option.upsideDown ? filled.setTop(center.y()) : filled.setBottom(center.y());
    }
    pill(painter, filled, isEnabled ? m_theme.accent : m_theme.quiet);
    const bool isHeld =
        option.state & QStyle::State_Sunken && option.activeSubControls & QStyle::SC_SliderHandle;
    const bool isFocused = option.state & QStyle::State_HasFocus;
    painter.setPen(QPen(!isEnabled ? m_theme.quiet : isFocused ? m_theme.text : m_theme.accent, 3));
    painter.setBrush(isHeld ? m_theme.accent : m_theme.button);
    painter.drawEllipse(center, m_target * 0.375, m_target * 0.375);
}

/// A handle on no ground: what lies beside it stays in sight.
void ControlPainter::scrollBar(QPainter& painter, const QStyleOptionSlider& option,
                               const QRect& handle) const
{
    if (option.minimum >= option.maximum) {
        return; // there is nothing to scroll
    }
    const SmoothPainting smooth(painter);
    const double side = m_target / 3.0;
    const bool isLevel = option.orientation == Qt::Horizontal;
    pill(painter,
         QRectF(handle).adjusted(isLevel ? 2 : side, isLevel ? side : 2, isLevel ? -2 : -side,
                                 isLevel ? -side : -2),
         option.state & QStyle::State_Sunken ? m_theme.accent : m_theme.edge);
}

/// The one that is shown stands on a bar of its own: not told by the colour alone.
void ControlPainter::tab(QPainter& painter, const QStyleOptionTab& option) const
{
    const SmoothPainting smooth(painter);
    const bool isShown = option.state & QStyle::State_Selected;
    painter.fillRect(option.rect, isShown ? m_theme.card : m_theme.page);
    painter.setPen(m_theme.edge);
    painter.drawLine(option.rect.topRight() + QPoint(0, 10),
                     option.rect.bottomRight() - QPoint(0, 10));
    if (isShown) {
        QRect bar = option.rect;
        bar.setTop(bar.bottom() - 4);
        painter.fillRect(bar, m_theme.accent);
    }
}

void ControlPainter::progressGroove(QPainter& painter, const QStyleOption& option) const
{
    const SmoothPainting smooth(painter);
    painter.setPen(m_theme.edge);
    painter.setBrush(m_theme.field);
    painter.drawRoundedRect(inset(option.rect, 0.5), kRadius / 2, kRadius / 2);
}

void ControlPainter::plate(QPainter& painter, const QRect& rect, const QColor& fill,
                           bool isFocused) const
{
    const double width = isFocused ? kRing : 1.5;
    painter.setPen(QPen(isFocused ? m_theme.text : m_theme.edge, width));
    painter.setBrush(fill);
    painter.drawRoundedRect(inset(rect, width / 2), kRadius, kRadius);
}

void ControlPainter::chevron(QPainter& painter, const QRect& in, bool isUp,
                             const QStyleOption& option) const
{
    const double half = qMin(m_target / 7.0, in.height() / 5.0);
    const double rise = isUp ? -half / 2 : half / 2;
    const QPointF center = QRectF(in).center();
    const QPointF lines[] = {center + QPointF(-half, -rise), center + QPointF(0, rise),
                             center + QPointF(half, -rise)};
    const bool isEnabled = option.state & QStyle::State_Enabled;
    painter.setPen(roundPen(isEnabled ? m_theme.text : m_theme.quiet, 2.5));
    painter.drawPolyline(lines, 3);
}

} // namespace norvo
