// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

namespace norvo {

/// A key with the picture of a keyboard, large enough for a finger. It opens the keyboard on the
/// screen for an entry, which keeps the focus.
class KeyboardKey : public QAbstractButton
{
    Q_OBJECT

public:
    explicit KeyboardKey(QWidget* parent = nullptr);

    QSize sizeHint() const override;

    /// The text that is given on the screen, `text` to begin with; null where none is given.
    static QString askForText(QWidget& window, const QString& title, const QString& text,
                              const QString& hint = {});

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace norvo
