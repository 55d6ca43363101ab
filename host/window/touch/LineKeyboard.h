// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMargins>
#include <QObject>
#include <QPointer>

#include <functional>

class QLineEdit;

namespace norvo {

class KeyboardKey;

/// Lets a line of text be filled in without a keyboard: a key at its end, seen while the line has
/// the focus, opens the one on the screen; so does a finger on the line. What is given there is
/// taken as if it had been typed and the entry ended.
class LineKeyboard : public QObject
{
    Q_OBJECT

public:
    using Ask = std::function<QString()>; ///< A text; null where none is given.

    /// The line owns it. `ask` asks for something else than any text.
    explicit LineKeyboard(QLineEdit& line, Ask ask = {});

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString askForText() const;
    void open();
    void showKey(bool isShown);
    void placeKey();

    QLineEdit& m_line;
    const Ask m_ask;
    const QPointer<KeyboardKey> m_key; ///< The line may delete it first.
    QMargins m_margins;                ///< Of the line's text while the key is not seen.
};

} // namespace norvo
