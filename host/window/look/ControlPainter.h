// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/look/Theme.h"

#include <QStyleOption>

class QPainter;

namespace norvo {

/// Draws the controls of PanelStyle. Where a control has parts, their places are given.
class ControlPainter
{
public:
    /// A button that latches shows its state by a mark, too, not by its colour alone.
    enum class Mark { None, Off, On };

    ControlPainter(const Theme& theme, int target) : m_theme(theme), m_target(target) {}

    int markSize() const; ///< Of a latching button, with the gap behind it, in pixels.
    QColor buttonText(const QStyleOptionButton& option) const;

    void button(QPainter& painter, const QStyleOption& option, Mark mark) const;
    void checkMark(QPainter& painter, const QStyleOption& option) const;
    void field(QPainter& painter, const QStyleOption& option) const;
    void focusRing(QPainter& painter, const QRect& around) const;
    void frame(QPainter& painter, const QRect& around) const;
    void comboBox(QPainter& painter, const QStyleOptionComboBox& option) const;
    void spinBox(QPainter& painter, const QStyleOptionSpinBox& option, const QRect& up,
                 const QRect& down) const;
    void slider(QPainter& painter, const QStyleOptionSlider& option, const QRect& groove,
                const QRect& handle) const;
    void scrollBar(QPainter& painter, const QStyleOptionSlider& option, const QRect& handle) const;
    void tab(QPainter& painter, const QStyleOptionTab& option) const;
    void progressGroove(QPainter& painter, const QStyleOption& option) const;

private:
    void plate(QPainter& painter, const QRect& rect, const QColor& fill, bool isFocused) const;
    void chevron(QPainter& painter, const QRect& in, bool isUp, const QStyleOption& option) const;

    const Theme m_theme;
    const int m_target;
};

} // namespace norvo
