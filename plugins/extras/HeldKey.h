// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPushButton>

/// A key that knows whether a hand is on it: a mouse, a finger or the space bar.
///
/// It acts on the press. A hand is off again when it lets go or slides off (sliding back does not
/// count), and when the key can no longer be sure of it: without focus, hidden, disabled, behind a
/// modal dialog, in a window that is not the active one, or when the touch is cancelled. What
/// presses a button without a hand, accessibility and click(), does nothing here.
///
/// Two keys can be under two fingers at once. A slot of its signals may delete the key.
class HeldKey : public QPushButton
{
    Q_OBJECT

public:
    static constexpr int kMinSide = 60; ///< Pixels, for a finger in a glove.

    explicit HeldKey(const QString& text, QWidget* parent = nullptr);
    ~HeldKey() override; ///< The hand is off.

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void handOn();
    void handOff();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* window, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    enum class Hand { None, Mouse, Touch, SpaceBar };

    bool takesAway(const QEvent& event) const;
    void touch(const class QTouchEvent& event);
    void take(Hand hand);
    void letGo();

    Hand m_hand = Hand::None;
    int m_finger = 0; ///< Its id, while the hand is a touch.
};
