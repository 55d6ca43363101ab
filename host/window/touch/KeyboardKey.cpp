// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/KeyboardKey.h"

#include "host/window/look/TouchSize.h"

#include "norvo/ScreenKeyboardDialog.h"

#include <QPainter>
#include <QScreen>

namespace norvo {

namespace {

constexpr double kShare = 0.58; ///< Of the key's width that the picture takes.

/// Twelve wide, eight high.
void paintKeyboard(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(0, 0, 12, 8), 1.2, 1.2);
    constexpr double dot = 1;
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 4; ++column) {
            const double left = 1.75 + 2.1 * column + 0.6 * row;
            painter.fillRect(QRectF(left, 1.7 + 1.8 * row, dot, dot), painter.pen().color());
        }
    }
    painter.fillRect(QRectF(3.5, 5.4, 5, dot), painter.pen().color());
}

} // namespace

KeyboardKey::KeyboardKey(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(tr("Keyboard on the screen"));
    setToolTip(accessibleName());
}

QSize KeyboardKey::sizeHint() const
{
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *screen());
    return {target, target};
}

QString KeyboardKey::askForText(QWidget& window, const QString& title, const QString& text,
                                const QString& hint)
{
    bool isGiven = false;
    const QString given =
        ScreenKeyboardDialog::getText(&window, title, text, {}, &isGiven, hint, {}, {});
    return !isGiven ? QString() : given.isNull() ? QString("") : given;
}

void KeyboardKey::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Highlight));
        painter.drawRoundedRect(rect().adjusted(3, 3, -3, -3), 4, 4);
    }
    const double scale = kShare * width() / 12;
    painter.translate(width() / 2. - 6 * scale, height() / 2. - 4 * scale);
    painter.scale(scale, scale);
    const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(
        QPen(palette().color(group, isDown() ? QPalette::HighlightedText : QPalette::Text), 0.8));
    painter.setBrush(Qt::NoBrush);
    paintKeyboard(painter);
}

} // namespace norvo
