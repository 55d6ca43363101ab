// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/Cursor.h"

#include "host/plots/PlotCopy.h"
#include "host/plots/SeenPoints.h"

#include <QAccessible>
#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace norvo {

namespace {

constexpr int kTextPixels = 13;
constexpr int kPadding = 6;
constexpr int kSample = 14; // pixels of a curve's colour before its value
constexpr int kMaxTextWidth = 260;

} // namespace

Cursor::Cursor(PlotCopy& plot) : QWidget(&plot), m_plot(plot)
{
    setObjectName("graphCursor");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    QFont small = font();
    small.setPixelSize(kTextPixels);
    setFont(small);
    plot.installEventFilter(this);
    connect(&plot, &QCustomPlot::afterReplot, this, &Cursor::refresh);
    setGeometry(plot.rect());
    hide();
}

bool Cursor::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize) {
        setGeometry(m_plot.rect());
    }
    return false;
}

void Cursor::put(double key)
{
    m_key = key;
    refresh();
    setAccessibleName(m_texts.join(", "));
    QAccessibleEvent said(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&said);
}

void Cursor::moveBy(int columns)
{
    const QCPRange range = m_plot.xAxis->range();
    const double step = range.size() / std::max(1, m_plot.area().width());
    put(m_key ? qBound(range.lower, *m_key + columns * step, range.upper) : range.center());
}

void Cursor::remove()
{
    m_key.reset();
    refresh();
}

void Cursor::refresh()
{
    m_texts.clear();
    m_colours.clear();
    setVisible(m_key && m_plot.xAxis->range().contains(*m_key));
    if (!m_key) {
        return;
    }
    m_texts.append(keyText(m_plot, *m_key, true));
    m_colours.append(QColor());
    for (const CurveValue& value : valuesAt(m_plot, *m_key)) {
        const QString number =
            std::isnan(value.value) ? QString(QChar(0x2013)) : QString::number(value.value);
        m_texts.append((value.curve + ' ' + number).trimmed());
        m_colours.append(value.colour);
    }
    update();
}

void Cursor::paintEvent(QPaintEvent* /*event*/)
{
    if (!m_key) {
        return;
    }
    QPainter painter(this);
    const QCPAxisRect& area = m_plot.area();
    const int x =
        int(qBound(double(area.left()), m_plot.xAxis->coordToPixel(*m_key), double(area.right())));
    painter.setPen(QPen(m_plot.xAxis->labelColor(), 1));
    painter.drawLine(x, area.top(), x, area.bottom());
    paintValues(painter, x);
}

/// Beside the line, on the side that has more room.
void Cursor::paintValues(QPainter& painter, int x) const
{
    int textWidth = 0;
    for (const QString& text : m_texts) {
        textWidth =
            std::max(textWidth, fontMetrics().horizontalAdvance(text) + 1); // It is rounded.
    }
    textWidth = std::min(textWidth, kMaxTextWidth);
    const int line = fontMetrics().height();
    QRect plate(0, m_plot.area().top() + kPadding, kSample + textWidth + 3 * kPadding,
                m_texts.size() * line + 2 * kPadding);
    if (x < m_plot.area().rect().center().x()) {
        plate.moveLeft(x + kPadding);
    } else {
        plate.moveRight(x - kPadding);
    }
    painter.setBrush(m_plot.legend->brush());
    painter.drawRect(plate);
    int top = plate.top() + kPadding;
    for (int i = 0; i < m_texts.size(); ++i, top += line) {
        const int left = plate.left() + kPadding;
        if (m_colours[i].isValid()) {
            painter.fillRect(left, top + line / 2 - 1, kSample, 3, m_colours[i]);
        }
        painter.drawText(left + kSample + kPadding, top + fontMetrics().ascent(),
                         fontMetrics().elidedText(m_texts[i], Qt::ElideMiddle, textWidth));
    }
}

} // namespace norvo
