// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QPushButton>

namespace norvo {

/// A key for a finger in a glove. It never takes the focus from the display. The default one is
/// bold, and filled as what is on.
class TouchKey : public QPushButton
{
    Q_OBJECT

public:
    enum class Symbol { None, Backspace, Up, Down, Left, Right, Shift, Caps };

    static constexpr int kSize = 64; ///< The least width and height, in pixels.

    TouchKey(const QString& objectName, const QString& text);
    /// Shows a drawn symbol; `accessibleName` says what the key does. Repeats while it is held,
    /// unless it switches something.
    TouchKey(const QString& objectName, Symbol symbol, const QString& accessibleName);

    void setPlainText(const QString& text); ///< As it is, "&" included.
    int touchSize() const;                  ///< What the style asks for what is touched, in pixels.
    int wantedSize() const;                 ///< That, or kSize where it is more.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Symbol m_symbol = Symbol::None;
};

} // namespace norvo
